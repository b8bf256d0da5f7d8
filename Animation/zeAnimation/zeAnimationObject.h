#ifndef ZEANIMATIONOBJECT_H
#define ZEANIMATIONOBJECT_H

#include <zeAnimation/zeAnimationConfig.h>
#include <zeAnimation/zeAnimationManager.h>

#include <OpenSG/OSGBaseTypes.h>

#include <list>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

class zeControlPoint2D;
class zeAnimationCurve2D;
class zeAnimationUnit;
class zeAnimationStreak;
class zeAnimationStrip;
class zeAnimationSequence;
struct zeEditIndex;

// Common base of every timed thing of the animation model. Objects never hold pointers to each
// other: parent, children and descendants are identifiers, resolved through the manager at every
// use, and an identifier that no longer resolves is skipped.
//
// Objects are made and destroyed by zeAnimationManager only. The destructor is deliberately not
// virtual; the manager deletes every object through its concrete type.
class ZEANIMATION_EXPORT zeAnimationObject
{
    friend class zeAnimationManager;

public:
    // Bit set passed to updateBy/updateAll. Any other value behaves like Change, so the type is a
    // fixed 32 bits wide and every such value is a valid Operation.
    enum Operation : osg::UInt32
    {
        Add = 256,
        Remove = 512,
        Change = 1024
    };

    // What getTypeID() returns, one value per class. The values are fixed: hosts and animation
    // files compare with the numbers.
    enum TypeID
    {
        TypeObject = 0,
        TypePoint2D = 1,
        TypeCurve2D = 2,
        TypeUnit = 3,
        TypeStreak = 4,
        TypeStrip = 5,
        TypeSequence = 6
    };

    // The empty interval and value range: begin above end, minimum above maximum. Every bounds
    // computation starts from this pair (the single-precision numbers nearest to +-10^23).
    static constexpr float EmptyLow = 1.0e23f;
    static constexpr float EmptyHigh = -1.0e23f;

    typedef std::list<osg::UInt64> ChildList;
    typedef std::pair<bool, ChildList::iterator> FindResult;
    typedef std::multimap<zeAnimationManager::AnimationTrigger, osg::UInt64> TriggerMap;

    // ---- Virtual operations (the order of declaration is the order of the slots) ----------
    virtual void setBegin(float value);
    virtual void setEnd(float value);
    virtual void setMaximum(float value);
    virtual void setMinimum(float value);
    virtual void setActive(bool value);
    virtual void setPlaying(bool value);
    virtual void setReversePlay(bool value);
    virtual void setRepeating(bool value);
    virtual void setPausing(bool value);
    virtual void setSelected(bool value);
    virtual void setLocked(bool value);
    virtual void setMotionBlur(bool value);
    virtual osg::UInt32 getTypeID() const;
    virtual float getBegin() const;
    virtual float getEnd() const;
    virtual float getMaximum() const;
    virtual float getMinimum() const;
    virtual zeAnimationObject* addObject(zeAnimationObject* object);
    virtual zeAnimationObject* subObject(zeAnimationObject* object, bool destroy);
    virtual void updateBy(zeAnimationObject* source, Operation op, bool propagate);
    virtual void updateAll(const std::list<osg::UInt64>& ids, Operation op, bool propagate);
    virtual void updateCurves();
    virtual void updateBounds();
    virtual void move(float delta, bool notify);
    virtual void moveBegin(float newBegin, bool notify);
    virtual void moveEnd(float newEnd, bool notify);
    virtual void trimBegin(float newBegin, bool notify);
    virtual void trimEnd(float newEnd, bool notify);
    virtual void flip();
    virtual void triggerLoop(float frame);

