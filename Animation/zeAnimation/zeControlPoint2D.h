#ifndef ZECONTROLPOINT2D_H
#define ZECONTROLPOINT2D_H

#include <zeAnimation/zeAnimationObject.h>

#include <OpenSG/OSGVector.h>

#include <string>

// One key of a curve: a point (x = frame, y = value) with two Bezier handles. The handles are
// control points themselves (marked as tangents, parented to their key, owned by it) and hold
// absolute curve coordinates; a handle lying on its key means no handle on that side.
class ZEANIMATION_EXPORT zeControlPoint2D final : public zeAnimationObject
{
    friend class zeAnimationManager;
    friend class zeAnimationCurve2D;

public:
    // Used both as a key's tangent type and as its tangent length mode. Values from files and
    // older scenes are stored as they come, so the type is a fixed 32 bits wide.
    enum TangentMode : osg::UInt32
    {
        TangentNone = 0,
        TangentLinear = 1,
        TangentFlat = 2,
        TangentSmooth = 4,
        TangentForward = 8,
        TangentFree = 16,
        TangentLengthFixed = 32,
        TangentLengthHalf = 64
    };

    // Keys map the interval to their x and the value range to their y.
    void setBegin(float value) override { setX(value); }
    void setEnd(float value) override { setX(value); }
    void setMaximum(float value) override { setY(value); }
    void setMinimum(float value) override { setY(value); }
    void setSelected(bool value) override;
    osg::UInt32 getTypeID() const override;
    float getBegin() const override { return position[0]; }
    float getEnd() const override { return position[0]; }
    float getMaximum() const override { return position[1]; }
    float getMinimum() const override { return position[1]; }

    // Position writes with a NaN or infinite coordinate are ignored (the position stays).
    void setPosition(const osg::Pnt2f& value);
    const osg::Pnt2f& getPosition() const { return position; }
    void setX(float value);
    float getX() const { return position[0]; }
    void setY(float value);
    float getY() const { return position[1]; }
    void setTempPosition(const osg::Pnt2f& value) { tempPosition = value; }
    const osg::Pnt2f& getTempPosition() const { return tempPosition; }

    // Handle positions. Writes are ignored when the handle is missing; a missing handle reads
    // as (0, 0) as a vector but as lying on the key component by component.
    void setInTangent(const osg::Vec2f& value);
    void setOutTangent(const osg::Vec2f& value);
    void setInTangentX(float value);
    void setInTangentY(float value);
    void setOutTangentX(float value);
    void setOutTangentY(float value);
    osg::Vec2f getInTangent() const;
    osg::Vec2f getOutTangent() const;
    float getInTangentX() const { return inTangentPoint ? inTangentPoint->position[0] : position[0]; }
    float getInTangentY() const { return inTangentPoint ? inTangentPoint->position[1] : position[1]; }
    float getOutTangentX() const { return outTangentPoint ? outTangentPoint->position[0] : position[0]; }
    float getOutTangentY() const { return outTangentPoint ? outTangentPoint->position[1] : position[1]; }
    zeControlPoint2D* getInTangentPoint() const { return inTangentPoint; }
    zeControlPoint2D* getOutTangentPoint() const { return outTangentPoint; }
    void setTempInTangent(const osg::Vec2f& value) { tempInTangent = value; }
    const osg::Vec2f& getTempInTangent() const { return tempInTangent; }
    void setTempOutTangent(const osg::Vec2f& value) { tempOutTangent = value; }
    const osg::Vec2f& getTempOutTangent() const { return tempOutTangent; }

    void setTangentType(TangentMode mode) { tangentType = mode; }
    TangentMode getTangentType() const { return tangentType; }
    void setTangentLengthMode(TangentMode mode) { tangentLengthMode = mode; }
    TangentMode getTangentLengthMode() const { return tangentLengthMode; }
    void setIsTangent(bool value) { tangent = value; }
    bool isTangent() const { return tangent; }

    // Places both handles from the key's neighbours on its curve by its tangent type and length
    // mode. Returns false, writing nothing, for a handle object, a key outside a curve, a free
    // key, a key the curve's map does not hold, and a curve of one key.
    bool computeTangents();

protected:
    zeControlPoint2D();
    zeControlPoint2D(const std::string& name, osg::UInt64 id, bool isTangent);
    zeControlPoint2D(float x, float y, const std::string& name, osg::UInt64 id, bool isTangent);
    zeControlPoint2D(const zeControlPoint2D& other);
    // Copies every member; the handles are copied by position into this key's own handle
    // objects, so two keys never share (and later double-free) one handle.
    zeControlPoint2D& operator=(const zeControlPoint2D& other);
    ~zeControlPoint2D();

    osg::Pnt2f position;
    osg::Pnt2f tempPosition;
    zeControlPoint2D* inTangentPoint;
    osg::Vec2f tempInTangent;
    zeControlPoint2D* outTangentPoint;
    osg::Vec2f tempOutTangent;
    bool tangent;
    TangentMode tangentType;
    TangentMode tangentLengthMode;

    static zeControlPoint2D _the;

private:
    void createHandles();
    void destroyHandles();
    // Every position write of a key or a handle goes through here. Positions are finite: a write
    // of NaN or an infinity is ignored, so keys always have an order and segments a length.
    void writePosition(float x, float y);

    static osg::UInt32 _typeID;
};

#endif // ZECONTROLPOINT2D_H
