#ifndef _OSGPOINTLIGHTFIELDS_H_
#define _OSGPOINTLIGHTFIELDS_H_

#include "OSGLightFields.h"
#include "OSGMField.h"
#include "OSGSField.h"

namespace osg {

class PointLight;
typedef FCPtr<LightPtr, PointLight> PointLightPtr;

OSG_DECL_FC_PTR_FIELD_TRAITS(PointLightPtr)

typedef SField<PointLightPtr> SFPointLightPtr;
typedef MField<PointLightPtr> MFPointLightPtr;

} // namespace osg

#endif