    // ---- Accessors ------------------------------------------------------------------------
    osg::UInt64 getId() const { return id; }
    std::string getName() const { return name; }
    void setName(const std::string& value) { name = value; }
    float getUntrimmedBegin() const { return untrimmedBegin; }
    void setUntrimmedBegin(float value) { untrimmedBegin = value; }
    float getUntrimmedEnd() const { return untrimmedEnd; }
    void setUntrimmedEnd(float value) { untrimmedEnd = value; }
    float getStartTime() const { return startTime; }
    void setStartTime(float value) { startTime = value; }
    float getStopTime() const { return stopTime; }
    void setStopTime(float value) { stopTime = value; }
    float getPauseTime() const { return pauseTime; }
    void setPauseTime(float value) { pauseTime = value; }
    float getLastFullFrame() const { return lastFullFrame; }
    void setLastFullFrame(float value) { lastFullFrame = value; }
    bool isActive() const { return active; }
    bool isPlaying() const { return playing; }
    bool getReversePlay() const { return reversePlay; }
    bool isRepeating() const { return repeating; }
    bool isPausing() const { return pausing; }
    bool isSelected() const { return selected; }
    bool isLocked() const { return locked; }
    bool isHidden() const { return hidden; }
    void setHidden(bool value) { hidden = value; }
    bool isFlipped() const { return flipped; }
    void setFlipped(bool value) { flipped = value; }
    bool isTrimmed() const { return trimmed; }
    void setTrimmed(bool value) { trimmed = value; }
    bool getMotionBlur() const { return motionBlur; }
    bool usesPlayRange() const { return usePlayRange; }
    void setUsePlayRange(bool value);
    float getStartPlayRange() const { return startPlayRange; }
    void setStartPlayRange(float value);
    float getEndPlayRange() const { return endPlayRange; }
    void setEndPlayRange(float value);
    float getStartPlay() const { return startPlay; }
    void setStartPlay(float value) { startPlay = value; }

    float getDuration() const { return getEnd() - getBegin(); }
    float getUntrimmedDuration() const { return untrimmedEnd - untrimmedBegin; }
    bool isEmpty() const { return childIds.empty(); }

    zeAnimationObject* getParent() const;
    osg::UInt64 getParentId() const { return parentId; }
    // Stores the parent's identifier (0 for null). An object has one parent: taking another one
    // takes it out of the child list of the container that lists it. A link that would make
    // this object its own ancestor, or a hierarchy deeper than MaxDepth, is refused and leaves
    // the current parent in place.
    void setParent(zeAnimationObject* parent);
    // True when `other` is this object or lies on its parent chain.
    bool hasAncestor(const zeAnimationObject* other) const;

    // ---- Collections ----------------------------------------------------------------------
    std::list<zeAnimationObject*> getObjects() const;
    const ChildList& getChildIds() const { return childIds; }
    std::vector<zeAnimationCurve2D*> getCurves() const;
    const std::set<osg::UInt64>& getCurveIds() const { return curveIds; }
    std::vector<zeAnimationSequence*> getSequencesRecursive() const;
    const std::set<osg::UInt64>& getSequenceIds() const { return sequenceIds; }
    FindResult findObject(osg::UInt64 childId);
    FindResult findObject(float frame);

    // ---- Triggers -------------------------------------------------------------------------
    void addTrigger(osg::UInt64 key, zeAnimationManager::AnimationTrigger kind);
    bool subTrigger(osg::UInt64 key);
    const TriggerMap& getTriggers() const { return triggers; }

    // The most levels a hierarchy may span, from a root down to its keys (a curve always counts
    // the level of its keys). Adding a child or setting a parent that would make a hierarchy
    // deeper is refused, so every operation that walks a subtree reaches all of it.
    static constexpr int MaxDepth = 256;

    // The child a child-list entry names: the registered object of that identifier, provided this
    // object is its parent. An entry whose identifier now names an unrelated object (a destroyed
    // child's identifier given out again) counts as unresolved, like one that names nothing.
    zeAnimationObject* resolveChild(osg::UInt64 childId) const;

    // Remembers an object across a call that may reach the host (a connected function, a host
    // sequence, a time or camera callback). The host may destroy anything there; get() looks the
    // object up again and is null once it is gone. An object the registry did not hold when it
    // was taken (a handle, say) is taken as it is.
    class Watch
    {
    public:
        explicit Watch(zeAnimationObject* object);
        zeAnimationObject* get() const;
        bool alive() const { return get() != nullptr; }

    private:
        zeAnimationObject* object;
        osg::UInt64 id;
        bool registered;
    };

    static zeAnimationObject* resolve(osg::UInt64 objectId)
    {
        return zeAnimationManager::the()->getObject(objectId);
    }

protected:
    zeAnimationObject();
    zeAnimationObject(const zeAnimationObject& other);
    zeAnimationObject& operator=(const zeAnimationObject& other);
    ~zeAnimationObject();

    void setId(osg::UInt64 value) { id = value; }
    void setRecursiveSequences(const std::vector<zeAnimationSequence*>& sequences);
    void sortObjectsByBegin();
    void trigger(zeAnimationManager::AnimationTrigger kind);

