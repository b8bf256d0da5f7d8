#ifndef _OSGDIRECTIONALLIGHTFIELDS_H_
#define _OSGDIRECTIONALLIGHTFIELDS_H_

#include "OSGLightFields.h"
#include "OSGMField.h"
#include "OSGSField.h"

namespace osg {

class DirectionalLight;
typedef FCPtr<LightPtr, DirectionalLight> DirectionalLightPtr;

OSG_DECL_FC_PTR_FIELD_TRAITS(DirectionalLightPtr)

typedef SField<DirectionalLightPtr> SFDirectionalLightPtr;
typedef MField<DirectionalLightPtr> MFDirectionalLightPtr;

} // namespace osg

#endif
