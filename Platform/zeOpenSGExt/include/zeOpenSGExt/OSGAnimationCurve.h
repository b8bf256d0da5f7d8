#ifndef _OSGANIMATIONCURVE_H_
#define _OSGANIMATIONCURVE_H_

#include "OSGAnimationCurveBase.h"

namespace osg {

// Curve of the older animation format, bound to one component of one field: the animated node
// ("AFAppNode", or "AFAppropriateNode" as fallback), field name, global field name, attribute,
// value and component position. The node pointers are not reference counted (the curve hangs below
// the node); the control points are.
class OSG_ZEOPENSGEXT_DLLMAPPING AnimationCurve : public AnimationCurveBase
{
public:
    typedef AnimationCurveBase Inherited;

protected:
    friend class AnimationCurveBase;

    AnimationCurve();
    AnimationCurve(const AnimationCurve& source);
    ~AnimationCurve() override;
};

} // namespace osg

#endif
