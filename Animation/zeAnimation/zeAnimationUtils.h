#ifndef ZEANIMATIONUTILS_H
#define ZEANIMATIONUTILS_H

#include <zeAnimation/zeAnimationConfig.h>
#include <zeAnimation/zeControlPoint2D.h>

#include <OpenSG/OSGBaseTypes.h>
#include <OpenSG/OSGColor.h>
#include <OpenSG/OSGVector.h>

class zeAnimationField;
class zeAnimationObject;

// Scene binding helpers: reading and writing one float of the scene through an animation field,
// the animation attachments of nodes, and small numeric helpers shared by the library.
class ZEANIMATION_EXPORT zeAnimationUtils
{
public:
    // Rounds to the nearest whole number, halves away from zero.
    static float snap(float value);
    // Rounds only the coordinates whose flag is set.
    static osg::Pnt2f snap(const osg::Pnt2f& point, bool snapX, bool snapY);
    // Maps the tangent type of an older scene's control point onto TangentMode (1 none, 2 linear,
    // 3 smooth, 4 flat, 5 forward, 6 free); anything else is flat.
    static zeControlPoint2D::TangentMode convertTangentType(unsigned int legacyType);
    // A curve's display colour, chosen by the last character of its field's attribute.
    static osg::Color3f getDefaultCurveColor(const zeAnimationField* field);
    // Nearest integer, halves away from zero, returned as unsigned (a negative result wraps).
    static osg::UInt32 floatToInt(float value);
    // Rounds as floatToInt and tells whether the result is positive.
    static bool floatToBool(float value);
};

#endif // ZEANIMATIONUTILS_H
