#ifndef ZEANIMATIONHELPERS_H
#define ZEANIMATIONHELPERS_H

// Small rules the library's sources share, each written once here. Internal: not installed.

#include <zeAnimation/zeAnimationManager.h>
#include <zeAnimation/zeAnimationObject.h>

#include <cmath>
#include <utility>

// The registry every object and field lives in.
inline zeAnimationManager* manager()
{
    return zeAnimationManager::the();
}

// How close a moved edge may come to the opposite edge of its interval: moves, stretches and trims
// that would bring it closer, or past it, are refused.
constexpr float kEditTolerance = 1e-6f;

// Rounds half away from zero as the library makes every whole number: one half is added (taken
// away from a negative value) in the precision of T and the sum truncated. The precision is part of
// the result: 0.49999997f rounds to 1 in float and to 0 in double.
template <class T>
T roundHalfAway(T value)
{
    return std::trunc(value < T(0) ? value - T(0.5) : value + T(0.5));
}

// Calls a host callback slot when it is set; an empty slot is skipped.
template <class Callback, class... Arguments>
void callIfSet(Callback callback, Arguments&&... arguments)
{
    if (callback)
        callback(std::forward<Arguments>(arguments)...);
}

// The answer of a host callback slot when it is set, else `fallback`.
template <class Result, class Callback, class... Arguments>
Result askIfSet(Callback callback, Result fallback, Arguments&&... arguments)
{
    return callback ? static_cast<Result>(callback(std::forward<Arguments>(arguments)...)) : fallback;
}

// The union of intervals as every bounds computation takes it: it starts from the empty interval,
// and a begin is replaced only by a strictly lower one, an end only by a strictly higher one, so
// the first of equal values stays and NaN never enters.
struct IntervalUnion
{
    float begin = zeAnimationObject::EmptyLow;
    float end = zeAnimationObject::EmptyHigh;

    void add(float otherBegin, float otherEnd)
    {
        if (otherBegin < begin)
            begin = otherBegin;
        if (otherEnd > end)
            end = otherEnd;
    }
};

#endif // ZEANIMATIONHELPERS_H
