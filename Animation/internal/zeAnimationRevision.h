#ifndef ZEANIMATIONREVISION_H
#define ZEANIMATIONREVISION_H

// The pool's revision: one number that grows with every change that can alter what playback
// reads, and with nothing else worth telling apart. Whatever is derived from the objects for
// speed (a curve's key index, an evaluation plan) remembers the revision it was built at and is
// built again once it differs.
//
// What bumps it: a key or handle position written; a child list changed (entry added, removed,
// reordered or renumbered); a curve or sequence summary changed; an object left the registry, or
// joined it where it can be found from elsewhere (a curve, or an object already naming a parent);
// a field joined, left or was renumbered; a curve bound to another field.
//
// Internal to the library, never installed; objects live on the host's scene thread only.

#include <cstdint>

namespace zeAnimationRevision {

inline std::uint64_t counter = 0;

inline std::uint64_t current()
{
    return counter;
}

// The part of the revision that moves with keys, child lists and the registry only, not with the
// flags, intervals, play ranges and bounds: an index built from a curve's keys (for editing)
// checks this one, so that the setters an edit calls on its way up the tree, which cannot change
// the keys, do not make it rebuild on every edit.
inline std::uint64_t shapeCounter = 0;

inline std::uint64_t shape()
{
    return shapeCounter;
}

inline void bump()
{
    ++counter;
    ++shapeCounter;
}

// A flag, interval, play range or bounds written: playback must see it, editing indexes need not.
inline void bumpValue()
{
    ++counter;
}

} // namespace zeAnimationRevision

#endif // ZEANIMATIONREVISION_H
