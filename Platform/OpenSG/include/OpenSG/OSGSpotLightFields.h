#ifndef _OSGSPOTLIGHTFIELDS_H_
#define _OSGSPOTLIGHTFIELDS_H_

#include "OSGMField.h"
#include "OSGPointLightFields.h"
#include "OSGSField.h"

namespace osg {

class SpotLight;
typedef FCPtr<PointLightPtr, SpotLight> SpotLightPtr;

OSG_DECL_FC_PTR_FIELD_TRAITS(SpotLightPtr)

typedef SField<SpotLightPtr> SFSpotLightPtr;
typedef MField<SpotLightPtr> MFSpotLightPtr;

} // namespace osg

#endif
