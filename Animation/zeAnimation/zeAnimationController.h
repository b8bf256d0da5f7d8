#ifndef ZEANIMATIONCONTROLLER_H
#define ZEANIMATIONCONTROLLER_H

#include <zeAnimation/zeAnimationConfig.h>

class zeAnimationCurve2D;

// The playback engine of the library.
class ZEANIMATION_EXPORT zeAnimationController
{
public:
    // The value of a curve at a frame: each segment between two keys is a cubic Bezier in the
    // (frame, value) plane whose inner control points are the keys' handles; x(t) = frame is
    // solved in closed form and y(t) evaluated. Before the first key the second key's value is
    // returned, at or after the last key the last key's value. Returns false, leaving `value`
    // untouched, for a null curve, fewer than two keys, or a segment without an admissible root.
    static bool computeCurveValue(zeAnimationCurve2D* curve, float frame, float& value);
};

#endif // ZEANIMATIONCONTROLLER_H
