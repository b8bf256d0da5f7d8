#include "zeEditIndex.h"

#include "zeAnimationAccess.h"
#include "zeAnimationRevision.h"
#include "zeCurveKernel.h"

#include <zeAnimation/zeAnimationCurve2D.h>
#include <zeAnimation/zeAnimationManager.h>
#include <zeAnimation/zeControlPoint2D.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <limits>

namespace {

const std::size_t kNoEntry = static_cast<std::size_t>(-1);

bool holdsHint(std::uintptr_t slot)
{
    return (slot & 1u) != 0;
}

// The object's index when it has one, else null (its slot empty or holding a hint only).
zeEditIndex* existing(const zeAnimationObject* object)
{
    zeEditIndex* index = zeAnimationAccess::editIndex(object);
    return holdsHint(reinterpret_cast<std::uintptr_t>(index)) ? nullptr : index;
}

// The object's index, made on first use (with the hint the slot held).
zeEditIndex& indexOf(const zeAnimationObject* object)
{
    zeEditIndex*& slot = zeAnimationAccess::editIndex(object);
    const std::uintptr_t raw = reinterpret_cast<std::uintptr_t>(slot);
    if (raw != 0 && !holdsHint(raw))
        return *slot;
    zeEditIndex* index = nullptr;
    if (object->getTypeID() == zeAnimationObject::TypeCurve2D)
        index = new zeCurveEditIndex;
    else
        index = new zeEditIndex;
    index->indexInParent = holdsHint(raw) ? raw >> 1 : 0;
    slot = index;
    return *index;
}

std::size_t hintOf(const zeAnimationObject* child)
{
    const std::uintptr_t raw = reinterpret_cast<std::uintptr_t>(zeAnimationAccess::editIndex(child));
    if (holdsHint(raw))
        return raw >> 1;
    return raw != 0 ? zeAnimationAccess::editIndex(child)->indexInParent : kNoEntry;
}

void setHint(const zeAnimationObject* child, std::size_t index)
{
    zeEditIndex*& slot = zeAnimationAccess::editIndex(child);
    const std::uintptr_t raw = reinterpret_cast<std::uintptr_t>(slot);
    if (raw != 0 && !holdsHint(raw))
        slot->indexInParent = index;
    else if (index <= (std::numeric_limits<std::uintptr_t>::max() >> 1))
        slot = reinterpret_cast<zeEditIndex*>((static_cast<std::uintptr_t>(index) << 1) | 1u);
}

zeChildState& stateOf(const zeAnimationObject* object)
{
    return indexOf(object).children;
}

// A curve's index is always made as a zeCurveEditIndex (indexOf decides by type).
zeKeyState& keysOf(const zeAnimationCurve2D* curve)
{
    return static_cast<zeCurveEditIndex&>(indexOf(curve)).keys;
}

zeKeyState* existingKeys(const zeAnimationCurve2D* curve)
{
    zeEditIndex* index = existing(curve);
    return index ? &static_cast<zeCurveEditIndex*>(index)->keys : nullptr;
}

// Changes noted before the state is looked at again; beyond that a rebuild is cheaper.
const std::size_t kMostPending = 16;

// Bounds 0 and 3 (begin, minimum) fold to the smallest value, 1 and 2 (end, maximum) to the
// largest, each starting from the empty interval and replaced only by a strictly better value,
// so the first of equal values stays.
bool lowerFold(int k)
{
    return k == 0 || k == 3;
}

float foldStart(int k)
{
    return lowerFold(k) ? zeAnimationObject::EmptyLow : zeAnimationObject::EmptyHigh;
}

bool better(int k, float candidate, float current)
{
    return lowerFold(k) ? candidate < current : candidate > current;
}

// Empties the union of the four bounds: no entry holds any of them.
void restartFold(float fold[4], std::size_t foldAt[4])
{
    for (int k = 0; k < 4; ++k) {
        fold[k] = foldStart(k);
        foldAt[k] = kNoEntry;
    }
}

// Takes the bounds of the entry at `index` into the union: each bound it betters becomes its.
void foldIn(const float bounds[4], std::size_t index, float fold[4], std::size_t foldAt[4])
{
    for (int k = 0; k < 4; ++k) {
        if (better(k, bounds[k], fold[k])) {
            fold[k] = bounds[k];
            foldAt[k] = index;
        }
    }
}

// ---- A container's children -------------------------------------------------------------------

void rescanLayout(zeChildState& state)
{
    state.layoutStale = false;
    state.simple = true;
    state.widestGap = 0.0f;
    for (std::size_t i = 0; i < state.entries.size(); ++i) {
        const zeChildEntry& entry = state.entries[i];
        const float b = entry.bounds[0];
        const float e = entry.bounds[1];
        if (!entry.object || !std::isfinite(b) || !std::isfinite(e) || !(b < e) ||
            (i > 0 && !(state.entries[i - 1].bounds[1] <= b))) {
            state.simple = false;
            return;
        }
        if (i > 0)
            state.widestGap = std::max(state.widestGap, b - state.entries[i - 1].bounds[1]);
    }
}

void rescanFold(zeChildState& state)
{
    restartFold(state.fold, state.foldAt);
    for (std::size_t i = 0; i < state.entries.size(); ++i) {
        if (state.entries[i].counts)
            foldIn(state.entries[i].bounds, i, state.fold, state.foldAt);
    }
}

void fillEntry(zeChildEntry& entry, zeAnimationObject* child)
{
    entry.object = child;
    entry.type = child ? child->getTypeID() : osg::UInt32(zeAnimationObject::TypeObject);
    entry.counts = false;
    entry.simple = true;
    entry.empty = true;
    entry.firstBegin = entry.lastEnd = entry.widestGap = 0.0f;
    if (!child) {
        for (float& bound : entry.bounds)
            bound = 0.0f;
        return;
    }
    entry.bounds[0] = child->getBegin();
    entry.bounds[1] = child->getEnd();
    entry.bounds[2] = child->getMaximum();
    entry.bounds[3] = child->getMinimum();
    const osg::UInt32 type = child->getTypeID();
    entry.counts = !child->isEmpty() || type == zeAnimationObject::TypeSequence ||
                   type == zeAnimationObject::TypePoint2D;
    if (type == zeAnimationObject::TypeStreak) {
        zeChildState& layout = const_cast<zeChildState&>(zeChildIndex::current(child));
        if (layout.layoutStale)
            rescanLayout(layout);
        entry.simple = layout.simple;
        entry.empty = layout.entries.empty();
        if (!entry.empty) {
            entry.firstBegin = layout.entries.front().bounds[0];
            entry.lastEnd = layout.entries.back().bounds[1];
            entry.widestGap = layout.widestGap;
        }
    }
}

void setRoomLeaf(zeChildState& state, std::size_t index)
{
    zeChildState::RoomNode leaf = {false, -std::numeric_limits<float>::infinity(),
                                   std::numeric_limits<float>::infinity(),
                                   -std::numeric_limits<float>::infinity()};
    if (index < state.entries.size()) {
        const zeChildEntry& entry = state.entries[index];
        if (entry.object && entry.type == zeAnimationObject::TypeStreak) {
            if (entry.empty || !entry.simple) {
                leaf.open = true;
            } else {
                leaf.maxFirstBegin = entry.firstBegin;
                leaf.minLastEnd = entry.lastEnd;
                leaf.maxGap = entry.widestGap;
            }
        }
    }
    std::size_t node = state.roomLeaves + index;
    state.room[node] = leaf;
    for (node /= 2; node >= 1; node /= 2) {
        const zeChildState::RoomNode& a = state.room[2 * node];
        const zeChildState::RoomNode& b = state.room[2 * node + 1];
        state.room[node] = {a.open || b.open, std::max(a.maxFirstBegin, b.maxFirstBegin),
                            std::min(a.minLastEnd, b.minLastEnd), std::max(a.maxGap, b.maxGap)};
    }
}

std::size_t findRoom(const zeChildState& state, std::size_t node, std::size_t low, std::size_t high,
                     std::size_t from, float nb, float ne)
{
    const zeChildState::RoomNode& summary = state.room[node];
    // Before the first child, after the last, or in a gap at least as wide as the interval.
    if (high <= from || !(summary.open || ne <= summary.maxFirstBegin || summary.minLastEnd <= nb ||
                          ne - nb <= summary.maxGap))
        return kNoEntry;
    if (high - low == 1)
        return low;
    const std::size_t middle = (low + high) / 2;
    const std::size_t left = findRoom(state, 2 * node, low, middle, from, nb, ne);
    return left != kNoEntry ? left : findRoom(state, 2 * node + 1, middle, high, from, nb, ne);
}

void appendEntry(zeChildState& state, zeAnimationObject* child)
{
    const std::size_t index = state.entries.size();
    state.entries.emplace_back();
    zeChildEntry& entry = state.entries.back();
    fillEntry(entry, child);
    if (child) {
        // Keys do not report changes, so they need no hint of where their entry is.
        if (child->getTypeID() == zeAnimationObject::TypePoint2D)
            state.keys = true;
        else
            setHint(child, index);
    }
    if (state.roomLeaves != 0) {
        if (index < state.roomLeaves)
            setRoomLeaf(state, index);
        else
            state.roomLeaves = 0; // full: built again, twice the size, when next asked
    }
    const float b = entry.bounds[0];
    const float e = entry.bounds[1];
    const bool hasPrevious = index > 0;
    const zeChildEntry* previous = hasPrevious ? &state.entries[index - 1] : nullptr;
    state.sorted = state.sorted && child && !std::isnan(b) && (!hasPrevious || previous->bounds[0] <= b);
    if (entry.counts)
        foldIn(entry.bounds, index, state.fold, state.foldAt);
    if (state.layoutStale)
        return;
    const bool proper = child && std::isfinite(b) && std::isfinite(e) && b < e;
    if (!proper || (hasPrevious && !(previous->bounds[1] <= b)))
        state.simple = false;
    else if (hasPrevious && b - previous->bounds[1] > state.widestGap)
        state.widestGap = b - previous->bounds[1];
}

void rebuild(const zeAnimationObject* object, zeChildState& state)
{
    state.entries.clear();
    state.pending.clear();
    state.sorted = true;
    state.keys = false;
    state.simple = true;
    state.widestGap = 0.0f;
    state.layoutStale = false;
    state.roomLeaves = 0;
    restartFold(state.fold, state.foldAt);
    const zeAnimationObject::ChildList& childIds = object->getChildIds();
    state.entries.reserve(childIds.size());
    for (osg::UInt64 childId : childIds)
        appendEntry(state, object->resolveChild(childId));
    state.valid = true;
}

void updateEntry(zeChildState& state, std::size_t index)
{
    zeChildEntry& entry = state.entries[index];
    const zeChildEntry before = entry;
    fillEntry(entry, entry.object);
    const std::size_t n = state.entries.size();
    const float b = entry.bounds[0];
    if (state.sorted)
        state.sorted = !std::isnan(b) && (index == 0 || state.entries[index - 1].bounds[0] <= b) &&
                       (index + 1 == n || b <= state.entries[index + 1].bounds[0]);
    // The union: a bound that this entry held and that now recedes (or stops counting) needs the
    // others; anything else is decided by this entry alone.
    bool rescan = false;
    for (int k = 0; k < 4 && !rescan; ++k) {
        if (state.foldAt[k] == index &&
            (!entry.counts || better(k, before.bounds[k], entry.bounds[k]) || std::isnan(entry.bounds[k])))
            rescan = true;
    }
    if (rescan) {
        rescanFold(state);
    } else if (entry.counts) {
        for (int k = 0; k < 4; ++k) {
            const float value = entry.bounds[k];
            if (state.foldAt[k] == index || better(k, value, state.fold[k]) ||
                (value == state.fold[k] && index < state.foldAt[k] && state.foldAt[k] != kNoEntry)) {
                state.fold[k] = value;
                state.foldAt[k] = index;
            }
        }
    }
    state.layoutStale = true;
    if (state.roomLeaves != 0)
        setRoomLeaf(state, index);
}

} // namespace

