#include <zeAnimation/zeAnimationCurve2D.h>

#include "zeAnimationHelpers.h"
#include <zeAnimation/zeAnimationField.h>
#include <zeAnimation/zeAnimationManager.h>
#include <zeAnimation/zeAnimationUtils.h>

#include <OpenSG/OSGFieldContainerFactory.h>
#include <OpenSG/OSGNodeCore.h>

#include "zeAnimationRevision.h"
#include "zeCurveKernel.h"
#include "zeEditIndex.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iostream>

osg::UInt32 zeAnimationCurve2D::_typeID = TypeCurve2D;
zeAnimationCurve2D zeAnimationCurve2D::_the;

namespace {

// Applies an x mapping to a key and both of its handles; y values stay.
template <class F>
void mapX(zeControlPoint2D* key, F f)
{
    key->setX(f(key->getX()));
    if (zeControlPoint2D* in = key->getInTangentPoint())
        in->setX(f(in->getX()));
    if (zeControlPoint2D* out = key->getOutTangentPoint())
        out->setX(f(out->getX()));
}

zeControlPoint2D* pointAt(const zeKeyState& index, std::size_t slot)
{
    return slot == zeKeyIndex::NoSlot ? nullptr : index.points[slot];
}

} // namespace

zeAnimationCurve2D::zeAnimationCurve2D() : zeAnimationObject(), fieldId(0), color(0.0f, 0.0f, 0.0f)
{
    name = "Curve";
}

zeAnimationCurve2D::zeAnimationCurve2D(const std::string& curveName, osg::UInt64 curveId)
    : zeAnimationCurve2D()
{
    name = curveName;
    id = curveId != 0 ? curveId : manager()->createUID();
    // The curve's own identifier in its own curve set is what carries it up the tree when it is
    // added to a block, and what lets its triggerLoop run.
    curveIds.insert(id);
    zeAnimationRevision::bump();
}

zeAnimationCurve2D::zeAnimationCurve2D(const zeAnimationCurve2D& other) : zeAnimationCurve2D()
{
    id = manager()->createUID();
    curveIds.insert(id);
    zeAnimationRevision::bump();
    name = other.name;
    fieldId = other.fieldId;
    color = other.color;
    untrimmedBegin = other.untrimmedBegin;
    untrimmedEnd = other.untrimmedEnd;
    active = other.active;
    repeating = other.repeating;
    flipped = other.flipped;
    trimmed = other.trimmed;
    motionBlur = other.motionBlur;
    zeAnimationObject* parent = other.getParent();
    parentId = parent ? parent->getId() : 0;
    zeAnimationManager* m = manager();
    for (osg::UInt64 pointId : other.childIds) {
        if (zeControlPoint2D* point = other.typedChild<zeControlPoint2D>(pointId))
            addObject(m->duplicatePoint2D(point));
    }
}

osg::UInt32 zeAnimationCurve2D::getTypeID() const
{
    return _typeID;
}

std::vector<zeControlPoint2D*> zeAnimationCurve2D::keys() const
{
    return typedChildren<zeControlPoint2D>();
}

void zeAnimationCurve2D::setSelected(bool value)
{
    const std::vector<zeControlPoint2D*> points = keys();
    if (points.empty())
        return;
    for (zeControlPoint2D* point : points)
        point->setSelected(value);
    selected = value;
}

void zeAnimationCurve2D::setLocked(bool value)
{
    const std::vector<zeControlPoint2D*> points = keys();
    if (points.empty())
        return;
    for (zeControlPoint2D* point : points)
        point->setLocked(value);
    locked = value;
}

// ---- Field binding ----------------------------------------------------------------------------

void zeAnimationCurve2D::setAnimationField(zeAnimationField* field)
{
    zeAnimationRevision::bump(); // playback writes elsewhere now
    if (!field) {
        fieldId = 0;
        return;
    }
    fieldId = field->getId();
    color = zeAnimationUtils::getDefaultCurveColor(field);
}

zeAnimationField* zeAnimationCurve2D::getAnimationField() const
{
    return fieldId != 0 ? manager()->getField(fieldId) : nullptr;
}

