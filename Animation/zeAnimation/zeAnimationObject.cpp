#include <zeAnimation/zeAnimationObject.h>

#include "zeAnimationHelpers.h"
#include <zeAnimation/zeAnimationCurve2D.h>
#include <zeAnimation/zeAnimationManager.h>
#include <zeAnimation/zeAnimationSequence.h>
#include <zeAnimation/zeControlPoint2D.h>

#include "zeAnimationRevision.h"
#include "zeEditIndex.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

osg::UInt32 zeAnimationObject::_typeID = TypeObject;
zeAnimationObject zeAnimationObject::_the;

namespace {

// Parent chains are no longer than MaxDepth (the links that would make them longer are refused);
// a walk up one that goes on for longer than this is on a damaged chain and stops.
std::size_t chainLimit()
{
    return 2 * zeAnimationObject::MaxDepth;
}

// Child identifiers taken for a walk during which the host may run and change any child list.
// All such walks share one stack (they nest: a child's walk runs inside its parent's), so that
// a walk allocates nothing once the stack has grown to the deepest walk.
class ChildIdSnapshot
{
public:
    explicit ChildIdSnapshot(const zeAnimationObject::ChildList& ids) : first(stack().size())
    {
        stack().insert(stack().end(), ids.begin(), ids.end());
        count = stack().size() - first;
    }
    ~ChildIdSnapshot() { stack().resize(first); }
    ChildIdSnapshot(const ChildIdSnapshot&) = delete;
    ChildIdSnapshot& operator=(const ChildIdSnapshot&) = delete;

    std::size_t size() const { return count; }
    osg::UInt64 operator[](std::size_t i) const { return stack()[first + i]; }

private:
    static std::vector<osg::UInt64>& stack()
    {
        static std::vector<osg::UInt64> ids;
        return ids;
    }

    std::size_t first;
    std::size_t count;
};

} // namespace

// ---- Watching objects across host calls -------------------------------------------------------

zeAnimationObject::Watch::Watch(zeAnimationObject* watched)
    : object(watched), id(watched ? watched->id : 0),
      registered(watched && manager()->getObject(id) == watched)
{}

zeAnimationObject* zeAnimationObject::Watch::get() const
{
    if (!registered)
        return object;
    return manager()->getObject(id) == object ? object : nullptr;
}

zeAnimationObject::zeAnimationObject()
    : id(0), begin(EmptyLow), end(EmptyHigh), maximum(EmptyHigh), minimum(EmptyLow), untrimmedBegin(EmptyLow),
      untrimmedEnd(EmptyHigh), startTime(0.0f), stopTime(0.0f), pauseTime(0.0f), lastFullFrame(0.0f),
      name("Unnamed"), active(true), playing(false), reversePlay(false), repeating(false), pausing(false),
      flipped(false), trimmed(false), selected(false), locked(false), hidden(false), motionBlur(false),
      usePlayRange(false), startPlayRange(0.0f), endPlayRange(0.0f), startPlay(0.0f), parentId(0)
{}

zeAnimationObject::zeAnimationObject(const zeAnimationObject& other)
{
    copyMembers(other);
}

zeAnimationObject& zeAnimationObject::operator=(const zeAnimationObject& other)
{
    if (this == &other)
        return *this;
    copyMembers(other);
    // The indexes described the children this object had.
    zeEditIndexes::release(this);
    return *this;
}

void zeAnimationObject::copyMembers(const zeAnimationObject& other)
{
    id = other.id;
    curveIds = other.curveIds;
    sequenceIds = other.sequenceIds;
    childIds = other.childIds;
    begin = other.begin;
    end = other.end;
    maximum = other.maximum;
    minimum = other.minimum;
    untrimmedBegin = other.untrimmedBegin;
    untrimmedEnd = other.untrimmedEnd;
    startTime = other.startTime;
    stopTime = other.stopTime;
    pauseTime = other.pauseTime;
    lastFullFrame = other.lastFullFrame;
    name = other.name;
    active = other.active;
    playing = other.playing;
    reversePlay = other.reversePlay;
    repeating = other.repeating;
    pausing = other.pausing;
    flipped = other.flipped;
    trimmed = other.trimmed;
    selected = other.selected;
    locked = other.locked;
    hidden = other.hidden;
    motionBlur = other.motionBlur;
    usePlayRange = other.usePlayRange;
    startPlayRange = other.startPlayRange;
    endPlayRange = other.endPlayRange;
    startPlay = other.startPlay;
    parentId = other.parentId;
    triggers = other.triggers;
}

