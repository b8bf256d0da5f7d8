#ifndef ZEEDITINDEX_H
#define ZEEDITINDEX_H

// Indexes that make editing at scale cheap, kept beside the objects rather than in them: what a
// container's updates and a track's overlap test need of its children, and a curve's keys as
// sorted arrays. Each object reaches its own through one opaque pointer, made on first use (keys
// and other objects without children never need one) and never shared with a copy, whose
// children are its own.
//
// The indexes are checked, never trusted: whatever they cannot follow in step makes them
// rebuild. Not thread-safe, like the rest of the model.
//
// Internal to the library, never installed.

#include <zeAnimation/zeAnimationObject.h>

#include <cstddef>
#include <cstdint>
#include <vector>

class zeAnimationCurve2D;
class zeControlPoint2D;

// ---- A container's children -----------------------------------------------------------------
// The children resolved in list order with the interval and value range each last reported,
// whether the list is in order of begin, the union of their bounds, and their layout along time.
// Children report every change of their interval, value range or emptiness (noteChange) and a
// track every change of its layout, and an appended child joins in step; anything the state
// cannot follow in step (a removal, a sort, a renumbering, many changes at once, a child
// destroyed without unlinking it) makes it rebuild. Keys do not report (their curve keeps its own
// key index), so a container holding a key rebuilds on every use.

struct zeChildEntry
{
    zeAnimationObject* object; // null when the entry does not resolve to a child
    osg::UInt32 type;
    float bounds[4]; // begin, end, maximum, minimum
    bool counts;     // takes part in the union: not an empty container
    // Of a track: the layout of its own children, for its clip's insertion.
    bool simple;
    bool empty;
    float firstBegin;
    float lastEnd;
    float widestGap;
};

struct zeChildState
{
    bool valid = false;
    std::vector<zeChildEntry> entries;
    std::vector<zeAnimationObject*> pending;
    bool sorted = false; // every entry resolves, no begin is NaN, begins never decrease
    bool keys = false;
    // The union: for each of the four bounds the value the base fold gives and the first entry
    // that holds it.
    float fold[4];
    std::size_t foldAt[4];
    // The layout: every child resolves to a finite interval of positive length, in order and
    // without overlap (touching allowed); the widest gap between two neighbours. Worked out again
    // only when asked for after a child changed.
    bool simple = true;
    float widestGap = 0.0f;
    bool layoutStale = false;
    // Of a clip, built on its first insertion and then kept in step: over ranges of entries,
    // whether a track there may have room (see zeChildIndex::firstTrackWithRoom), so that
    // insertion skips whole ranges of full tracks at once.
    struct RoomNode
    {
        bool open;           // an empty track, or one whose children are not simply laid out
        float maxFirstBegin; // the latest first child's begin
        float minLastEnd;    // the earliest last child's end
        float maxGap;        // the widest gap between neighbouring children
    };
    std::vector<RoomNode> room;
    std::size_t roomLeaves = 0;
};

// ---- A curve's keys -------------------------------------------------------------------------
// getPoints() as sorted arrays, so that the neighbour and key lookups neither build a map nor
// resolve identifiers on every call. It is rebuilt once the pool's revision moved on from the one
// it was built at; the curve's own edits update it in step and take the new revision, or drop it.
struct zeKeyState
{
    bool built = false;
    // The resolved keys, in child order, strictly increase in x (no NaN): the arrays hold exactly
    // the keys in child order, not only the getPoints() representatives.
    bool ordered = false;
    // Every child identifier resolves to a key: with `ordered`, nodes[i] is the child-list entry
    // of points[i].
    bool complete = false;
    // Some key's x is NaN: the map's order is not a strict weak order, so lookups take the literal
    // map-based path.
    bool hasNaN = false;
    osg::UInt64 revision = 0;
    std::size_t keyCount = 0; // resolved keys, duplicates at one x included
    std::vector<float> xs;
    std::vector<float> ys;
    std::vector<zeControlPoint2D*> points;
    std::vector<zeAnimationObject::ChildList::iterator> nodes;
    // Keys erased one by one leave their slot behind (a null point, its x kept, so the arrays stay
    // sorted) instead of shifting every slot after it: `dead` slots, with the live ones linked in
    // order by `before` and `after` (set up at the first erasure) from `head` to `tail`. Any
    // lookup but those of a key's own slot squeezes the gaps out first.
    std::size_t dead = 0;
    std::vector<std::size_t> before;
    std::vector<std::size_t> after;
    std::size_t head = 0;
    std::size_t tail = 0;
    // While there are gaps: a tree over the slots giving the lowest and highest y of the live
    // keys (the first slot holding each), so that erasing the key holding one does not mean a
    // walk over all the others. Leaves from `treeLeaves` on; empty when not built.
    struct ExtremeNode
    {
        float low;
        float high;
        std::uint32_t lowAt; // kNoKey: no live key with a y that is a number below this node
        std::uint32_t highAt;
    };
    std::vector<ExtremeNode> tree;
    std::size_t treeLeaves = 0;
    // Index of the segment evaluation found last: it asks frame after frame.
    std::size_t lastSegment = 0;
    // With `ordered` and `complete`: the smallest and largest y and the first key holding each,
    // kept in step with single insertions, removals and moves; worked out again when `extremes`
    // is false.
    bool extremes = false;
    float lowY = 0.0f;
    float highY = 0.0f;
    std::size_t lowAt = 0;
    std::size_t highAt = 0;
};

