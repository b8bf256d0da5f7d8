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
    zeAnimationCurve2D();
    std::vector<zeControlPoint2D*> keys() const;
    void recomputeAround(zeControlPoint2D* key);
    // setPoints; without `propagate` the curve updates itself only, not its ancestors.
    void assignKeys(const std::vector<zeControlPoint2D*>& points, bool propagate);
    osg::UInt32 removeKeys(bool selectedOnly, bool destroy, zeAnimationCurve2D* target);

    static osg::UInt32 _typeID;
};

#endif // ZEANIMATIONCURVE2D_H