zeAnimationObject::~zeAnimationObject()
{
    if (!childIds.empty()) {
        // Work on a copy: destroying a child must never touch the list being walked.
        const std::vector<osg::UInt64> children(childIds.begin(), childIds.end());
        zeAnimationManager* m = manager();
        for (osg::UInt64 childId : children) {
            if (zeAnimationObject* child = resolveChild(childId))
                m->destroyObject(child);
        }
        childIds.clear();
    }
    // Last: destroying the children above updates this object's indexes.
    zeEditIndexes::release(this);
}

// ---- Virtual operations -----------------------------------------------------------------------

void zeAnimationObject::setBegin(float value)
{
    const bool changed = !(begin == value);
    begin = value;
    zeAnimationRevision::bumpValue(); // even when equal: -0 and 0 compare equal yet are kept apart
    if (changed)
        noteChange();
}

void zeAnimationObject::setEnd(float value)
{
    const bool changed = !(end == value);
    end = value;
    zeAnimationRevision::bumpValue();
    if (changed)
        noteChange();
}

void zeAnimationObject::setMaximum(float value)
{
    const bool changed = !(maximum == value);
    maximum = value;
    if (changed)
        noteChange();
}

void zeAnimationObject::setMinimum(float value)
{
    const bool changed = !(minimum == value);
    minimum = value;
    if (changed)
        noteChange();
}

void zeAnimationObject::setActive(bool value)
{
    zeAnimationManager* m = manager();
    // Copies: a descendant's setActive must not be able to change the set being walked.
    const std::vector<osg::UInt64> curves(curveIds.begin(), curveIds.end());
    for (osg::UInt64 curveId : curves) {
        zeAnimationObject* curve = m->getObject(curveId);
        if (curve && curve != this)
            curve->setActive(value);
    }
    const std::vector<osg::UInt64> sequences(sequenceIds.begin(), sequenceIds.end());
    for (osg::UInt64 sequenceId : sequences) {
        zeAnimationObject* sequence = m->getObject(sequenceId);
        if (sequence && sequence != this)
            sequence->setActive(value);
    }
    active = value;
    zeAnimationRevision::bumpValue();
}

void zeAnimationObject::setPlaying(bool value)
{
    playing = value;
}

void zeAnimationObject::setReversePlay(bool value)
{
    reversePlay = value;
}

void zeAnimationObject::setRepeating(bool value)
{
    repeating = value;
    zeAnimationRevision::bumpValue();
}

void zeAnimationObject::setPausing(bool value)
{
    pausing = value;
}

void zeAnimationObject::setSelected(bool value)
{
    selected = value;
}

void zeAnimationObject::setLocked(bool value)
{
    locked = value;
}

void zeAnimationObject::setMotionBlur(bool value)
{
    motionBlur = value;
    zeAnimationRevision::bumpValue();
}

// Playback keeps the flags, intervals and play ranges it reads: each of their setters counts as a
// change of the pool.
void zeAnimationObject::setUsePlayRange(bool value)
{
    usePlayRange = value;
    zeAnimationRevision::bumpValue();
}

void zeAnimationObject::setStartPlayRange(float value)
{
    startPlayRange = value;
    zeAnimationRevision::bumpValue();
}

void zeAnimationObject::setEndPlayRange(float value)
{
    endPlayRange = value;
    zeAnimationRevision::bumpValue();
}

osg::UInt32 zeAnimationObject::getTypeID() const
{
    return _typeID;
}

float zeAnimationObject::getBegin() const
{
    return begin;
}