osg::NodePtr zeAnimationCurve2D::getParentOSGNode() const
{
    const zeAnimationField* field = getAnimationField();
    if (!field)
        return osg::NullFC;
    osg::FieldContainerFactory* factory = osg::FieldContainerFactory::the();
    // The field records the node it was made for; failing that, walk from the animated
    // container up to the node that uses it.
    osg::NodePtr node = osg::NodePtr::dcast(factory->getContainer(static_cast<osg::UInt32>(field->nodeID)));
    if (node != osg::NullFC)
        return node;
    osg::FieldContainerPtr container = factory->getContainer(static_cast<osg::UInt32>(field->fcID));
    if (container == osg::NullFC)
        return osg::NullFC;
    node = osg::NodePtr::dcast(container);
    if (node != osg::NullFC)
        return node;
    osg::NodeCorePtr core = osg::NodeCorePtr::dcast(container);
    if (core != osg::NullFC && !core->getParents().empty())
        return core->getParents()[0];
    return osg::NullFC;
}

// ---- Bounds -----------------------------------------------------------------------------------

void zeAnimationCurve2D::updateBounds()
{
    const zeKeyState& c = zeKeyIndex::withGaps(this);
    if (!c.ordered || !c.complete) {
        zeAnimationObject::updateBounds();
        return;
    }
    const std::size_t firstSlot = zeKeyIndex::firstSlot(c);
    if (firstSlot == zeKeyIndex::NoSlot)
        return;
    // The base class's fold over the children in child order, read from the key index: every
    // child is a key, whose begin and end are its x and whose maximum and minimum are its y. The
    // keys strictly increase in x, so the first and the last give begin and end; the y extremes
    // are kept in step with the keys.
    const zeKeyState& w = zeKeyIndex::extremes(this);
    // Each fold starts from the empty interval and takes only a strictly better value.
    const float first = w.xs[firstSlot];
    const float last = w.xs[zeKeyIndex::lastSlot(w)];
    storeBounds(first < EmptyLow ? first : EmptyLow, last > EmptyHigh ? last : EmptyHigh,
                w.highY > EmptyHigh ? w.highY : EmptyHigh, w.lowY < EmptyLow ? w.lowY : EmptyLow);
}

// ---- Keys -------------------------------------------------------------------------------------

zeAnimationCurve2D::PointMap zeAnimationCurve2D::getPoints() const
{
    PointMap points;
    for (zeControlPoint2D* point : keys())
        points.emplace(point->getX(), point);
    return points;
}

std::vector<zeControlPoint2D*> zeAnimationCurve2D::getPointsAndTangentPoints() const
{
    std::vector<zeControlPoint2D*> result;
    for (zeControlPoint2D* point : keys()) {
        result.push_back(point);
        result.push_back(point->getInTangentPoint());
        result.push_back(point->getOutTangentPoint());
    }
    return result;
}

std::vector<zeControlPoint2D*> zeAnimationCurve2D::getSelectedPoints() const
{
    std::vector<zeControlPoint2D*> result;
    for (zeControlPoint2D* point : keys()) {
        if (point->isSelected())
            result.push_back(point);
    }
    return result;
}

std::vector<zeControlPoint2D*> zeAnimationCurve2D::getSelectedPointsAndTangentPoints() const
{
    std::vector<zeControlPoint2D*> result;
    for (zeControlPoint2D* point : getSelectedPoints()) {
        result.push_back(point);
        result.push_back(point->getInTangentPoint());
        result.push_back(point->getOutTangentPoint());
    }
    return result;
}

osg::UInt32 zeAnimationCurve2D::getPointCount() const
{
    return static_cast<osg::UInt32>(zeKeyIndex::withGaps(this).keyCount);
}

zeControlPoint2D* zeAnimationCurve2D::findPoint(float x) const
{
    const zeKeyState& c = zeKeyIndex::current(this);
    if (c.ordered) {
        const std::size_t at =
            static_cast<std::size_t>(std::lower_bound(c.xs.begin(), c.xs.end(), x) - c.xs.begin());
        return at < c.xs.size() && c.xs[at] == x ? c.points[at] : nullptr;
    }
    for (zeControlPoint2D* point : keys()) {
        if (point->getX() == x)
            return point;
    }
    return nullptr;
}

zeControlPoint2D* zeAnimationCurve2D::findPoint(osg::UInt64 pointId) const
{
    for (osg::UInt64 childId : childIds) {
        if (childId == pointId)
            return typedChild<zeControlPoint2D>(pointId);
    }
    return nullptr;
}

