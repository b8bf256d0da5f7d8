#ifndef _OSGDIRECTIONALLIGHT_H_
#define _OSGDIRECTIONALLIGHT_H_

#include "OSGDirectionalLightBase.h"

namespace osg {

// Light from infinitely far away along "direction".
class OSG_SYSTEMLIB_DLLMAPPING DirectionalLight : public DirectionalLightBase
{
public:
    typedef DirectionalLightBase Inherited;

protected:
    friend class DirectionalLightBase;

    DirectionalLight();
    DirectionalLight(const DirectionalLight& source);
    ~DirectionalLight() override;
};

} // namespace osg

#endif