// ---- zeChildIndex -----------------------------------------------------------------------------

const zeChildState& zeChildIndex::current(const zeAnimationObject* object)
{
    zeChildState& state = stateOf(object);
    // Keys do not report changes; a destroyed child may have left an entry behind.
    if (!state.valid || state.keys) {
        rebuild(object, state);
        return state;
    }
    if (state.pending.empty())
        return state;
    std::vector<zeAnimationObject*> pending;
    pending.swap(state.pending);
    for (zeAnimationObject* child : pending) {
        const std::size_t index = hintOf(child);
        if (index >= state.entries.size() || state.entries[index].object != child) {
            rebuild(object, state);
            return state;
        }
        updateEntry(state, index);
    }
    pending.clear();
    state.pending.swap(pending); // keeps the capacity
    return state;
}

bool zeChildIndex::valid(const zeAnimationObject* object)
{
    const zeEditIndex* index = existing(object);
    return index && index->children.valid;
}

void zeChildIndex::invalidate(const zeAnimationObject* object)
{
    zeEditIndex* index = existing(object);
    if (!index)
        return;
    zeChildState& state = index->children;
    state.valid = false;
    state.pending.clear();
    state.roomLeaves = 0;
}

void zeChildIndex::append(const zeAnimationObject* object, zeAnimationObject* child)
{
    if (valid(object))
        appendEntry(stateOf(object), child);
}