zeAnimationCurve2D::Neighbours zeAnimationCurve2D::getPreviousAndNextPoint(zeControlPoint2D* point) const
{
    // A key's own slot is found by its x, gaps left by erased keys or not.
    const zeKeyState& c = zeKeyIndex::withGaps(this);
    if (c.ordered) {
        if (!point)
            return Neighbours(nullptr, nullptr);
        const std::size_t n = c.points.size();
        const std::size_t at = static_cast<std::size_t>(
            std::lower_bound(c.xs.begin(), c.xs.end(), point->getX()) - c.xs.begin());
        if (at >= n || c.points[at] != point)
            return Neighbours(nullptr, nullptr);
        return Neighbours(pointAt(c, zeKeyIndex::previousSlot(c, at)),
                          pointAt(c, zeKeyIndex::nextSlot(c, at)));
    }
    const std::vector<zeControlPoint2D*> points = keys();
    for (std::size_t i = 0; point && i < points.size(); ++i) {
        if (points[i] == point)
            return Neighbours(i > 0 ? points[i - 1] : nullptr,
                              i + 1 < points.size() ? points[i + 1] : nullptr);
    }
    return Neighbours(nullptr, nullptr);
}

zeAnimationCurve2D::Neighbours zeAnimationCurve2D::getPreviousAndNextPoint(float x) const
{
    const zeKeyState& c = zeKeyIndex::current(this);
    if (c.ordered) {
        const std::vector<float>::const_iterator below = std::lower_bound(c.xs.begin(), c.xs.end(), x);
        const std::vector<float>::const_iterator above = std::upper_bound(below, c.xs.end(), x);
        return Neighbours(below == c.xs.begin() ? nullptr : c.points[below - c.xs.begin() - 1],
                          above == c.xs.end() ? nullptr : c.points[above - c.xs.begin()]);
    }
    Neighbours result(nullptr, nullptr);
    for (zeControlPoint2D* point : keys()) {
        if (point->getX() < x)
            result.first = point;
        else if (point->getX() > x && !result.second)
            result.second = point;
    }
    return result;
}

bool zeAnimationCurve2D::getMapNeighbours(float x, const zeControlPoint2D*& previous,
                                          const zeControlPoint2D*& next) const
{
    const zeKeyState& c = zeKeyIndex::withGaps(this);
    if (!c.hasNaN) {
        // The index holds getPoints() in order, so this is the map's lower bound. A gap keeps
        // the x of the key erased there, which no other key has.
        const std::size_t n = c.xs.size();
        const std::size_t at =
            static_cast<std::size_t>(std::lower_bound(c.xs.begin(), c.xs.end(), x) - c.xs.begin());
        if (at == n || c.xs[at] != x || !c.points[at])
            return false;
        previous = pointAt(c, zeKeyIndex::previousSlot(c, at));
        next = pointAt(c, zeKeyIndex::nextSlot(c, at));
        return true;
    }
    const PointMap points = getPoints();
    PointMap::const_iterator it = points.lower_bound(x);
    if (it == points.end() || it->first != x)
        return false;
    previous = it == points.begin() ? nullptr : std::prev(it)->second;
    PointMap::const_iterator after = std::next(it);
    next = after == points.end() ? nullptr : after->second;
    return true;
}

// ---- Constraints ------------------------------------------------------------------------------

bool zeAnimationCurve2D::checkInsertConstraints(float x) const
{
    const Neighbours around = getPreviousAndNextPoint(x);
    if (around.first && around.first->getOutTangentX() > x)
        return false;
    if (around.second && x > around.second->getInTangentX())
        return false;
    return true;
}

namespace {

bool neighboursAllow(const zeAnimationCurve2D::Neighbours& around, float x, float inX, float outX)
{
    const zeControlPoint2D* previous = around.first;
    const zeControlPoint2D* next = around.second;
    if (previous && (previous->getOutTangentX() > x || previous->getX() > inX))
        return false;
    if (next && (x > next->getInTangentX() || outX > next->getX()))
        return false;
    return true;
}

} // namespace

bool zeAnimationCurve2D::checkMoveConstraints(zeControlPoint2D* point, float x, float inX, float outX) const
{
    if (!point)
        return false;
    if (!(inX <= x && x <= outX))
        return false;
    return neighboursAllow(getPreviousAndNextPoint(point), x, inX, outX);
}

