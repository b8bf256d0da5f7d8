#ifndef ZEANIMATIONCURVE2D_H
#define ZEANIMATIONCURVE2D_H

#include <zeAnimation/zeAnimationObject.h>
#include <zeAnimation/zeControlPoint2D.h>

#include <OpenSG/OSGColor.h>
#include <OpenSG/OSGNode.h>
#include <OpenSG/OSGVector.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

class zeAnimationField;

// The animated value of one scene field component over time: keys (zeControlPoint2D) ordered by
// x in the child list, bound to one zeAnimationField by identifier. Every edit keeps the keys
// ordered and their handles consistent with their tangent rules.
class ZEANIMATION_EXPORT zeAnimationCurve2D final : public zeAnimationObject
{
    friend class zeAnimationManager;
    friend class zeAnimationController;
    friend class zeAnimationObject;
    // The library's internal code (the file loader) takes its bulk steps through this one class
    // (Animation/internal/zeAnimationAccess.h); no other internal class is a friend.
    friend class zeAnimationAccess;

public:
    typedef std::map<float, zeControlPoint2D*> PointMap;
    typedef std::pair<zeControlPoint2D*, zeControlPoint2D*> Neighbours;

    osg::UInt32 getTypeID() const override;
    // Only a curve with keys passes the flag on to its keys and takes it itself.
    void setSelected(bool value) override;
    void setLocked(bool value) override;
    zeAnimationObject* addObject(zeAnimationObject* object) override;
    zeAnimationObject* subObject(zeAnimationObject* object, bool destroy) override;
    void move(float delta, bool notify) override;
    void moveBegin(float newBegin, bool notify) override;
    void moveEnd(float newEnd, bool notify) override;
    void flip() override;
    void triggerLoop(float frame) override;
    void updateBounds() override;

    // ---- Field binding and colour ---------------------------------------------------------
    void setAnimationField(zeAnimationField* field);
    zeAnimationField* getAnimationField() const;
    osg::UInt64 getAnimationFieldId() const { return fieldId; }
    void setColor(const osg::Color3f& value) { color = value; }
    void setColor(float r, float g, float b) { color.setValuesRGB(r, g, b); }
    const osg::Color3f& getColor() const { return color; }
    void getColor(float& r, float& g, float& b) const { color.getValuesRGB(r, g, b); }
    // The scene node holding the bound field's container; a null node when there is none.
    osg::NodePtr getParentOSGNode() const;

    // ---- Keys -----------------------------------------------------------------------------
    // The keys by x. Keys sharing one x (only possible after direct position writes) are
    // represented by the first of them in child order.
    PointMap getPoints() const;
    std::vector<zeControlPoint2D*> getPointsAndTangentPoints() const;
    std::vector<zeControlPoint2D*> getSelectedPoints() const;
    std::vector<zeControlPoint2D*> getSelectedPointsAndTangentPoints() const;
    osg::UInt32 getPointCount() const;
    zeControlPoint2D* findPoint(float x) const;
    zeControlPoint2D* findPoint(osg::UInt64 pointId) const;
    // The neighbours of a key in the ordered child list (both null when it is not a child).
    Neighbours getPreviousAndNextPoint(zeControlPoint2D* point) const;
    // The last key strictly before x and the first key strictly after x.
    Neighbours getPreviousAndNextPoint(float x) const;
    // The entries before and after x in getPoints(); false when no key lies exactly at x.
    bool getMapNeighbours(float x, const zeControlPoint2D*& previous, const zeControlPoint2D*& next) const;

    // ---- Constraints ----------------------------------------------------------------------
    bool checkInsertConstraints(float x) const;
    bool checkMoveConstraints(zeControlPoint2D* point, float x, float inX, float outX) const;
    // With useTemp, a key whose tangents are recomputed (any type but free) is tested with its
    // handles where they are now, unshifted, since the move recomputes them; a free key with its
    // saved handles shifted by dx.
    bool checkMoveConstraints2(zeControlPoint2D* point, float dx, bool useTemp) const;

    // ---- Key edits ------------------------------------------------------------------------
    // The fourth flag has no effect; it is kept for the host's calls.
    void moveSelectedPoints(const osg::Vec2f& delta, bool snapX, bool snapY, bool unused, bool useTemp);
    // Moves the selected keys together so that the first of them (lowest x) lands on `target`;
    // each key passes the same constraints as in moveSelectedPoints. Nothing happens without a
    // selected key.
    void moveSelectedPointsTo(const osg::Pnt2f& target, bool snapX, bool snapY, bool useTemp);
    // Removes the selected keys (deleteSelectedPoints) or all keys (deletePoints). With destroy
    // the keys are destroyed; otherwise they are detached and, when `target` is given, added to
    // it (where they replace its keys at the same x). Returns how many keys were removed.
    osg::UInt32 deleteSelectedPoints(bool destroy, zeAnimationCurve2D* target = nullptr);
    osg::UInt32 deletePoints(bool destroy, zeAnimationCurve2D* target = nullptr);
    // Hands the curve all its keys at once, as a file loader does: the current keys are
    // destroyed, the given ones (null and non-key entries skipped) become the keys, ordered by x;
    // of several keys at one x the last given wins and the others are destroyed. The handles are
    // kept exactly as given (a file stores them), so nothing is recomputed.
    void setPoints(const std::vector<zeControlPoint2D*>& points);
    void changeTangentsOfSelectedPoints(zeControlPoint2D::TangentMode mode);

