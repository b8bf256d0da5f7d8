#ifndef _OSGPOINTLIGHT_H_
#define _OSGPOINTLIGHT_H_

#include "OSGPointLightBase.h"

namespace osg {

// Light radiating from "position" (in the beacon's space).
class OSG_SYSTEMLIB_DLLMAPPING PointLight : public PointLightBase
{
public:
    typedef PointLightBase Inherited;

protected:
    friend class PointLightBase;

    PointLight();
    PointLight(const PointLight& source);
    ~PointLight() override;
};

} // namespace osg

#endif
