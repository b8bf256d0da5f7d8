#ifndef _OSGSPOTLIGHT_H_
#define _OSGSPOTLIGHT_H_

#include "OSGSpotLightBase.h"

namespace osg {

// Point light limited to a cone along "direction"; spotCutOff is in radians.
class OSG_SYSTEMLIB_DLLMAPPING SpotLight : public SpotLightBase
{
public:
    typedef SpotLightBase Inherited;

protected:
    friend class SpotLightBase;

    SpotLight();
    SpotLight(const SpotLight& source);
    ~SpotLight() override;
};

} // namespace osg

#endif
