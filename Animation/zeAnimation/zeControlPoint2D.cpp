#include <zeAnimation/zeControlPoint2D.h>

#include <zeAnimation/zeAnimationCurve2D.h>
#include <zeAnimation/zeAnimationManager.h>

#include <cmath>

osg::UInt32 zeControlPoint2D::_typeID = TypePoint2D;
osg::UInt64 zeControlPoint2D::_positionEpoch = 0;
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
    ++_positionEpoch;
    return *this;
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
//
// All arithmetic is single precision. A third is the float 0.33333334 (a multiplication, not a
// division), angles come from atanf and are used through tanf, cosf and sinf exactly as written:
// tanf(atanf(s)) is not simplified to s, and a cos/sin pair gives a handle of Euclidean length L.

namespace {

const float kThird = 0.33333334f;

struct Handles
{
    float ix, iy, ox, oy;
};

float slope(float px, float py, float qx, float qy)
{
    return (qy - py) / (qx - px);
}

// The smaller of a half interval and the cap; the half interval is kept when they are equal.
float capped(float half, float cap)
{
    return cap < half ? cap : half;
}

void inAlong(Handles& h, float x, float y, float s, float length)
{
    const float t = tanf(atanf(s));
    h.ix = x - length;
    h.iy = y - t * length;
}

void outAlong(Handles& h, float x, float y, float s, float length)
{
    const float t = tanf(atanf(s));
    h.ox = x + length;
    h.oy = y + t * length;
}

void inAtAngle(Handles& h, float x, float y, float angle, float length)
{
    h.ix = x - cosf(angle) * length;
    h.iy = y - sinf(angle) * length;
}

void outAtAngle(Handles& h, float x, float y, float angle, float length)
{
    h.ox = x + cosf(angle) * length;
    h.oy = y + sinf(angle) * length;
}

void flat(Handles& h, float x, float y, float inLength, float outLength)
{
    h.ix = x - inLength;
    h.iy = y;
    h.ox = x + outLength;
    h.oy = y;
}

} // namespace

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

    const float x = position[0];
    const float y = position[1];
    const float xa = previous ? previous->position[0] : 0.0f;
    const float ya = previous ? previous->position[1] : 0.0f;
    const float xb = next ? next->position[0] : 0.0f;
    const float yb = next ? next->position[1] : 0.0f;
    const bool isFirst = !previous;
    const bool isLast = !next;
    const bool isInner = previous && next;
    const float c = (xb - xa) * kThird;

    Handles h = {x, y, x, y};
    const TangentMode length = tangentLengthMode;

    switch (tangentType) {
    case TangentLinear:
        if (length == TangentSmooth) {
            if (isFirst) {
                const float l = (xb - x) * kThird;
                h.ix = x - l;
                h.iy = y;
                outAlong(h, x, y, slope(x, y, xb, yb), l);
            } else if (isLast) {
                const float l = (x - xa) * kThird;
                inAlong(h, x, y, slope(xa, ya, x, y), l);
                h.ox = x + l;
                h.oy = y;
            } else {
                const float l = (xb - xa) * kThird;
                inAtAngle(h, x, y, atanf(slope(xa, ya, x, y)), l);
                outAtAngle(h, x, y, atanf(slope(x, y, xb, yb)), l);
            }
        } else if (length == TangentLengthHalf) {
            if (isFirst) {
                const float l = (xb - x) / 2.0f;
                h.ix = x - l;
                h.iy = y;
                outAlong(h, x, y, slope(x, y, xb, yb), l);
            } else if (isLast) {
                const float l = (x - xa) / 2.0f;
                inAlong(h, x, y, slope(xa, ya, x, y), l);
                h.ox = x + l;
                h.oy = y;
            } else {
                inAlong(h, x, y, slope(xa, ya, x, y), (x - xa) / 2.0f);
                outAlong(h, x, y, slope(x, y, xb, yb), (xb - x) / 2.0f);
            }
        } else if (length == TangentLengthFixed) {
            if (isFirst) {
                h.ix = x - 2.0f;
                h.iy = y;
                outAtAngle(h, x, y, atanf(slope(x, y, xb, yb)), 2.0f);
            } else if (isLast) {
                inAtAngle(h, x, y, atanf(slope(xa, ya, x, y)), 2.0f);
                h.ox = x + 2.0f;
                h.oy = y;
            } else {
                inAtAngle(h, x, y, atanf(slope(xa, ya, x, y)), 2.0f);
                outAtAngle(h, x, y, atanf(slope(x, y, xb, yb)), 2.0f);
            }
        }
        break;

    case TangentFlat:
        if (length == TangentSmooth) {
            const float d = isFirst ? xb - x : (isLast ? x - xa : xb - xa);
            flat(h, x, y, d * kThird, d * kThird);
        } else if (length == TangentLengthHalf) {
            if (isInner) {
                flat(h, x, y, capped((x - xa) / 2.0f, c), capped((xb - x) / 2.0f, c));
            } else {
                const float d = isFirst ? xb - x : x - xa;
                flat(h, x, y, d / 2.0f, d / 2.0f);
            }
        } else if (length == TangentLengthFixed) {
            flat(h, x, y, 2.0f, 2.0f);
        }
        break;

    case TangentSmooth:
        if (length == TangentSmooth) {
            float dx = 0.0f;
            float dy = 0.0f;
            if (isFirst) {
                dx = xb - x;
                dy = yb - y;
            } else if (isLast) {
                dx = x - xa;
                dy = y - ya;
            } else {
                dx = xb - xa;
                dy = yb - ya;
            }
            h.ix = x - dx * kThird;
            h.iy = y - dy * kThird;
            h.ox = x + dx * kThird;
            h.oy = y + dy * kThird;
        } else if (length == TangentLengthHalf) {
            if (isFirst) {
                const float s = slope(x, y, xb, yb);
                const float l = (xb - x) / 2.0f;
                inAlong(h, x, y, s, l);
                outAlong(h, x, y, s, l);
            } else if (isLast) {
                const float s = slope(xa, ya, x, y);
                const float l = (x - xa) / 2.0f;
                inAlong(h, x, y, s, l);
                outAlong(h, x, y, s, l);
            } else {
                const float s = slope(xa, ya, xb, yb);
                inAlong(h, x, y, s, capped((x - xa) / 2.0f, c));
                outAlong(h, x, y, s, capped((xb - x) / 2.0f, c));
            }
        } else if (length == TangentLengthFixed) {
            const float s =
                isFirst ? slope(x, y, xb, yb) : (isLast ? slope(xa, ya, x, y) : slope(xa, ya, xb, yb));
            const float a = atanf(s);
            inAtAngle(h, x, y, a, 2.0f);
            outAtAngle(h, x, y, a, 2.0f);
        }
        break;

    case TangentForward:
        if (isLast) {
            // The last key has no next key to point at: its handles are flat.
            if (length == TangentSmooth)
                flat(h, x, y, (x - xa) * kThird, (x - xa) * kThird);
            else if (length == TangentLengthHalf)
                flat(h, x, y, (x - xa) / 2.0f, (x - xa) / 2.0f);
            else if (length == TangentLengthFixed)
                flat(h, x, y, 2.0f, 2.0f);
        } else if (length == TangentSmooth) {
            const float s = slope(x, y, xb, yb);
            const float l = isFirst ? (xb - x) * kThird : (xb - xa) * kThird;
            inAlong(h, x, y, s, l);
            outAlong(h, x, y, s, l);
        } else if (length == TangentLengthHalf) {
            const float s = slope(x, y, xb, yb);
            if (isFirst) {
                const float l = (xb - x) / 2.0f;
                inAlong(h, x, y, s, l);
                outAlong(h, x, y, s, l);
            } else {
                inAlong(h, x, y, s, capped((x - xa) / 2.0f, c));
                outAlong(h, x, y, s, capped((xb - x) / 2.0f, c));
            }
        } else if (length == TangentLengthFixed) {
            const float a = atanf(slope(x, y, xb, yb));
            inAtAngle(h, x, y, a, 2.0f);
            outAtAngle(h, x, y, a, 2.0f);
        }
        break;

    default:
        // TangentNone and unknown types collapse both handles onto the key.
        break;
    }

    inTangentPoint->writePosition(h.ix, h.iy);
    outTangentPoint->writePosition(h.ox, h.oy);
    return true;
}