// What one object's pointer leads to. An object that reports to its parent but has no index of
// its own yet (a sequence, a block before its first update) keeps only the hint of where its
// entry is in the parent's child state: the pointer slot then holds that number shifted left by
// one with the lowest bit set, which no index's address has, so that such children (tens of
// thousands on a track) cost no allocation.
struct zeEditIndex
{
    virtual ~zeEditIndex() = default;
    // The object's entry in its parent's child state, as a hint checked before use.
    std::size_t indexInParent = 0;
    zeChildState children;
};

// A curve's index also holds its keys.
struct zeCurveEditIndex : zeEditIndex
{
    zeKeyState keys;
};

namespace zeEditIndexes {

// Frees whatever the object's slot holds and leaves it empty.
void release(const zeAnimationObject* object);

} // namespace zeEditIndexes

namespace zeChildIndex {

// The object's child state brought up to date (rebuilt, or with the pending changes applied).
const zeChildState& current(const zeAnimationObject* object);
// Whether the object has a valid child state (one that follows its children in step).
bool valid(const zeAnimationObject* object);
// Drops the object's child state: it is rebuilt when next asked for.
void invalidate(const zeAnimationObject* object);
// A child that was just appended to the list joins a valid state in step.
void append(const zeAnimationObject* object, zeAnimationObject* child);
// A child reported a change of its interval, value range, emptiness or layout.
void noteChild(const zeAnimationObject* object, zeAnimationObject* child);
// Of a track: see zeAnimationObject::collidesWithChild.
bool collides(const zeAnimationObject* object, float nb, float ne);
// Of a clip: see zeAnimationObject::firstTrackWithRoom.
zeAnimationObject* firstTrackWithRoom(const zeAnimationObject* object, float nb, float ne,
                                      bool (*tryTrack)(zeAnimationObject*, void*), void* context);

} // namespace zeChildIndex

namespace zeKeyIndex {

// The curve's key index, rebuilt when it is not fresh, without gaps.
const zeKeyState& current(const zeAnimationCurve2D* curve);
// The same, gaps left in (see zeKeyState::dead): for finding a key's own slot by its x, which the
// gaps do not disturb, and its live neighbours with the helpers below.
const zeKeyState& withGaps(const zeAnimationCurve2D* curve);
const std::size_t NoSlot = static_cast<std::size_t>(-1);
// The live slot before or after the live slot `at`, the first and the last live slot; NoSlot
// when there is none.
std::size_t previousSlot(const zeKeyState& index, std::size_t at);
std::size_t nextSlot(const zeKeyState& index, std::size_t at);
std::size_t firstSlot(const zeKeyState& index);
std::size_t lastSlot(const zeKeyState& index);
bool fresh(const zeAnimationCurve2D* curve);
void drop(const zeAnimationCurve2D* curve);

// Evaluation's search: BeforeFirst gives the second key in k0, AfterLast the last key in k0,
// InsideSegment the keys around the frame.
enum SegmentLocation
{
    TooFewKeys,
    BeforeFirst,
    AfterLast,
    InsideSegment
};
SegmentLocation locateSegment(const zeAnimationCurve2D* curve, float frame, const zeControlPoint2D*& k0,
                              const zeControlPoint2D*& k1);

// For the base class's sort: true when the index shows every child a key in strict order.
bool keysKnownInOrder(const zeAnimationCurve2D* curve);
// Inserts a key's identifier into the child list where a stable sort by x would put it, keeping
// the index in step; false (nothing done) when the index cannot tell where that is.
bool insertInOrder(zeAnimationCurve2D* curve, zeControlPoint2D* key);
// Removes a key's entry from the child list, keeping the index in step; false when the index
// cannot locate it.
bool eraseInOrder(zeAnimationCurve2D* curve, zeControlPoint2D* key);
// computeTangents, telling the index that only handles moved, so it stays valid.
bool recomputeTangents(const zeAnimationCurve2D* curve, zeControlPoint2D* key);
// Writes a key's position and handles; a key that stays between its neighbours keeps the index
// valid.
void placeKey(const zeAnimationCurve2D* curve, zeControlPoint2D* key, const osg::Pnt2f& position,
              const osg::Vec2f& in, const osg::Vec2f& out);
// The smallest and largest y of the keys, worked out again when not known: with `ordered` and
// `complete` only.
const zeKeyState& extremes(const zeAnimationCurve2D* curve);
// Runs `destroy`, which takes `key` out of the registry. When the curve's index is fresh and
// holds every child in order but not that key (it already left the list), and leaving the
// registry was the only change meanwhile, the index stays valid: destroying a curve's keys one
// by one does not rebuild it each time.
template <class Destroy>
void keepAcross(const zeAnimationCurve2D* curve, const zeControlPoint2D* key, Destroy destroy);
// The parts of keepAcross around `destroy`.
bool survives(const zeAnimationCurve2D* curve, const zeControlPoint2D* key, osg::UInt64& revision);
void restampAfter(const zeAnimationCurve2D* curve, osg::UInt64 revision);

template <class Destroy>
void keepAcross(const zeAnimationCurve2D* curve, const zeControlPoint2D* key, Destroy destroy)
{
    osg::UInt64 revision = 0;
    const bool keep = curve && survives(curve, key, revision);
    destroy();
    if (keep)
        restampAfter(curve, revision);
}

} // namespace zeKeyIndex

#endif // ZEEDITINDEX_H