void zeChildIndex::noteChild(const zeAnimationObject* object, zeAnimationObject* child)
{
    if (!valid(object))
        return;
    zeChildState& state = stateOf(object);
    if (std::find(state.pending.begin(), state.pending.end(), child) == state.pending.end()) {
        if (state.pending.size() < kMostPending)
            state.pending.push_back(child);
        else
            invalidate(object);
    }
}

bool zeChildIndex::collides(const zeAnimationObject* object, float nb, float ne)
{
    zeChildState& state = const_cast<zeChildState&>(current(object));
    if (state.layoutStale)
        rescanLayout(state);
    const std::vector<zeChildEntry>& entries = state.entries;
    if (state.simple && std::isfinite(nb) && std::isfinite(ne) && nb < ne) {
        // Children of positive length, in order and apart: for an interval of positive length
        // the rule comes down to overlapping one of them, and their ends are in order too.
        const std::vector<zeChildEntry>::const_iterator first =
            std::upper_bound(entries.begin(), entries.end(), nb,
                             [](float value, const zeChildEntry& entry) { return value < entry.bounds[1]; });
        return first != entries.end() && first->bounds[0] < ne;
    }
    for (const zeChildEntry& entry : entries) {
        if (!entry.object)
            continue;
        const float cb = entry.bounds[0];
        const float ce = entry.bounds[1];
        if ((cb < nb && nb < ce) || (cb < ne && ne < ce) || (nb <= cb && ce <= ne) || (cb <= nb && ne <= ce))
            return true;
    }
    return false;
}