bool zeAnimationCurve2D::checkMoveConstraints2(zeControlPoint2D* point, float dx, bool useTemp) const
{
    if (!point)
        return false;
    float x = 0.0f;
    float inX = 0.0f;
    float outX = 0.0f;
    if (useTemp && point->getTangentType() != zeControlPoint2D::TangentFree) {
        x = point->getTempPosition()[0] + dx;
        inX = point->getInTangentX();
        outX = point->getOutTangentX();
    } else if (useTemp) {
        x = point->getTempPosition()[0] + dx;
        inX = point->getTempInTangent()[0] + dx;
        outX = point->getTempOutTangent()[0] + dx;
    } else {
        x = point->getX() + dx;
        inX = point->getInTangentX() + dx;
        outX = point->getOutTangentX() + dx;
    }
    return neighboursAllow(getPreviousAndNextPoint(point), x, inX, outX);
}

// ---- Adding and removing keys -----------------------------------------------------------------

void zeAnimationCurve2D::recomputeAround(zeControlPoint2D* key)
{
    const Neighbours around = getPreviousAndNextPoint(key);
    zeKeyIndex::recomputeTangents(this, key);
    if (around.first)
        zeKeyIndex::recomputeTangents(this, around.first);
    if (around.second)
        zeKeyIndex::recomputeTangents(this, around.second);
}

zeAnimationObject* zeAnimationCurve2D::addObject(zeAnimationObject* object)
{
    zeControlPoint2D* key = zeAnimationCast<zeControlPoint2D>(object);
    if (!key)
        return nullptr;
    if (key->isTangent() || !canAdopt(key))
        return nullptr;
    // Adding a key that is already there changes nothing.
    if (findPoint(key->getX()) == key)
        return key;
    // A key has one curve: it leaves the one that lists it (this one too, when it sits there
    // out of place), and then replaces the key at its x.
    key->leaveParent();
    if (zeControlPoint2D* existing = findPoint(key->getX()))
        subObject(existing, true);
    key->parentId = id;
    const bool wasEmpty = childIds.empty();
    if (!zeKeyIndex::insertInOrder(this, key)) {
        childIds.push_back(key->getId());
        zeAnimationRevision::bump();
        zeKeyIndex::drop(this);
        sortObjectsByBegin();
    }
    if (wasEmpty)
        noteChange(); // an empty curve does not count in its block's bounds; now it does
    recomputeAround(key);
    if (curveIds.count(id) == 0) {
        // The curve lost its own entry when its last key went; it comes back with this key.
        curveIds.insert(id);
        zeAnimationRevision::bump();
        updateBy(this, Add, true);
    } else {
        updateBy(key, Add, true);
    }
    return key;
}

zeAnimationObject* zeAnimationCurve2D::subObject(zeAnimationObject* object, bool destroy)
{
    zeControlPoint2D* key = zeAnimationCast<zeControlPoint2D>(object);
    if (!key)
        return nullptr;
    if (key->parentId != id)
        return nullptr;
    const Neighbours around = getPreviousAndNextPoint(key);
    const bool erasedInStep = zeKeyIndex::eraseInOrder(this, key);
    if (!erasedInStep) {
        FindResult found = findObject(object->getId());
        if (!found.first)
            return nullptr;
        childIds.erase(found.second);
        zeAnimationRevision::bump();
        zeKeyIndex::drop(this);
    }
    key->parentId = 0;
    if (childIds.empty())
        noteChange();
    if (around.first)
        zeKeyIndex::recomputeTangents(this, around.first);
    if (around.second)
        zeKeyIndex::recomputeTangents(this, around.second);
    if (getPointCount() == 0)
        updateBy(this, Remove, true);
    else
        updateBy(this, Change, true);
    if (destroy) {
        zeAnimationManager* m = manager();
        zeKeyIndex::keepAcross(this, key, [m, key] { m->destroyPoint2D(key); });
        return nullptr;
    }
    return key;
}

osg::UInt32 zeAnimationCurve2D::removeKeys(bool selectedOnly, bool destroy, zeAnimationCurve2D* target)
{
    if (target == this)
        target = nullptr;
    zeAnimationManager* m = manager();
    // By identifier: adding a key to the target may destroy the target's key at the same x.
    std::vector<osg::UInt64> ids;
    for (zeControlPoint2D* key : selectedOnly ? getSelectedPoints() : keys())
        ids.push_back(key->getId());
    osg::UInt32 removed = 0;
    for (osg::UInt64 keyId : ids) {
        zeControlPoint2D* key = typedChild<zeControlPoint2D>(keyId);
        if (!key)
            continue;
        if (destroy) {
            subObject(key, true);
            ++removed;
        } else if (subObject(key, false)) {
            ++removed;
            if (target && m->getCurve2D(target->getId()) == target)
                target->addObject(key);
        }
    }
    return removed;
}