    // Shared helpers of the containers.
    // True when `child`, placed `extraLevels` levels below this object (1: as its child), keeps
    // the hierarchy a tree no deeper than MaxDepth.
    bool canAdopt(const zeAnimationObject* child, int extraLevels = 1) const;
    // Makes `child` the last entry of the child list when canAdopt allows it: it first leaves the
    // child list of the container that holds it (this one included), then is linked and merged
    // into the summaries. False, changing nothing, when refused.
    bool adopt(zeAnimationObject* child);
    // Takes this object out of the child list of its parent, when the parent lists it.
    void leaveParent();
    // The span playback tests against: the play range when it is used, else begin and end.
    void getActiveSpan(float& spanBegin, float& spanEnd) const;
    // Fires the start and end triggers as the frame reaches the span and passes its end. False
    // when a connected host function destroyed this object meanwhile.
    bool triggerSpan(float frame);

    // Operations shared by the containers (block, track, clip), written once. `onlyType`
    // restricts the children acted on to one kind (the clip acts on its tracks only); TypeObject,
    // which every object is, means every child that resolves.
    std::vector<zeAnimationObject*> childrenOfType(TypeID onlyType) const;
    // The kinds a track holds: blocks, clips and sequences.
    static bool isTrackContent(osg::UInt32 type)
    {
        return type == TypeUnit || type == TypeStrip || type == TypeSequence;
    }
    // resolveChild, provided the child is a T.
    template <class T>
    T* typedChild(osg::UInt64 childId) const;
    // The children that are Ts, in list order.
    template <class T>
    std::vector<T*> typedChildren() const;
    void containerSetActive(bool value);
    void containerSetRepeating(bool value);
    void containerSetMotionBlur(bool value);
    void containerMove(float delta, bool notify, TypeID onlyType);
    // Stretches the content about the fixed end (begin) or begin (end). With `guarded`, a new
    // edge closer than 1e-6 to the fixed one, or beyond it, leaves the children alone.
    void containerMoveBegin(float newBegin, bool notify, bool guarded, TypeID onlyType);
    void containerMoveEnd(float newEnd, bool notify, bool guarded, TypeID onlyType);
    void containerTrimBegin(float newBegin, bool notify);
    void containerTrimEnd(float newEnd, bool notify);
    void containerFlip(TypeID onlyType);
    void containerTriggerLoop(float frame, bool passDown, TypeID onlyType);
    // Unlinks a listed child and drops its summaries; false when it is not listed.
    bool unlinkChild(zeAnimationObject* child);
    // Sets the four bounds, telling the parent when one of them changed.
    void storeBounds(float newBegin, float newEnd, float newMaximum, float newMinimum);
    // Called after this object's interval, value range or emptiness changed, or, for a track,
    // its children's layout: the parent takes note.
    void noteChange();
    // Of a track: whether an object over [nb, ne] collides with a child by the track's overlap
    // rule (a child's interval containing or contained in it, or an edge strictly inside).
    bool collidesWithChild(float nb, float ne) const;
    // Of a clip: calls tryTrack on each child track in list order that may have room for
    // [nb, ne] by the track's overlap rule, until it returns true; that track is returned. Tracks
    // that certainly have no room (their children of positive length, in order and apart, with no
    // gap wide enough) are not asked.
    zeAnimationObject* firstTrackWithRoom(float nb, float ne, bool (*tryTrack)(zeAnimationObject*, void*),
                                          void* context) const;
    void notifyParent();
    // Bulk linking for the file loader, which builds whole subtrees: appendQuietly links a child
    // as the last entry of the child list and does nothing else; finishAppends then brings the
    // summaries, the child order and the bounds up to date at once, as the updates of the single
    // appends would have. The children must be finished first.
    void appendQuietly(zeAnimationObject* child);
    void finishAppends();
    // What a container copy takes over from its source: a fresh identifier, the interval (through
    // the setters), the untrimmed interval, the name and the flags (active, playing, repeating
    // through the setters; flipped, trimmed; motion blur through its setter).
    void copyContainerState(const zeAnimationObject& source);
    // Links a copy to its source's parent, without entering it in the parent's child list. Called
    // last: while the children are added the link is unset, so their summaries stay in the copy
    // instead of climbing into the source's ancestors, which do not list the copy.
    void linkToParentOf(const zeAnimationObject& source);