zeAnimationObject* zeChildIndex::firstTrackWithRoom(const zeAnimationObject* object, float nb, float ne,
                                                    bool (*tryTrack)(zeAnimationObject*, void*),
                                                    void* context)
{
    const bool proper = std::isfinite(nb) && std::isfinite(ne) && nb < ne;
    for (std::size_t i = 0;; ++i) {
        zeChildState& state = const_cast<zeChildState&>(current(object));
        const std::size_t n = state.entries.size();
        if (proper) {
            if (state.roomLeaves == 0) {
                std::size_t leaves = 1;
                while (leaves < 2 * n)
                    leaves *= 2;
                state.room.assign(2 * leaves, zeChildState::RoomNode());
                state.roomLeaves = leaves;
                for (std::size_t leaf = 0; leaf < leaves; ++leaf)
                    setRoomLeaf(state, leaf);
            }
            i = findRoom(state, 1, 0, state.roomLeaves, i, nb, ne);
        }
        if (i >= n)
            return nullptr;
        // Taken out first: a track that takes the object changes this state.
        zeAnimationObject* track =
            state.entries[i].type == zeAnimationObject::TypeStreak ? state.entries[i].object : nullptr;
        if (track && tryTrack(track, context))
            return track;
    }
}

// ---- zeKeyIndex -------------------------------------------------------------------------------

