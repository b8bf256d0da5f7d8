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

class zeAnimationCurve2D;
class zeAnimationSequence;

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
    // Bit set passed to updateBy/updateAll. Any other value behaves like Change.
    enum Operation
    {
        Add = 256,
        Remove = 512,
        Change = 1024
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
    void setUsePlayRange(bool value) { usePlayRange = value; }
    float getStartPlayRange() const { return startPlayRange; }
    void setStartPlayRange(float value) { startPlayRange = value; }
    float getEndPlayRange() const { return endPlayRange; }
    void setEndPlayRange(float value) { endPlayRange = value; }
    float getStartPlay() const { return startPlay; }
    void setStartPlay(float value) { startPlay = value; }

    float getDuration() const { return getEnd() - getBegin(); }
    float getUntrimmedDuration() const { return untrimmedEnd - untrimmedBegin; }
    bool isEmpty() const { return childIds.empty(); }

    zeAnimationObject* getParent() const;
    osg::UInt64 getParentId() const { return parentId; }
    // Stores the parent's identifier (0 for null). A link that would make this object its own
    // ancestor is refused and leaves the current parent in place.
    void setParent(zeAnimationObject* parent);
    // True when `other` is this object or lies on its parent chain.
    bool hasAncestor(const zeAnimationObject* other) const;

    // ---- Collections ----------------------------------------------------------------------
    std::list<zeAnimationObject*> getObjects() const;
    const ChildList& getChildIds() const { return childIds; }
    // Increases whenever the base class adds, removes or reorders an entry of any child list, so
    // caches derived from a child list can tell that it changed.
    static osg::UInt64 getChildListEpoch() { return _childListEpoch; }
    std::vector<zeAnimationCurve2D*> getCurves() const;
    // The same curves without building a list; the reference stays valid until the next edit of
    // the hierarchy or the registry. Playback reads it on every frame.
    const std::vector<zeAnimationCurve2D*>& getResolvedCurves() const;
    // Changes whenever any object's curve set changes.
    static osg::UInt64 getSummaryEpoch() { return _summaryEpoch; }
    static void touchSummaries() { ++_summaryEpoch; }
    const std::set<osg::UInt64>& getCurveIds() const { return curveIds; }
    std::vector<zeAnimationSequence*> getSequencesRecursive() const;
    const std::set<osg::UInt64>& getSequenceIds() const { return sequenceIds; }
    FindResult findObject(osg::UInt64 childId);
    FindResult findObject(float frame);

    // ---- Triggers -------------------------------------------------------------------------
    void addTrigger(osg::UInt64 key, zeAnimationManager::AnimationTrigger kind);
    bool subTrigger(osg::UInt64 key);
    const TriggerMap& getTriggers() const { return triggers; }

    // Guards the operations that recurse down child lists: a damaged hierarchy (a child listed
    // below its own descendant through a stale entry) ends the recursion instead of the stack.
    class DepthGuard
    {
    public:
        DepthGuard() : allowed(++_depth <= MaxDepth) {}
        ~DepthGuard() { --_depth; }
        bool ok() const { return allowed; }

    private:
        bool allowed;
    };
    static constexpr int MaxDepth = 256;

    static zeAnimationObject* resolve(osg::UInt64 objectId)
    {
        return zeAnimationManager::the()->getObject(objectId);
    }

protected:
    zeAnimationObject();
    zeAnimationObject(const zeAnimationObject& other) = default;
    zeAnimationObject& operator=(const zeAnimationObject& other) = default;
    ~zeAnimationObject();

    void setId(osg::UInt64 value) { id = value; }
    void setRecursiveSequences(const std::vector<zeAnimationSequence*>& sequences);
    void sortObjectsByBegin();
    void trigger(zeAnimationManager::AnimationTrigger kind);

    // Shared helpers of the containers.
    // True when adding `child` below this object keeps the hierarchy a tree.
    bool canAdopt(const zeAnimationObject* child) const;
    // The span playback tests against: the play range when it is used, else begin and end.
    void getActiveSpan(float& spanBegin, float& spanEnd) const;
    // Fires the start and end triggers as the frame reaches the span and passes its end.
    void triggerSpan(float frame);

    // Operations shared by the containers (block, track, clip), written once. `onlyType`
    // restricts the children acted on to one type id (the clip acts on its tracks only); 0
    // means every child that resolves.
    std::vector<zeAnimationObject*> childrenOfType(osg::UInt32 onlyType) const;
    void containerSetActive(bool value);
    void containerSetRepeating(bool value);
    void containerSetMotionBlur(bool value);
    void containerMove(float delta, bool notify, osg::UInt32 onlyType);
    // Stretches the content about the fixed end (begin) or begin (end). With `guarded`, a new
    // edge closer than 1e-6 to the fixed one, or beyond it, leaves the children alone.
    void containerMoveBegin(float newBegin, bool notify, bool guarded, osg::UInt32 onlyType);
    void containerMoveEnd(float newEnd, bool notify, bool guarded, osg::UInt32 onlyType);
    void containerTrimBegin(float newBegin, bool notify);
    void containerTrimEnd(float newEnd, bool notify);
    void containerFlip(osg::UInt32 onlyType);
    void containerTriggerLoop(float frame, bool passDown, osg::UInt32 onlyType);
    // Links a child as the last entry of the child list and merges it into the summaries.
    void appendChild(zeAnimationObject* child);
    // Unlinks a listed child and drops its summaries; false when it is not listed.
    bool unlinkChild(zeAnimationObject* child);
    void notifyParent();
    // What a container copy takes over from its source: a fresh identifier, the interval (through
    // the setters), the untrimmed interval, the name and the flags (active, playing, repeating
    // through the setters; flipped, trimmed; motion blur through its setter).
    void copyContainerState(const zeAnimationObject& source);
    // Links a copy to its source's parent, without entering it in the parent's child list. Called
    // last: while the children are added the link is unset, so their summaries stay in the copy
    // instead of climbing into the source's ancestors, which do not list the copy.
    void linkToParentOf(const zeAnimationObject& source);

    // Members in declared order.
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
    // The child list resolved through the registry, kept for the updates that walk all children
    // on every change below (order check, bounds). It is trusted only while it lists the same
    // identifiers in the same order and the registry has removed nothing since it was built (nor
    // registered anything, when some identifier did not resolve), so it always equals a fresh
    // resolution.
    struct ResolvedChildren
    {
        std::vector<osg::UInt64> ids;
        std::vector<zeAnimationObject*> objects;
        osg::UInt64 removals = 0;
        osg::UInt64 registrations = 0;
        bool missing = false;
    };
    const std::vector<zeAnimationObject*>& resolvedChildren() const;

    static bool compareObjectsByBegin(osg::UInt64 a, osg::UInt64 b);
    void applyUpdate(zeAnimationObject* source, Operation op);
    static void mergeSummaries(zeAnimationObject* target, const zeAnimationObject* source, Operation op);

    mutable ResolvedChildren resolved;

    // The curve set resolved to curves, kept while no curve set anywhere changed (the summary
    // epoch) and the registry lost nothing (or gained nothing while an entry was missing).
    struct ResolvedCurves
    {
        std::vector<zeAnimationCurve2D*> curves;
        osg::UInt64 summaryEpoch = 0;
        osg::UInt64 removals = 0;
        osg::UInt64 registrations = 0;
        bool missing = false;
        bool valid = false;
    };
    mutable ResolvedCurves resolvedCurveSet;
    static osg::UInt64 _summaryEpoch;

    static osg::UInt32 _typeID;
    static int _depth;
    static osg::UInt64 _childListEpoch;
};

#endif // ZEANIMATIONOBJECT_H
