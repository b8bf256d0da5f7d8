#ifndef _OSGLIGHT_H_
#define _OSGLIGHT_H_

#include "OSGLightBase.h"

namespace osg {

// Base of lights (abstract). Colours are Color4f. The beacon node's world transform places the light;
// the beacon is reference counted (so it must not be an ancestor of the light's node, or the two
// keep each other alive). The lit subtree is the light node's children.
class OSG_SYSTEMLIB_DLLMAPPING Light : public LightBase
{
public:
    typedef LightBase Inherited;

    using Inherited::setAmbient;
    using Inherited::setDiffuse;
    using Inherited::setSpecular;
    void setAmbient(Real32 r, Real32 g, Real32 b, Real32 a) { setAmbient(Color4f(r, g, b, a)); }
    void setDiffuse(Real32 r, Real32 g, Real32 b, Real32 a) { setDiffuse(Color4f(r, g, b, a)); }
    void setSpecular(Real32 r, Real32 g, Real32 b, Real32 a) { setSpecular(Color4f(r, g, b, a)); }

protected:
    friend class LightBase;

    Light();
    Light(const Light& source);
    ~Light() override;
};

} // namespace osg

#endif