namespace {

void stamp(zeKeyState& c)
{
    c.revision = zeAnimationRevision::shape();
    c.built = true;
}

// The arrays hold no gap any more: the links past erased keys, the tree over the slots and the
// extremes kept with them go.
void forgetGaps(zeKeyState& c)
{
    c.dead = 0;
    c.before.clear();
    c.after.clear();
    c.tree.clear();
    c.treeLeaves = 0;
    c.extremes = false;
}

void rebuildKeys(const zeAnimationCurve2D* curve, zeKeyState& c)
{
    c.xs.clear();
    c.ys.clear();
    c.points.clear();
    c.nodes.clear();
    c.ordered = true;
    c.complete = true;
    c.hasNaN = false;
    zeAnimationObject::ChildList& list = zeAnimationAccess::childList(const_cast<zeAnimationCurve2D*>(curve));
    for (zeAnimationObject::ChildList::iterator it = list.begin(); it != list.end(); ++it) {
        zeControlPoint2D* point = zeAnimationCast<zeControlPoint2D>(curve->resolveChild(*it));
        if (!point) {
            c.complete = false;
            continue;
        }
        const float x = point->getX();
        if (std::isnan(x))
            c.hasNaN = true;
        if (!c.xs.empty() && !(c.xs.back() < x))
            c.ordered = false;
        c.xs.push_back(x);
        c.ys.push_back(point->getY());
        c.points.push_back(point);
        c.nodes.push_back(it);
    }
    c.keyCount = c.points.size();
    forgetGaps(c);
    if (c.hasNaN)
        c.ordered = false;
    if (!c.ordered && !c.hasNaN) {
        // Out of order or sharing an x: the map's rule (first in child order per x) decides.
        const zeAnimationCurve2D::PointMap map = curve->getPoints();
        c.xs.clear();
        c.ys.clear();
        c.points.clear();
        c.nodes.clear();
        for (const zeAnimationCurve2D::PointMap::value_type& entry : map) {
            c.xs.push_back(entry.first);
            c.ys.push_back(entry.second->getY());
            c.points.push_back(entry.second);
        }
    }
    if (c.lastSegment + 1 >= c.points.size())
        c.lastSegment = 0;
    stamp(c);
}

bool isFresh(const zeKeyState& c)
{
    return c.built && c.revision == zeAnimationRevision::shape();
}

const std::uint32_t kNoKey = std::numeric_limits<std::uint32_t>::max();

// The extremes of two neighbouring ranges of slots: the left one's unless the right one holds a
// strictly lower (higher) y, as the fold over the keys in order takes them.
zeKeyState::ExtremeNode joinExtremes(const zeKeyState::ExtremeNode& a, const zeKeyState::ExtremeNode& b)
{
    zeKeyState::ExtremeNode joined = a;
    if (b.lowAt != kNoKey && (a.lowAt == kNoKey || b.low < a.low)) {
        joined.low = b.low;
        joined.lowAt = b.lowAt;
    }
    if (b.highAt != kNoKey && (a.highAt == kNoKey || b.high > a.high)) {
        joined.high = b.high;
        joined.highAt = b.highAt;
    }
    return joined;
}

zeKeyState::ExtremeNode extremeLeaf(const zeKeyState& c, std::size_t slot)
{
    // A key whose y is NaN never holds an extreme beyond the first live slot (see extremes()).
    if (slot < c.points.size() && c.points[slot] && !std::isnan(c.ys[slot])) {
        const std::uint32_t at = static_cast<std::uint32_t>(slot);
        return {c.ys[slot], c.ys[slot], at, at};
    }
    return {0.0f, 0.0f, kNoKey, kNoKey};
}

void buildExtremeTree(zeKeyState& c)
{
    std::size_t leaves = 1;
    while (leaves < c.points.size())
        leaves *= 2;
    c.treeLeaves = leaves;
    c.tree.assign(2 * leaves, extremeLeaf(c, c.points.size()));
    for (std::size_t slot = 0; slot < c.points.size(); ++slot)
        c.tree[leaves + slot] = extremeLeaf(c, slot);
    for (std::size_t node = leaves - 1; node >= 1; --node)
        c.tree[node] = joinExtremes(c.tree[2 * node], c.tree[2 * node + 1]);
}

void updateExtremeTree(zeKeyState& c, std::size_t slot)
{
    std::size_t node = c.treeLeaves + slot;
    c.tree[node] = extremeLeaf(c, slot);
    for (node /= 2; node >= 1; node /= 2)
        c.tree[node] = joinExtremes(c.tree[2 * node], c.tree[2 * node + 1]);
}

// Folds the y of the key at `at` into the extremes (shifting them first when a key was inserted
// there).
void foldExtreme(zeKeyState& w, std::size_t at, bool inserted)
{
    if (!w.extremes)
        return;
    if (inserted) {
        w.lowAt += w.lowAt >= at ? 1 : 0;
        w.highAt += w.highAt >= at ? 1 : 0;
    }
    // The first of equal values stays, as the fold over the child list keeps it.
    const float y = w.ys[at];
    if (y < w.lowY || (y == w.lowY && at < w.lowAt)) {
        w.lowY = y;
        w.lowAt = at;
    }
    if (y > w.highY || (y == w.highY && at < w.highAt)) {
        w.highY = y;
        w.highAt = at;
    }
}

zeKeyState& keysWithGaps(const zeAnimationCurve2D* curve)
{
    zeKeyState& c = keysOf(curve);
    if (!isFresh(c))
        rebuildKeys(curve, c);
    return c;
}

// Squeezes the slots of erased keys out of the arrays.
void closeGaps(zeKeyState& c)
{
    if (c.dead == 0)
        return;
    std::size_t kept = 0;
    for (std::size_t i = 0; i < c.points.size(); ++i) {
        if (!c.points[i])
            continue;
        c.xs[kept] = c.xs[i];
        c.ys[kept] = c.ys[i];
        c.points[kept] = c.points[i];
        c.nodes[kept] = c.nodes[i];
        ++kept;
    }
    c.xs.resize(kept);
    c.ys.resize(kept);
    c.points.resize(kept);
    c.nodes.resize(kept);
    forgetGaps(c);
    if (c.lastSegment + 1 >= c.points.size())
        c.lastSegment = 0;
}

zeKeyState& currentKeys(const zeAnimationCurve2D* curve)
{
    zeKeyState& c = keysWithGaps(curve);
    closeGaps(c);
    return c;
}

} // namespace