float zeAnimationObject::getEnd() const
{
    return end;
}

float zeAnimationObject::getMaximum() const
{
    return maximum;
}

float zeAnimationObject::getMinimum() const
{
    return minimum;
}

zeAnimationObject* zeAnimationObject::addObject(zeAnimationObject* object)
{
    return object;
}

zeAnimationObject* zeAnimationObject::subObject(zeAnimationObject* object, bool)
{
    return object;
}

// ---- Hierarchy updates ------------------------------------------------------------------------

void zeAnimationObject::mergeSummaries(zeAnimationObject* target, const zeAnimationObject* source,
                                       Operation op)
{
    // A source without summaries (a key, an empty container) has nothing to merge or drop.
    if (!source || (op != Remove && op != Add) ||
        (source != target && source->curveIds.empty() && source->sequenceIds.empty()))
        return;
    // Only a summary that really changes moves the revision: adding a key to a curve merges the
    // curve's set into its ancestors again, which then already hold it.
    const std::size_t before = target->curveIds.size() + target->sequenceIds.size();
    if (op == Remove) {
        if (source == target) {
            target->curveIds.clear();
            target->sequenceIds.clear();
        } else {
            for (osg::UInt64 curveId : source->curveIds)
                target->curveIds.erase(curveId);
            for (osg::UInt64 sequenceId : source->sequenceIds)
                target->sequenceIds.erase(sequenceId);
        }
    } else if (op == Add) {
        if (!source->curveIds.empty())
            target->curveIds.insert(source->curveIds.begin(), source->curveIds.end());
        target->sequenceIds.insert(source->sequenceIds.begin(), source->sequenceIds.end());
    }
    if (target->curveIds.size() + target->sequenceIds.size() != before)
        zeAnimationRevision::bump();
}

void zeAnimationObject::applyUpdate(zeAnimationObject* source, Operation op)
{
    mergeSummaries(this, source, op);
    sortObjectsByBegin();
    updateBounds();
}

void zeAnimationObject::updateBy(zeAnimationObject* source, Operation op, bool propagate)
{
    if (!source)
        return;
    // The climb to the root is a loop rather than a recursion, bounded so that a corrupted
    // parent chain ends the walk instead of looping.
    const std::size_t limit = propagate ? chainLimit() : 0;
    zeAnimationObject* target = this;
    for (std::size_t hops = 0; target; ++hops) {
        target->applyUpdate(source, op);
        if (!propagate || hops >= limit)
            break;
        target = target->getParent();
    }
}

void zeAnimationObject::updateAll(const std::list<osg::UInt64>& ids, Operation op, bool propagate)
{
    if (ids.empty())
        return;
    zeAnimationObject* source = manager()->getObject(ids.front());
    const std::size_t limit = propagate ? chainLimit() : 0;
    zeAnimationObject* target = this;
    for (std::size_t hops = 0; target; ++hops) {
        target->applyUpdate(source, op);
        if (!propagate || hops >= limit)
            break;
        target = target->getParent();
    }
}

void zeAnimationObject::updateCurves() {}

void zeAnimationObject::updateBounds()
{
    if (childIds.empty())
        return;
    // Empty containers do not count; a sequence (no children by nature) and a key (whose bounds
    // are its own position) do. Each bound is the fold, in list order with strict comparisons,
    // starting from the empty interval: the child state keeps it.
    const zeChildState& state = zeChildIndex::current(this);
    storeBounds(state.fold[0], state.fold[1], state.fold[2], state.fold[3]);
}

void zeAnimationObject::storeBounds(float newBegin, float newEnd, float newMaximum, float newMinimum)
{
    const float stored[4] = {begin, end, maximum, minimum};
    const float given[4] = {newBegin, newEnd, newMaximum, newMinimum};
    const bool changed = std::memcmp(stored, given, sizeof(stored)) != 0;
    begin = newBegin;
    end = newEnd;
    maximum = newMaximum;
    minimum = newMinimum;
    if (changed) {
        zeAnimationRevision::bumpValue();
        noteChange();
    }
}