osg::UInt32 zeAnimationCurve2D::deleteSelectedPoints(bool destroy, zeAnimationCurve2D* target)
{
    return removeKeys(true, destroy, target);
}

osg::UInt32 zeAnimationCurve2D::deletePoints(bool destroy, zeAnimationCurve2D* target)
{
    return removeKeys(false, destroy, target);
}

void zeAnimationCurve2D::setPoints(const std::vector<zeControlPoint2D*>& points)
{
    assignKeys(points, true);
}

void zeAnimationCurve2D::assignKeys(const std::vector<zeControlPoint2D*>& points, bool propagate)
{
    zeAnimationManager* m = manager();
    // Keep the last given key of every x, in order of x; stable, so ties keep their order.
    std::vector<zeControlPoint2D*> given;
    given.reserve(points.size());
    for (zeControlPoint2D* point : points) {
        if (point && point->getTypeID() == TypePoint2D && !point->isTangent() && canAdopt(point))
            given.push_back(point);
    }
    // A key given here leaves any other curve (or container) that lists it.
    for (zeControlPoint2D* point : given) {
        if (point->parentId != id)
            point->leaveParent();
    }
    std::stable_sort(given.begin(), given.end(), [](const zeControlPoint2D* a, const zeControlPoint2D* b) {
        return a->getX() < b->getX();
    });
    std::vector<zeControlPoint2D*> kept;
    std::vector<zeControlPoint2D*> losers;
    kept.reserve(given.size());
    for (zeControlPoint2D* point : given) {
        if (!kept.empty() && kept.back()->getX() == point->getX()) {
            if (kept.back() != point)
                losers.push_back(kept.back());
            kept.back() = point;
        } else {
            kept.push_back(point);
        }
    }
    std::vector<osg::UInt64> keptIds;
    keptIds.reserve(kept.size());
    for (zeControlPoint2D* point : kept)
        keptIds.push_back(point->getId());
    std::sort(keptIds.begin(), keptIds.end());

    // Current keys that are not handed over again are replaced, as addObject replaces them.
    for (zeControlPoint2D* old : keys()) {
        if (!std::binary_search(keptIds.begin(), keptIds.end(), old->getId()))
            losers.push_back(old);
    }
    childIds.clear();
    zeKeyIndex::drop(this);
    for (zeControlPoint2D* point : kept) {
        point->parentId = id;
        childIds.push_back(point->getId());
    }
    noteChange();
    std::sort(losers.begin(), losers.end());
    losers.erase(std::unique(losers.begin(), losers.end()), losers.end());
    for (zeControlPoint2D* loser : losers) {
        if (std::binary_search(keptIds.begin(), keptIds.end(), loser->getId()))
            continue;
        if (loser->getParentId() == id)
            loser->parentId = 0;
        m->destroyPoint2D(loser);
    }
    curveIds.insert(id);
    zeAnimationRevision::bump();
    updateBy(this, kept.empty() ? Remove : Add, propagate);
}

void zeAnimationCurve2D::changeTangentsOfSelectedPoints(zeControlPoint2D::TangentMode mode)
{
    for (zeControlPoint2D* key : getSelectedPoints()) {
        key->setTangentType(mode);
        zeKeyIndex::recomputeTangents(this, key);
    }
}

// ---- Moving keys ------------------------------------------------------------------------------

