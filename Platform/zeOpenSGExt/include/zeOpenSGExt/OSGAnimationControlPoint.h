#ifndef _OSGANIMATIONCONTROLPOINT_H_
#define _OSGANIMATIONCONTROLPOINT_H_

#include "OSGAnimationControlPointBase.h"

namespace osg {

// Key of an older animation curve: position (frame, value), tangent handles (only meaningful when
// hasTangents is set) and the tangent type code of the older format.
class OSG_ZEOPENSGEXT_DLLMAPPING AnimationControlPoint : public AnimationControlPointBase
{
public:
    typedef AnimationControlPointBase Inherited;

protected:
    friend class AnimationControlPointBase;

    AnimationControlPoint();
    AnimationControlPoint(const AnimationControlPoint& source);
    ~AnimationControlPoint() override;
};

} // namespace osg

#endif