void zeAnimationObject::move(float, bool) {}

void zeAnimationObject::moveBegin(float, bool) {}

void zeAnimationObject::moveEnd(float, bool) {}

void zeAnimationObject::trimBegin(float, bool) {}

void zeAnimationObject::trimEnd(float, bool) {}

void zeAnimationObject::flip() {}

void zeAnimationObject::triggerLoop(float) {}

// ---- Parent and children ----------------------------------------------------------------------

zeAnimationObject* zeAnimationObject::getParent() const
{
    return parentId ? manager()->getObject(parentId) : nullptr;
}

zeAnimationObject* zeAnimationObject::resolveChild(osg::UInt64 childId) const
{
    zeAnimationObject* child = manager()->getObject(childId);
    return child && child->parentId == id && child != this ? child : nullptr;
}

bool zeAnimationObject::hasAncestor(const zeAnimationObject* other) const
{
    if (!other)
        return false;
    const std::size_t limit = chainLimit();
    const zeAnimationObject* current = this;
    for (std::size_t hops = 0; current && hops <= limit; ++hops) {
        if (current == other)
            return true;
        current = current->getParent();
    }
    return false;
}

int zeAnimationObject::levelsFromRoot() const
{
    int levels = 0;
    for (const zeAnimationObject* current = this; current; current = current->getParent()) {
        if (++levels > MaxDepth)
            break;
    }
    return levels;
}

namespace {

// Levels of the subtree of `root`, itself included, where a curve always counts the level of its
// keys; stops as soon as the result exceeds `limit`. Iterative, so any hierarchy is measured
// without deep recursion.
int subtreeLevels(const zeAnimationObject* root, int limit)
{
    std::vector<std::pair<const zeAnimationObject*, int>> pending(1, std::make_pair(root, 1));
    int levels = 0;
    while (!pending.empty() && levels <= limit) {
        const zeAnimationObject* object = pending.back().first;
        const int level = pending.back().second;
        pending.pop_back();
        const bool curve = object->getTypeID() == zeAnimationObject::TypeCurve2D;
        levels = std::max(levels, curve ? level + 1 : level);
        if (curve)
            continue;
        for (osg::UInt64 childId : object->getChildIds()) {
            if (const zeAnimationObject* child = object->resolveChild(childId))
                pending.emplace_back(child, level + 1);
        }
    }
    return levels;
}

} // namespace

bool zeAnimationObject::canAdopt(const zeAnimationObject* child, int extraLevels) const
{
    if (!child || hasAncestor(child))
        return false;
    const int above = levelsFromRoot() + extraLevels - 1;
    // A key is a leaf, and its curve has kept a level for it.
    if (child->getTypeID() == TypePoint2D && getTypeID() == TypeCurve2D)
        return above < MaxDepth;
    return above + subtreeLevels(child, MaxDepth - above) <= MaxDepth;
}

void zeAnimationObject::leaveParent()
{
    zeAnimationObject* parent = getParent();
    if (!parent)
        return;
    // The parent's own removal keeps its summaries and caches right. When that leaves the link
    // (the parent does not list this object, or its removal refuses this kind of child), a
    // listed entry still goes.
    parent->subObject(this, false);
    if (parentId == parent->id && parent->findObject(id).first)
        parent->unlinkChild(this);
}

bool zeAnimationObject::adopt(zeAnimationObject* child)
{
    if (!canAdopt(child))
        return false;
    child->leaveParent();
    appendChild(child);
    return true;
}

void zeAnimationObject::setParent(zeAnimationObject* parent)
{
    if (parent == getParent() && (parent || parentId == 0))
        return;
    if (parent && !parent->canAdopt(this))
        return;
    leaveParent();
    parentId = parent ? parent->id : 0;
}

std::list<zeAnimationObject*> zeAnimationObject::getObjects() const
{
    std::list<zeAnimationObject*> objects;
    for (osg::UInt64 childId : childIds) {
        if (zeAnimationObject* child = resolveChild(childId))
            objects.push_back(child);
    }
    return objects;
}