void zeAnimationCurve2D::moveSelectedPoints(const osg::Vec2f& delta, bool snapX, bool snapY, bool,
                                            bool useTemp)
{
    bool moved = false;
    for (zeControlPoint2D* key : getSelectedPoints()) {
        if (!checkMoveConstraints2(key, delta[0], useTemp))
            continue;
        osg::Pnt2f base = useTemp ? key->getTempPosition() : key->getPosition();
        osg::Pnt2f baseIn;
        osg::Pnt2f baseOut;
        if (useTemp) {
            baseIn.setValues(key->getTempInTangent()[0], key->getTempInTangent()[1]);
            baseOut.setValues(key->getTempOutTangent()[0], key->getTempOutTangent()[1]);
        } else {
            baseIn.setValues(key->getInTangentX(), key->getInTangentY());
            baseOut.setValues(key->getOutTangentX(), key->getOutTangentY());
        }
        const osg::Pnt2f position = zeAnimationUtils::snap(base + delta, snapX, snapY);
        const osg::Pnt2f in = zeAnimationUtils::snap(baseIn + delta, snapX, snapY);
        const osg::Pnt2f out = zeAnimationUtils::snap(baseOut + delta, snapX, snapY);
        zeKeyIndex::placeKey(this, key, position, osg::Vec2f(in[0], in[1]), osg::Vec2f(out[0], out[1]));
        recomputeAround(key);
        moved = true;
    }
    if (moved)
        updateBy(this, Change, true);
}

void zeAnimationCurve2D::moveSelectedPointsTo(const osg::Pnt2f& target, bool snapX, bool snapY, bool useTemp)
{
    const std::vector<zeControlPoint2D*> selectedKeys = getSelectedPoints();
    if (selectedKeys.empty())
        return;
    const zeControlPoint2D* first = selectedKeys.front();
    const osg::Pnt2f base = useTemp ? first->getTempPosition() : first->getPosition();
    moveSelectedPoints(target - base, snapX, snapY, false, useTemp);
}

// ---- Whole-curve time edits -------------------------------------------------------------------

void zeAnimationCurve2D::move(float delta, bool notify)
{
    const std::vector<zeControlPoint2D*> points = keys();
    if (points.empty())
        return;
    for (zeControlPoint2D* key : points)
        mapX(key, [delta](float x) { return x + delta; });
    updateBy(this, Change, notify);
}

void zeAnimationCurve2D::moveBegin(float newBegin, bool notify)
{
    const std::vector<zeControlPoint2D*> points = keys();
    if (points.empty() || !(newBegin < getEnd() - kEditTolerance))
        return;
    const float e = getEnd();
    const float b = getBegin();
    setBegin(newBegin);
    const float f = (e - newBegin) / (e - b);
    for (zeControlPoint2D* key : points)
        mapX(key, [e, f](float x) { return e - (e - x) * f; });
    if (notify) {
        if (zeAnimationObject* parent = getParent())
            parent->updateBy(this, Change, true);
    }
}

void zeAnimationCurve2D::moveEnd(float newEnd, bool notify)
{
    const std::vector<zeControlPoint2D*> points = keys();
    if (points.empty() || !(newEnd > getBegin() + kEditTolerance))
        return;
    const float b = getBegin();
    const float e = getEnd();
    setEnd(newEnd);
    const float f = (newEnd - b) / (e - b);
    for (zeControlPoint2D* key : points)
        mapX(key, [b, f](float x) { return (x - b) * f + b; });
    if (notify) {
        if (zeAnimationObject* parent = getParent())
            parent->updateBy(this, Change, true);
    }
}

void zeAnimationCurve2D::flip()
{
    const std::vector<zeControlPoint2D*> points = keys();
    if (points.empty())
        return;
    const float c = getBegin() + (getEnd() - getBegin()) * 0.5f;
    for (zeControlPoint2D* key : points) {
        mapX(key, [c](float x) { return (c - x) + c; });
        zeControlPoint2D* in = key->getInTangentPoint();
        zeControlPoint2D* out = key->getOutTangentPoint();
        if (in && out) {
            const osg::Pnt2f inPosition = in->getPosition();
            in->setPosition(out->getPosition());
            out->setPosition(inPosition);
        }
    }
    flipped = !flipped;
    updateBy(this, Change, false);
}

void zeAnimationCurve2D::triggerLoop(float frame)
{
    if (curveIds.empty())
        return;
    triggerSpan(frame);
}

// ---- Diagnostics ------------------------------------------------------------------------------

void zeAnimationCurve2D::printInfo()
{
    std::printf("Curve %s:\n", name.c_str());
    std::printf("Points: %u\n", getPointCount());
    std::printf("Begin: %f End: %f Min: %f Max: %f\n", getBegin(), getEnd(), getMinimum(), getMaximum());
    std::fflush(stdout);
    std::cout << "FieldPtr " << std::endl;
    manager()->printFieldInfo(getAnimationField());
}
