#include <zeAnimation/zeControlPoint2D.h>

#include <zeAnimation/zeAnimationCurve2D.h>
#include <zeAnimation/zeAnimationManager.h>

#include "zeAnimationRevision.h"
#include "zeCurveKernel.h"

#include <cmath>

osg::UInt32 zeControlPoint2D::_typeID = TypePoint2D;
zeControlPoint2D zeControlPoint2D::_the;

zeControlPoint2D::zeControlPoint2D()
    : zeAnimationObject(), position(0.0f, 0.0f), tempPosition(0.0f, 0.0f), inTangentPoint(nullptr),
      tempInTangent(0.0f, 0.0f), outTangentPoint(nullptr), tempOutTangent(0.0f, 0.0f), tangent(false),
      tangentType(TangentSmooth), tangentLengthMode(TangentLengthHalf)
{
    name = "Point";
}

zeControlPoint2D::zeControlPoint2D(const std::string& pointName, osg::UInt64 pointId, bool isTangent)
    : zeControlPoint2D(0.0f, 0.0f, pointName, pointId, isTangent)
{}

zeControlPoint2D::zeControlPoint2D(float x, float y, const std::string& pointName, osg::UInt64 pointId,
                                   bool isTangent)
    : zeControlPoint2D()
{
    name = pointName;
    id = pointId != 0 ? pointId : zeAnimationManager::the()->createUID();
    // No position epoch step: a new point is in no cache yet, and a cache that held a destroyed
    // point at this address has seen the registry lose it.
    position.setValues(x, y);
    tangent = isTangent;
    if (!isTangent)
        createHandles();
}

zeControlPoint2D::zeControlPoint2D(const zeControlPoint2D& other)
    : zeAnimationObject(other), position(other.position), tempPosition(other.tempPosition),
      inTangentPoint(nullptr), tempInTangent(other.tempInTangent), outTangentPoint(nullptr),
      tempOutTangent(other.tempOutTangent), tangent(other.tangent), tangentType(other.tangentType),
      tangentLengthMode(other.tangentLengthMode)
{
    id = zeAnimationManager::the()->createUID();
    if (other.inTangentPoint) {
        inTangentPoint = new zeControlPoint2D(*other.inTangentPoint);
        inTangentPoint->parentId = id;
    }
    if (other.outTangentPoint) {
        outTangentPoint = new zeControlPoint2D(*other.outTangentPoint);
        outTangentPoint->parentId = id;
    }
}

zeControlPoint2D& zeControlPoint2D::operator=(const zeControlPoint2D& other)
{
    if (this == &other)
        return *this;
    zeAnimationObject::operator=(other);
    position = other.position;
    tempPosition = other.tempPosition;
    tempInTangent = other.tempInTangent;
    tempOutTangent = other.tempOutTangent;
    tangent = other.tangent;
    tangentType = other.tangentType;
    tangentLengthMode = other.tangentLengthMode;
    if (other.inTangentPoint && other.outTangentPoint) {
        if (!inTangentPoint)
            createHandles();
        inTangentPoint->position = other.inTangentPoint->position;
        outTangentPoint->position = other.outTangentPoint->position;
    } else {
        destroyHandles();
    }
    zeAnimationRevision::bump();
    return *this;
}

void zeControlPoint2D::writePosition(float x, float y)
{
    if (!std::isfinite(x) || !std::isfinite(y))
        return;
    position[0] = x;
    position[1] = y;
    zeAnimationRevision::bump();
}

zeControlPoint2D::~zeControlPoint2D()
{
    destroyHandles();
}

void zeControlPoint2D::createHandles()
{
    if (!inTangentPoint) {
        inTangentPoint = new zeControlPoint2D(position[0], position[1], "InTangent", 0, true);
        inTangentPoint->parentId = id;
    }
    if (!outTangentPoint) {
        outTangentPoint = new zeControlPoint2D(position[0], position[1], "OutTangent", 0, true);
        outTangentPoint->parentId = id;
    }
}

void zeControlPoint2D::destroyHandles()
{
    if (inTangentPoint) {
        inTangentPoint->parentId = 0;
        delete inTangentPoint;
        inTangentPoint = nullptr;
    }
    if (outTangentPoint) {
        outTangentPoint->parentId = 0;
        delete outTangentPoint;
        outTangentPoint = nullptr;
    }
}

osg::UInt32 zeControlPoint2D::getTypeID() const
{
    return _typeID;
}

void zeControlPoint2D::setSelected(bool value)
{
    selected = value;
    if (inTangentPoint && inTangentPoint->isSelected())
        inTangentPoint->setSelected(false);
    if (outTangentPoint && outTangentPoint->isSelected())
        outTangentPoint->setSelected(false);
}

void zeControlPoint2D::setPosition(const osg::Pnt2f& value)
{
    writePosition(value[0], value[1]);
}

void zeControlPoint2D::setX(float value)
{
    writePosition(value, position[1]);
}

void zeControlPoint2D::setY(float value)
{
    writePosition(position[0], value);
}

void zeControlPoint2D::setInTangent(const osg::Vec2f& value)
{
    if (inTangentPoint)
        inTangentPoint->writePosition(value[0], value[1]);
}

void zeControlPoint2D::setOutTangent(const osg::Vec2f& value)
{
    if (outTangentPoint)
        outTangentPoint->writePosition(value[0], value[1]);
}

void zeControlPoint2D::setInTangentX(float value)
{
    if (inTangentPoint)
        inTangentPoint->setX(value);
}

void zeControlPoint2D::setInTangentY(float value)
{
    if (inTangentPoint)
        inTangentPoint->setY(value);
}

void zeControlPoint2D::setOutTangentX(float value)
{
    if (outTangentPoint)
        outTangentPoint->setX(value);
}

void zeControlPoint2D::setOutTangentY(float value)
{
    if (outTangentPoint)
        outTangentPoint->setY(value);
}

osg::Vec2f zeControlPoint2D::getInTangent() const
{
    return inTangentPoint ? osg::Vec2f(inTangentPoint->position[0], inTangentPoint->position[1])
                          : osg::Vec2f(0.0f, 0.0f);
}

osg::Vec2f zeControlPoint2D::getOutTangent() const
{
    return outTangentPoint ? osg::Vec2f(outTangentPoint->position[0], outTangentPoint->position[1])
                           : osg::Vec2f(0.0f, 0.0f);
}

// ---- Tangent computation ----------------------------------------------------------------------

bool zeControlPoint2D::computeTangents()
{
    if (!inTangentPoint || !outTangentPoint)
        return false;
    zeAnimationCurve2D* curve = zeAnimationManager::the()->getCurve2D(parentId);
    if (!curve)
        return false;
    if (tangentType == TangentFree)
        return false;
    const zeControlPoint2D* previous = nullptr;
    const zeControlPoint2D* next = nullptr;
    if (!curve->getMapNeighbours(position[0], previous, next))
        return false;
    if (!previous && !next)
        return false;

    zeCurveKernel::TangentInput key = {};
    key.x = position[0];
    key.y = position[1];
    key.hasPrevious = previous != nullptr;
    key.hasNext = next != nullptr;
    if (previous) {
        key.xa = previous->position[0];
        key.ya = previous->position[1];
    }
    if (next) {
        key.xb = next->position[0];
        key.yb = next->position[1];
    }
    const zeCurveKernel::Handles h = zeCurveKernel::tangentHandles(tangentType, tangentLengthMode, key);
    inTangentPoint->writePosition(h.ix, h.iy);
    outTangentPoint->writePosition(h.ox, h.oy);
    return true;
}