std::vector<zeAnimationCurve2D*> zeAnimationObject::getCurves() const
{
    std::vector<zeAnimationCurve2D*> curves;
    const zeAnimationManager* m = manager();
    for (osg::UInt64 curveId : curveIds) {
        if (zeAnimationCurve2D* curve = m->getCurve2D(curveId))
            curves.push_back(curve);
    }
    return curves;
}

std::vector<zeAnimationSequence*> zeAnimationObject::getSequencesRecursive() const
{
    std::vector<zeAnimationSequence*> sequences;
    zeAnimationManager* m = manager();
    for (osg::UInt64 sequenceId : sequenceIds) {
        if (zeAnimationSequence* sequence = m->getSequence(sequenceId))
            sequences.push_back(sequence);
    }
    return sequences;
}

void zeAnimationObject::setRecursiveSequences(const std::vector<zeAnimationSequence*>& sequences)
{
    sequenceIds.clear();
    for (zeAnimationSequence* sequence : sequences) {
        if (sequence)
            sequenceIds.insert(static_cast<zeAnimationObject*>(sequence)->id);
    }
}

zeAnimationObject::FindResult zeAnimationObject::findObject(osg::UInt64 childId)
{
    for (ChildList::iterator it = childIds.begin(); it != childIds.end(); ++it) {
        if (*it == childId)
            return FindResult(true, it);
    }
    return FindResult(false, childIds.end());
}

zeAnimationObject::FindResult zeAnimationObject::findObject(float frame)
{
    for (ChildList::iterator it = childIds.begin(); it != childIds.end(); ++it) {
        const zeAnimationObject* child = resolveChild(*it);
        if (child && child->getBegin() == frame)
            return FindResult(true, it);
    }
    return FindResult(false, childIds.end());
}

// ---- Child state ------------------------------------------------------------------------------

void zeAnimationObject::noteChange()
{
    if (parentId == 0)
        return;
    if (zeAnimationObject* parent = manager()->getObject(parentId))
        parent->childChanged(this);
}

void zeAnimationObject::childChanged(zeAnimationObject* child)
{
    zeChildIndex::noteChild(this, child);
    // A track's layout is its clip's business too.
    if (getTypeID() == TypeStreak)
        noteChange();
}

void zeAnimationObject::invalidateChildState()
{
    zeChildIndex::invalidate(this);
}

bool zeAnimationObject::collidesWithChild(float nb, float ne) const
{
    return zeChildIndex::collides(this, nb, ne);
}

zeAnimationObject* zeAnimationObject::firstTrackWithRoom(float nb, float ne,
                                                         bool (*tryTrack)(zeAnimationObject*, void*),
                                                         void* context) const
{
    return zeChildIndex::firstTrackWithRoom(this, nb, ne, tryTrack, context);
}

void zeAnimationObject::sortObjectsByBegin()
{
    if (childIds.size() < 2)
        return;
    // A curve usually knows from its key index that its keys are in strict order; asking it
    // spares the walk below, which resolves every child, on each edit of a long curve.
    const zeAnimationCurve2D* curve = zeAnimationCast<zeAnimationCurve2D>(this);
    if (curve && zeKeyIndex::keysKnownInOrder(curve))
        return;
    // A stable sort of an already ordered list changes nothing, and the list nearly always is
    // ordered: the child state knows.
    const zeChildState& state = zeChildIndex::current(this);
    if (state.sorted)
        return;
    zeAnimationRevision::bump();
    bool comparable = true;
    for (const zeChildEntry& entry : state.entries)
        comparable = comparable && entry.object && !std::isnan(entry.bounds[0]);
    if (!comparable) {
        // With an unresolved child or a NaN begin the comparison is no strict weak order; the
        // list sort with the registry comparison decides, as it would alone.
        childIds.sort([this](osg::UInt64 a, osg::UInt64 b) {
            const zeAnimationObject* objectA = resolveChild(a);
            const zeAnimationObject* objectB = resolveChild(b);
            return objectA && objectB && objectA->getBegin() < objectB->getBegin();
        });
        invalidateChildState();
        return;
    }
    // Every child resolves and no begin is NaN: a stable sort of the begins gives the list
    // sort's order. The identifiers are written back into the existing list nodes.
    std::vector<std::pair<float, std::size_t>> order;
    order.reserve(state.entries.size());
    for (const zeChildEntry& entry : state.entries)
        order.emplace_back(entry.bounds[0], order.size());
    std::stable_sort(order.begin(), order.end(),
                     [](const std::pair<float, std::size_t>& a, const std::pair<float, std::size_t>& b) {
                         return a.first < b.first;
                     });
    std::vector<osg::UInt64> ids;
    ids.reserve(order.size());
    for (const std::pair<float, std::size_t>& item : order)
        ids.push_back(state.entries[item.second].object->id);
    ChildList::iterator node = childIds.begin();
    for (osg::UInt64 childId : ids)
        *node++ = childId;
    invalidateChildState();
}