    // Members in declared order; copyMembers copies each of them, so a member added here is added
    // there too.
    osg::UInt64 id;
    std::set<osg::UInt64> curveIds;
    std::set<osg::UInt64> sequenceIds;
    ChildList childIds;
    float begin;
    float end;
    float maximum;
    float minimum;
    float untrimmedBegin;
    float untrimmedEnd;
    float startTime;
    float stopTime;
    float pauseTime;
    float lastFullFrame;
    std::string name;
    bool active;
    bool playing;
    bool reversePlay;
    bool repeating;
    bool pausing;
    bool flipped;
    bool trimmed;
    bool selected;
    bool locked;
    bool hidden;
    bool motionBlur;
    bool usePlayRange;
    float startPlayRange;
    float endPlayRange;
    float startPlay;
    osg::UInt64 parentId;
    TriggerMap triggers;

    static zeAnimationObject _the;

private:
    // Drops what the editing indexes know of the children: they are worked out again when next
    // needed.
    void invalidateChildState();
    // A child's interval, value range, emptiness or layout changed.
    void childChanged(zeAnimationObject* child);
    void appendChild(zeAnimationObject* child);
    // Before the manager gives this object another identifier: the parent's child list, the
    // children's parent links and the curve and sequence summaries take the new one.
    void renumberLinks(osg::UInt64 newId);
    // Fires one trigger; false when the host destroyed this object meanwhile.
    bool fire(zeAnimationManager::AnimationTrigger kind);
    // Levels from the root of this object's parent chain down to this object (1 for a root), or
    // more than MaxDepth when the chain is longer or loops.
    int levelsFromRoot() const;
    void applyUpdate(zeAnimationObject* source, Operation op);
    static void mergeSummaries(zeAnimationObject* target, const zeAnimationObject* source, Operation op);

    // Every member above, in declared order (the copy constructor and assignment take them; the
    // editing indexes stay the object's own).
    void copyMembers(const zeAnimationObject& other);

    // Indexes that speed up editing (what the updates need of the children, a curve's keys in
    // order), made on first use; internal to the library.
    mutable zeEditIndex* editIndex = nullptr;

    static osg::UInt32 _typeID;
};

// The type id of each class of the pool, for zeAnimationCast.
template <class T>
struct zeAnimationTypeOf;
template <>
struct zeAnimationTypeOf<zeControlPoint2D>
{
    static constexpr zeAnimationObject::TypeID value = zeAnimationObject::TypePoint2D;
};
template <>
struct zeAnimationTypeOf<zeAnimationCurve2D>
{
    static constexpr zeAnimationObject::TypeID value = zeAnimationObject::TypeCurve2D;
};
template <>
struct zeAnimationTypeOf<zeAnimationUnit>
{
    static constexpr zeAnimationObject::TypeID value = zeAnimationObject::TypeUnit;
};
template <>
struct zeAnimationTypeOf<zeAnimationStreak>
{
    static constexpr zeAnimationObject::TypeID value = zeAnimationObject::TypeStreak;
};
template <>
struct zeAnimationTypeOf<zeAnimationStrip>
{
    static constexpr zeAnimationObject::TypeID value = zeAnimationObject::TypeStrip;
};
template <>
struct zeAnimationTypeOf<zeAnimationSequence>
{
    static constexpr zeAnimationObject::TypeID value = zeAnimationObject::TypeSequence;
};

// The checked down-cast: the object as a T when its type id is T's, else null (null for null).
// The type id is the one run-time type test of the pool, so this is the one way down from a
// zeAnimationObject; T's header must be included where it is used.
template <class T>
T* zeAnimationCast(zeAnimationObject* object)
{
    return object && object->getTypeID() == zeAnimationTypeOf<T>::value ? static_cast<T*>(object) : nullptr;
}

template <class T>
const T* zeAnimationCast(const zeAnimationObject* object)
{
    return object && object->getTypeID() == zeAnimationTypeOf<T>::value ? static_cast<const T*>(object)
                                                                        : nullptr;
}

template <class T>
T* zeAnimationObject::typedChild(osg::UInt64 childId) const
{
    return zeAnimationCast<T>(resolveChild(childId));
}

template <class T>
std::vector<T*> zeAnimationObject::typedChildren() const
{
    std::vector<T*> children;
    children.reserve(childIds.size());
    for (osg::UInt64 childId : childIds) {
        if (T* child = typedChild<T>(childId))
            children.push_back(child);
    }
    return children;
}

#endif // ZEANIMATIONOBJECT_H