const zeKeyState& zeKeyIndex::current(const zeAnimationCurve2D* curve)
{
    return currentKeys(curve);
}

const zeKeyState& zeKeyIndex::withGaps(const zeAnimationCurve2D* curve)
{
    return keysWithGaps(curve);
}

std::size_t zeKeyIndex::previousSlot(const zeKeyState& c, std::size_t at)
{
    if (c.dead != 0)
        return c.before[at];
    return at > 0 ? at - 1 : NoSlot;
}

std::size_t zeKeyIndex::nextSlot(const zeKeyState& c, std::size_t at)
{
    if (c.dead != 0)
        return c.after[at];
    return at + 1 < c.points.size() ? at + 1 : NoSlot;
}

std::size_t zeKeyIndex::firstSlot(const zeKeyState& c)
{
    if (c.dead != 0)
        return c.head;
    return c.points.empty() ? NoSlot : 0;
}

std::size_t zeKeyIndex::lastSlot(const zeKeyState& c)
{
    if (c.dead != 0)
        return c.tail;
    return c.points.empty() ? NoSlot : c.points.size() - 1;
}

bool zeKeyIndex::fresh(const zeAnimationCurve2D* curve)
{
    const zeKeyState* keys = existingKeys(curve);
    return keys && isFresh(*keys);
}

void zeKeyIndex::drop(const zeAnimationCurve2D* curve)
{
    if (zeKeyState* keys = existingKeys(curve))
        keys->built = false;
}

zeKeyIndex::SegmentLocation zeKeyIndex::locateSegment(const zeAnimationCurve2D* curve, float frame,
                                                      const zeControlPoint2D*& k0,
                                                      const zeControlPoint2D*& k1)
{
    zeKeyState& c = currentKeys(curve);
    if (c.hasNaN) {
        // No strict order to search in: the literal map lookup, allocation and all.
        const zeAnimationCurve2D::PointMap points = curve->getPoints();
        if (points.size() < 2)
            return TooFewKeys;
        const zeAnimationCurve2D::PointMap::const_iterator upper = points.upper_bound(frame);
        if (upper == points.begin()) {
            k0 = std::next(points.begin())->second;
            return BeforeFirst;
        }
        k0 = std::prev(upper)->second;
        if (upper == points.end())
            return AfterLast;
        k1 = upper->second;
        return InsideSegment;
    }
    const std::size_t n = c.xs.size();
    // The hint is the upper bound of the segment found last: playback asks frame after frame.
    std::size_t hint = c.lastSegment + 1;
    const std::size_t upper = zeCurveKernel::upperBound(c.xs.data(), n, frame, hint);
    switch (zeCurveKernel::locate(n, upper)) {
    case zeCurveKernel::TooFewKeys:
        return TooFewKeys;
    case zeCurveKernel::BeforeFirst:
        k0 = c.points[1];
        return BeforeFirst;
    case zeCurveKernel::AfterLast:
        k0 = c.points[n - 1];
        return AfterLast;
    case zeCurveKernel::Inside:
        break;
    }
    c.lastSegment = upper - 1;
    k0 = c.points[upper - 1];
    k1 = c.points[upper];
    return InsideSegment;
}