// ---- Triggers ---------------------------------------------------------------------------------

void zeAnimationObject::addTrigger(osg::UInt64 key, zeAnimationManager::AnimationTrigger kind)
{
    triggers.insert(TriggerMap::value_type(kind, key));
}

bool zeAnimationObject::subTrigger(osg::UInt64 key)
{
    for (TriggerMap::iterator it = triggers.begin(); it != triggers.end(); ++it) {
        if (it->second == key) {
            triggers.erase(it);
            return true;
        }
    }
    return false;
}

bool zeAnimationObject::fire(zeAnimationManager::AnimationTrigger kind)
{
    if (triggers.find(kind) == triggers.end())
        return true; // nothing connected: the host is not called
    const Watch self(this);
    trigger(kind);
    return self.alive();
}

void zeAnimationObject::trigger(zeAnimationManager::AnimationTrigger kind)
{
    std::vector<osg::UInt64> keys;
    const std::pair<TriggerMap::const_iterator, TriggerMap::const_iterator> range =
        triggers.equal_range(kind);
    for (TriggerMap::const_iterator it = range.first; it != range.second; ++it)
        keys.push_back(it->second);
    if (!keys.empty())
        manager()->executeTriggers(keys);
}

void zeAnimationObject::getActiveSpan(float& spanBegin, float& spanEnd) const
{
    if (usePlayRange) {
        spanBegin = startPlayRange;
        spanEnd = endPlayRange;
    } else {
        spanBegin = getBegin();
        spanEnd = getEnd();
    }
}

bool zeAnimationObject::triggerSpan(float frame)
{
    float spanBegin = 0.0f;
    float spanEnd = 0.0f;
    getActiveSpan(spanBegin, spanEnd);
    if (spanBegin <= frame && !isPlaying()) {
        if (!fire(zeAnimationManager::TriggerStart))
            return false;
        setPlaying(true);
    }
    if (spanEnd < frame && isPlaying()) {
        if (!fire(zeAnimationManager::TriggerEnd))
            return false;
        setPlaying(false);
    }
    return true;
}

// ---- Operations shared by the containers ------------------------------------------------------

std::vector<zeAnimationObject*> zeAnimationObject::childrenOfType(TypeID onlyType) const
{
    std::vector<zeAnimationObject*> children;
    children.reserve(childIds.size());
    for (osg::UInt64 childId : childIds) {
        zeAnimationObject* child = resolveChild(childId);
        if (child && (onlyType == TypeObject || child->getTypeID() == onlyType))
            children.push_back(child);
    }
    return children;
}

void zeAnimationObject::containerSetActive(bool value)
{
    for (zeAnimationObject* child : childrenOfType(TypeObject))
        child->setActive(value);
    zeAnimationObject::setActive(value);
}

void zeAnimationObject::containerSetRepeating(bool value)
{
    for (zeAnimationObject* child : childrenOfType(TypeObject))
        child->setRepeating(value);
    repeating = value;
    zeAnimationRevision::bump();
}

void zeAnimationObject::containerSetMotionBlur(bool value)
{
    for (zeAnimationObject* child : childrenOfType(TypeObject))
        child->setMotionBlur(value);
    motionBlur = value;
    zeAnimationRevision::bump();
}