    void printInfo();

protected:
    zeAnimationCurve2D(const std::string& name, osg::UInt64 id);
    zeAnimationCurve2D(const zeAnimationCurve2D& other);
    ~zeAnimationCurve2D() = default;

    osg::UInt64 fieldId;
    osg::Color3f color;

protected:
    static zeAnimationCurve2D _the;

private:
    // ---- Key cache --------------------------------------------------------------------------
    // getPoints() as sorted arrays, so that evaluation and the neighbour and key lookups neither
    // build a map nor resolve identifiers on every call. It is checked, never trusted: it is
    // rebuilt once the pool's revision moved on from the one it was built at (this curve's own
    // edits update it in step and take the new revision, or drop it). A copied curve starts
    // without a cache. Not thread-safe, like the rest of the model.
    struct KeyCache
    {
        KeyCache() = default;
        KeyCache(const KeyCache&) {}
        KeyCache& operator=(const KeyCache&)
        {
            built = false;
            return *this;
        }

        bool built = false;
        // The resolved keys, in child order, strictly increase in x (no NaN): the arrays hold
        // exactly the keys in child order, not only the getPoints() representatives.
        bool ordered = false;
        // Every child identifier resolves to a key: with `ordered`, nodes[i] is the child-list
        // entry of points[i].
        bool complete = false;
        // Some key's x is NaN: the map's order is not a strict weak order, so lookups take the
        // literal map-based path.
        bool hasNaN = false;
        osg::UInt64 revision = 0;
        std::size_t keyCount = 0; // resolved keys, duplicates at one x included
        std::vector<float> xs;
        std::vector<float> ys;
        std::vector<zeControlPoint2D*> points;
        std::vector<ChildList::iterator> nodes;
        // Index of the segment evaluation found last: playback asks frame after frame.
        std::size_t lastSegment = 0;
        // With `ordered` and `complete`: the smallest and largest y and the first key holding
        // each, kept in step with single insertions, removals and moves; worked out again when
        // `extremes` is false.
        bool extremes = false;
        float lowY = 0.0f;
        float highY = 0.0f;
        std::size_t lowAt = 0;
        std::size_t highAt = 0;
    };

    enum SegmentLocation
    {
        TooFewKeys,
        BeforeFirst,
        AfterLast,
        InsideSegment
    };

    const KeyCache& validKeyCache() const;
    bool keyCacheIsFresh() const;
    void stampKeyCache() const;
    void rebuildKeyCache() const;
    void dropKeyCache() { keyCache.built = false; }
    // Evaluation's search: BeforeFirst gives the second key in k0, AfterLast the last key in k0,
    // InsideSegment the keys around the frame.
    SegmentLocation locateSegment(float frame, const zeControlPoint2D*& k0,
                                  const zeControlPoint2D*& k1) const;
    // For the base class's sort: true when the cache shows every child a key in strict order.
    bool keysKnownInOrder() const;
    // Inserts a key's identifier where a stable sort by x would put it, keeping the cache in
    // step; false (nothing done) when the cache cannot tell where that is.
    bool insertKeyInOrder(zeControlPoint2D* key);
    // Removes a key's entry, keeping the cache in step; false when the cache cannot locate it.
    bool eraseKeyInOrder(zeControlPoint2D* key);
    // computeTangents, telling the cache that only handles moved, so it stays valid.
    bool recomputeTangents(zeControlPoint2D* key);
    // Writes a key's position and handles; a key that stays between its neighbours keeps the
    // cache valid.
    void placeKey(zeControlPoint2D* key, const osg::Pnt2f& position, const osg::Vec2f& in,
                  const osg::Vec2f& out);
    // Folds the y of the key at `at` into the cache's extremes (shifting them first when a key
    // was inserted there).
    void foldExtreme(std::size_t at, bool inserted) const;

    mutable KeyCache keyCache;

    zeAnimationCurve2D();
    std::vector<zeControlPoint2D*> keys() const;
    void recomputeAround(zeControlPoint2D* key);
    // setPoints; without `propagate` the curve updates itself only, not its ancestors.
    void assignKeys(const std::vector<zeControlPoint2D*>& points, bool propagate);
    void insertKeyId(zeControlPoint2D* key);
    osg::UInt32 removeKeys(bool selectedOnly, bool destroy, zeAnimationCurve2D* target);

    static osg::UInt32 _typeID;
};

#endif // ZEANIMATIONCURVE2D_H