bool zeKeyIndex::keysKnownInOrder(const zeAnimationCurve2D* curve)
{
    const zeKeyState& c = keysWithGaps(curve);
    return c.ordered && c.complete;
}

bool zeKeyIndex::insertInOrder(zeAnimationCurve2D* curve, zeControlPoint2D* key)
{
    zeKeyState& w = currentKeys(curve);
    const float x = key->getX();
    if (!w.ordered || !w.complete || std::isnan(x) ||
        zeAnimationManager::the()->getPoint2D(key->getId()) != key)
        return false;
    // After every key with an x not above the new one: where a stable sort of the list with the
    // new identifier appended would put it.
    const std::size_t at =
        static_cast<std::size_t>(std::upper_bound(w.xs.begin(), w.xs.end(), x) - w.xs.begin());
    if (at > 0 && !(w.xs[at - 1] < x))
        return false; // shares an x with a key: the index would lose its strict order
    zeAnimationObject::ChildList& childIds = zeAnimationAccess::childList(curve);
    const zeAnimationObject::ChildList::iterator node =
        childIds.insert(at < w.nodes.size() ? w.nodes[at] : childIds.end(), key->getId());
    w.xs.insert(w.xs.begin() + at, x);
    w.ys.insert(w.ys.begin() + at, key->getY());
    w.points.insert(w.points.begin() + at, key);
    w.nodes.insert(w.nodes.begin() + at, node);
    ++w.keyCount;
    zeAnimationRevision::bump(); // the child list changed, in step with the index
    w.revision = zeAnimationRevision::shape();
    foldExtreme(w, at, true);
    return true;
}

bool zeKeyIndex::eraseInOrder(zeAnimationCurve2D* curve, zeControlPoint2D* key)
{
    zeKeyState& w = keysWithGaps(curve);
    if (!w.ordered || !w.complete)
        return false;
    const float x = key->getX();
    const std::size_t at =
        static_cast<std::size_t>(std::lower_bound(w.xs.begin(), w.xs.end(), x) - w.xs.begin());
    if (at >= w.points.size() || w.points[at] != key || *w.nodes[at] != key->getId())
        return false;
    zeAnimationAccess::childList(curve).erase(w.nodes[at]);
    zeAnimationRevision::bump(); // the child list changed, in step with the index
    w.revision = zeAnimationRevision::shape();
    if (w.lowAt == at || w.highAt == at)
        w.extremes = false;
    // The slot stays, emptied, and its live neighbours are linked past it.
    const std::size_t n = w.points.size();
    if (w.dead == 0) {
        w.before.resize(n);
        w.after.resize(n);
        for (std::size_t i = 0; i < n; ++i) {
            w.before[i] = i > 0 ? i - 1 : NoSlot;
            w.after[i] = i + 1 < n ? i + 1 : NoSlot;
        }
        w.head = 0;
        w.tail = n - 1;
    }
    const std::size_t previous = w.before[at];
    const std::size_t next = w.after[at];
    if (previous != NoSlot)
        w.after[previous] = next;
    else
        w.head = next;
    if (next != NoSlot)
        w.before[next] = previous;
    else
        w.tail = previous;
    w.points[at] = nullptr;
    ++w.dead;
    --w.keyCount;
    if (!w.tree.empty())
        updateExtremeTree(w, at);
    return true;
}

bool zeKeyIndex::recomputeTangents(const zeAnimationCurve2D* curve, zeControlPoint2D* key)
{
    // Validated first, so that the neighbour lookup inside finds it fresh.
    zeKeyState& c = keysWithGaps(curve);
    const osg::UInt64 before = zeAnimationRevision::shape();
    const bool written = key->computeTangents();
    // computeTangents writes the two handles and nothing else. Handles are never registered, so
    // they are in no key index: when exactly those writes happened, the index still holds.
    if (c.built && c.revision == before && zeAnimationRevision::shape() == before + (written ? 2u : 0u))
        c.revision = zeAnimationRevision::shape();
    return written;
}