void zeAnimationObject::containerMove(float delta, bool notify, TypeID onlyType)
{
    if (childIds.empty())
        return;
    for (zeAnimationObject* child : childrenOfType(onlyType))
        child->move(delta, false);
    updateBy(this, Change, notify);
}

namespace {

// Gives a child its new interval edge by edge. The edge in front (in the direction the child
// moves) goes first and the one that follows it last, so the child never passes through an
// inverted interval that its own guard would refuse: shrinking a container [0,40] to [20,40]
// takes a child on [0,20] to [20,30] instead of leaving its begin behind.
void stretchChild(zeAnimationObject* child, float newBegin, float newEnd, bool towardsEnd)
{
    if (towardsEnd) {
        child->moveEnd(newEnd, false);
        child->moveBegin(newBegin, false);
    } else {
        child->moveBegin(newBegin, false);
        child->moveEnd(newEnd, false);
    }
}

} // namespace

void zeAnimationObject::containerMoveBegin(float newBegin, bool notify, bool guarded, TypeID onlyType)
{
    if (childIds.empty())
        return;
    const float e = getEnd();
    const float b = getBegin();
    // The begin is stored before the test, so a refused stretch still shows the new begin until
    // the next bounds computation.
    setBegin(newBegin);
    if (guarded && !(newBegin < e - kEditTolerance))
        return;
    const float scale = (e - newBegin) / (e - b);
    // Shrinking moves every child towards the end, growing towards the begin.
    const bool towardsEnd = newBegin > b;
    for (zeAnimationObject* child : childrenOfType(onlyType)) {
        const float cb = child->getBegin();
        const float ce = child->getEnd();
        stretchChild(child, e - (e - cb) * scale, e - (e - ce) * scale, towardsEnd);
    }
    if (notify)
        notifyParent();
}

void zeAnimationObject::containerMoveEnd(float newEnd, bool notify, bool guarded, TypeID onlyType)
{
    if (childIds.empty())
        return;
    const float b = getBegin();
    const float e = getEnd();
    setEnd(newEnd);
    if (guarded && !(newEnd > b + kEditTolerance))
        return;
    const float scale = (newEnd - b) / (e - b);
    // Growing moves every child towards the end, shrinking towards the begin.
    const bool towardsEnd = newEnd > e;
    for (zeAnimationObject* child : childrenOfType(onlyType)) {
        const float cb = child->getBegin();
        const float ce = child->getEnd();
        stretchChild(child, (cb - b) * scale + b, (ce - b) * scale + b, towardsEnd);
    }
    if (notify)
        notifyParent();
}

void zeAnimationObject::containerTrimBegin(float newBegin, bool notify)
{
    if (childIds.empty())
        return;
    if (newBegin < getEnd() - kEditTolerance) {
        setBegin(newBegin);
        trimmed = true;
        if (notify)
            notifyParent();
    }
}

void zeAnimationObject::containerTrimEnd(float newEnd, bool notify)
{
    if (childIds.empty())
        return;
    if (newEnd > getBegin() + kEditTolerance) {
        setEnd(newEnd);
        trimmed = true;
        if (notify)
            notifyParent();
    }
}

void zeAnimationObject::containerFlip(TypeID onlyType)
{
    if (childIds.empty())
        return;
    for (zeAnimationObject* child : childrenOfType(onlyType)) {
        child->flip();
        const float b = getBegin();
        const float e = getEnd();
        // Puts the child's new begin at b + (e - ce): the mirror image inside this interval.
        child->move((e - child->getEnd()) + b - child->getBegin(), false);
    }
    flipped = !flipped;
    updateBy(this, Change, false);
}

