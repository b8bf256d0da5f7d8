#ifndef ZECURVEKERNEL_H
#define ZECURVEKERNEL_H

// The arithmetic of curves, apart from the objects that hold them: placing a key's handles by its
// tangent rule, preparing a Bezier segment and solving it at a frame, finding the segment of a
// frame, and the timing rules of playback (repeat wrap, playing past the end). Nothing here knows
// the scene, Qt or the registry; the curve, the controller and the evaluation plan call it with
// plain numbers, so its results are those of the editing objects by construction.
//
// Internal to the library, never installed.

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace zeCurveKernel {

// ---- Tangent rules --------------------------------------------------------------------------

// A key and its neighbours on its curve. The first key has no previous neighbour, the last no
// next one; the coordinates of a missing neighbour are not read.
struct TangentInput
{
    float x, y;
    float xa, ya; // previous neighbour
    float xb, yb; // next neighbour
    bool hasPrevious;
    bool hasNext;
};

// Absolute positions of the in-handle and the out-handle.
struct Handles
{
    float ix, iy, ox, oy;
};

// The handles a key gets by its tangent type (1 linear, 2 flat, 4 smooth, 8 forward) and length
// mode (4 a third, 64 half, 32 fixed). Any other combination collapses both handles onto the key.
// The caller has checked that the key has at least one neighbour and is not free.
Handles tangentHandles(std::uint32_t type, std::uint32_t lengthMode, const TangentInput& key);

// ---- Segments -------------------------------------------------------------------------------

// One Bezier segment from key (x0, y0) with out-handle (h0x, h0y) to key (x1, y1) with in-handle
// (h1x, h1y), with the terms of the closed-form solve that do not depend on the frame. Playback
// keeps one per curve and reads it every frame, so it fills one cache line and no more: the
// length x1 - x0 is worked out again when solving, and a step (both inner handles on their keys:
// the value holds until the next key) is told by A and p both 0, which no other segment of
// non-zero length has (with A = 0, p is infinite or NaN).
struct alignas(64) Segment
{
    float x0, y0, x1, y1, h0y, h1y;
    double A, p, q0, s, p3;
};
static_assert(sizeof(Segment) == 64, "a segment fills one cache line");

void prepareSegment(Segment& segment, float x0, float y0, float h0x, float h0y, float h1x, float h1y,
                    float x1, float y1);

// The segment's value at a frame between its keys. False when the cubic yields no root in range
// (the value untouched). A segment of zero length yields no value either: it returns y0 != 0
// without writing, the answer callers have always had.
bool solveSegment(const Segment& segment, float frame, float& value);

// ---- Segment search -------------------------------------------------------------------------

// The index of the first of `count` strictly increasing abscissae that is greater than `frame`
// (count when there is none; a NaN frame finds none). `hint` is the caller's memory of the last
// answer: playback asks frame after frame, so the answer is usually the hint or the one after it,
// and a binary search is needed only on a jump.
inline std::size_t upperBound(const float* xs, std::size_t count, float frame, std::size_t& hint)
{
    std::size_t at = hint;
    if (at > 0 && at < count && xs[at - 1] <= frame && frame < xs[at])
        return at;
    ++at;
    if (at > 0 && at < count && xs[at - 1] <= frame && frame < xs[at]) {
        hint = at;
        return at;
    }
    at = static_cast<std::size_t>(std::upper_bound(xs, xs + count, frame) - xs);
    hint = at;
    return at;
}

// Where a frame falls on a curve of `count` keys, from the upper bound of the frame.
enum Location
{
    TooFewKeys,  // fewer than two keys: no value
    BeforeFirst, // before the first key: the second key's value holds
    AfterLast,   // at or after the last key: the last key's value holds
    Inside       // between keys `upper - 1` and `upper`
};

inline Location locate(std::size_t count, std::size_t upper)
{
    if (count < 2)
        return TooFewKeys;
    if (upper == 0)
        return BeforeFirst;
    if (upper == count)
        return AfterLast;
    return Inside;
}

// ---- Timing ---------------------------------------------------------------------------------

// A frame folded into [b, e) for repeating playback. Nothing guards e == b.
float repeatWrap(float frame, float b, float e);

// Whether an object with range [b, e] has played past it at `frame`: before b when it plays in
// reverse, after e when it plays forward, with the frame wrapped first when it repeats (so a
// repeating object never finishes). Reaching the edge itself is not past it.
bool playedPast(float frame, float b, float e, bool repeating, bool reverse);

} // namespace zeCurveKernel

#endif // ZECURVEKERNEL_H