void zeKeyIndex::placeKey(const zeAnimationCurve2D* curve, zeControlPoint2D* key, const osg::Pnt2f& position,
                          const osg::Vec2f& in, const osg::Vec2f& out)
{
    zeKeyState& w = currentKeys(curve);
    const std::size_t n = w.xs.size();
    std::size_t at = n;
    if (w.ordered && w.complete) {
        at = static_cast<std::size_t>(std::lower_bound(w.xs.begin(), w.xs.end(), key->getX()) - w.xs.begin());
        if (at < n && w.points[at] != key)
            at = n;
    }
    const auto finite = [](float x, float y) { return std::isfinite(x) && std::isfinite(y); };
    const bool wasFresh = isFresh(w);
    const osg::UInt64 expected = zeAnimationRevision::shape() + (finite(position[0], position[1]) ? 1 : 0) +
                                 (key->getInTangentPoint() && finite(in[0], in[1]) ? 1 : 0) +
                                 (key->getOutTangentPoint() && finite(out[0], out[1]) ? 1 : 0);
    key->setPosition(position);
    key->setInTangent(in);
    key->setOutTangent(out);
    // The key's own writes, and nothing else, happened since the index was valid: when the key
    // stays strictly between its neighbours, only its entry changes.
    const float x = key->getX();
    if (at == n || !wasFresh || zeAnimationRevision::shape() != expected || (at > 0 && !(w.xs[at - 1] < x)) ||
        (at + 1 < n && !(x < w.xs[at + 1])))
        return;
    w.xs[at] = x;
    w.ys[at] = key->getY();
    if (w.extremes && (w.lowAt == at || w.highAt == at))
        w.extremes = false;
    else
        foldExtreme(w, at, false);
    w.revision = expected;
}

const zeKeyState& zeKeyIndex::extremes(const zeAnimationCurve2D* curve)
{
    zeKeyState& w = keysWithGaps(curve);
    const std::size_t first = firstSlot(w);
    if (!w.extremes && w.ordered && w.complete && first != NoSlot && w.dead != 0 &&
        w.points.size() < kNoKey) {
        // Erasing one by one: the tree answers. The fold starts from the first key's y, which a
        // NaN keeps for good; after that only a number strictly beyond takes over.
        if (w.tree.empty())
            buildExtremeTree(w);
        const zeKeyState::ExtremeNode& all = w.tree[1];
        const bool firstIsNaN = std::isnan(w.ys[first]);
        w.lowY = firstIsNaN ? w.ys[first] : all.low;
        w.lowAt = firstIsNaN ? first : all.lowAt;
        w.highY = firstIsNaN ? w.ys[first] : all.high;
        w.highAt = firstIsNaN ? first : all.highAt;
        w.extremes = true;
    }
    if (!w.extremes && w.ordered && w.complete && first != NoSlot) {
        w.lowY = w.highY = w.ys[first];
        w.lowAt = w.highAt = first;
        w.extremes = true;
        for (std::size_t i = nextSlot(w, first); i != NoSlot; i = nextSlot(w, i))
            foldExtreme(w, i, false);
    }
    return w;
}

bool zeKeyIndex::survives(const zeAnimationCurve2D* curve, const zeControlPoint2D* key, osg::UInt64& revision)
{
    revision = zeAnimationRevision::shape();
    if (!fresh(curve))
        return false;
    // In order and complete, the index holds every listed key once, at its x.
    const zeKeyState& c = *existingKeys(curve); // gaps and all
    if (!c.ordered || !c.complete || std::isnan(key->getX()))
        return false;
    const std::size_t at =
        static_cast<std::size_t>(std::lower_bound(c.xs.begin(), c.xs.end(), key->getX()) - c.xs.begin());
    return at >= c.points.size() || c.points[at] != key;
}

void zeKeyIndex::restampAfter(const zeAnimationCurve2D* curve, osg::UInt64 revision)
{
    // The key left the registry after it left the list and the index: that one step, and no
    // other change, happened meanwhile.
    zeKeyState* keys = existingKeys(curve);
    if (keys && keys->built && keys->revision == revision && zeAnimationRevision::shape() == revision + 1)
        keys->revision = zeAnimationRevision::shape();
}

// ---- zeEditIndexes ----------------------------------------------------------------------------

void zeEditIndexes::release(const zeAnimationObject* object)
{
    delete existing(object);
    zeAnimationAccess::editIndex(object) = nullptr;
}