void zeAnimationObject::containerTriggerLoop(float frame, bool passDown, TypeID onlyType)
{
    if (childIds.empty())
        return;
    const Watch self(this);
    if (!triggerSpan(frame) || !passDown)
        return;
    // The host runs inside the children's triggers and may destroy or move any child, or this
    // object: each child is looked up when its turn comes, and the walk ends with this object.
    const ChildIdSnapshot children(childIds);
    for (std::size_t i = 0; i < children.size(); ++i) {
        zeAnimationObject* child = resolveChild(children[i]);
        if (child && (onlyType == TypeObject || child->getTypeID() == onlyType))
            child->triggerLoop(frame);
        if (!self.alive())
            return;
    }
}

void zeAnimationObject::appendChild(zeAnimationObject* child)
{
    child->parentId = id;
    const bool wasEmpty = childIds.empty();
    childIds.push_back(child->id);
    zeAnimationRevision::bump();
    zeChildIndex::append(this, child);
    if (wasEmpty || getTypeID() == TypeStreak)
        noteChange();
    updateBy(child, Add, true);
}

bool zeAnimationObject::unlinkChild(zeAnimationObject* child)
{
    FindResult found = findObject(child->id);
    if (!found.first)
        return false;
    childIds.erase(found.second);
    zeAnimationRevision::bump();
    invalidateChildState();
    noteChange();
    // An entry left behind by a destroyed child may carry an identifier given out again: its
    // new owner's parent is not this object and stays.
    if (child->parentId == id)
        child->parentId = 0;
    updateBy(child, Remove, true);
    return true;
}

void zeAnimationObject::renumberLinks(osg::UInt64 newId)
{
    for (osg::UInt64 childId : childIds) {
        if (zeAnimationObject* child = resolveChild(childId))
            child->parentId = newId;
    }
    if (zeControlPoint2D* key = zeAnimationCast<zeControlPoint2D>(this)) {
        for (zeControlPoint2D* handle : {key->getInTangentPoint(), key->getOutTangentPoint()}) {
            if (handle)
                handle->parentId = newId;
        }
    }
    zeAnimationObject* parent = getParent();
    if (parent) {
        for (osg::UInt64& childId : parent->childIds) {
            if (childId == id)
                childId = newId;
        }
        zeAnimationRevision::bump();
        parent->invalidateChildState();
    }
    invalidateChildState();
    // A curve or sequence carries its own identifier in its summaries and its ancestors'.
    const std::size_t limit = chainLimit();
    std::size_t hops = 0;
    for (zeAnimationObject* holder = this; holder && hops <= limit; holder = holder->getParent(), ++hops) {
        if (holder->curveIds.erase(id))
            holder->curveIds.insert(newId);
        if (holder->sequenceIds.erase(id))
            holder->sequenceIds.insert(newId);
    }
    zeAnimationRevision::bump();
}

void zeAnimationObject::appendQuietly(zeAnimationObject* child)
{
    child->parentId = id;
    childIds.push_back(child->id);
    zeAnimationRevision::bump();
    invalidateChildState();
}

void zeAnimationObject::finishAppends()
{
    for (const zeChildEntry& entry : zeChildIndex::current(this).entries) {
        if (entry.object)
            mergeSummaries(this, entry.object, Add);
    }
    sortObjectsByBegin();
    updateBounds();
    // The parent rebuilds its own state when it finishes in turn; one not loaded in this bulk
    // learns of a change of emptiness here.
    noteChange();
}

void zeAnimationObject::copyContainerState(const zeAnimationObject& other)
{
    id = manager()->createUID();
    setBegin(other.getBegin());
    setEnd(other.getEnd());
    untrimmedBegin = other.untrimmedBegin;
    untrimmedEnd = other.untrimmedEnd;
    name = other.name;
    setActive(other.active);
    setPlaying(other.playing);
    setRepeating(other.repeating);
    flipped = other.flipped;
    trimmed = other.trimmed;
    setMotionBlur(other.motionBlur);
}

void zeAnimationObject::linkToParentOf(const zeAnimationObject& other)
{
    zeAnimationObject* parent = other.getParent();
    parentId = parent ? parent->getId() : 0;
}

void zeAnimationObject::notifyParent()
{
    if (zeAnimationObject* parent = getParent())
        parent->updateBy(this, Change, true);
}
