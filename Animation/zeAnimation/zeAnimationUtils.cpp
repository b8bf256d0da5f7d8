#include <zeAnimation/zeAnimationUtils.h>

#include <zeAnimation/zeAnimationField.h>

#include <cmath>
#include <limits>

namespace {

// Round half away from zero: add (or subtract) one half in double precision and truncate.
double roundHalfAway(double value)
{
    // Beyond 2^52 every double is already whole (and NaN stays NaN); truncating there would
    // overflow the integer conversion.
    if (!(std::fabs(value) < 4503599627370496.0))
        return value;
    const double shifted = value < 0.0 ? value - 0.5 : value + 0.5;
    return static_cast<double>(static_cast<long long>(shifted));
}

// Round half away from zero in single precision and truncate into a 32-bit integer; values
// beyond the integer range saturate and NaN gives 0 instead of an undefined conversion.
osg::Int32 roundToInt32(float value)
{
    if (std::isnan(value))
        return 0;
    const float shifted = value < 0.0f ? value - 0.5f : value + 0.5f;
    if (shifted >= 2147483648.0f)
        return std::numeric_limits<osg::Int32>::max();
    if (shifted <= -2147483648.0f)
        return std::numeric_limits<osg::Int32>::min();
    return static_cast<osg::Int32>(shifted);
}

} // namespace

float zeAnimationUtils::snap(float value)
{
    return static_cast<float>(roundHalfAway(value));
}

osg::Pnt2f zeAnimationUtils::snap(const osg::Pnt2f& point, bool snapX, bool snapY)
{
    return osg::Pnt2f(snapX ? snap(point[0]) : point[0], snapY ? snap(point[1]) : point[1]);
}

zeControlPoint2D::TangentMode zeAnimationUtils::convertTangentType(unsigned int legacyType)
{
    switch (legacyType) {
    case 1:
        return zeControlPoint2D::TangentNone;
    case 2:
        return zeControlPoint2D::TangentLinear;
    case 3:
        return zeControlPoint2D::TangentSmooth;
    case 4:
        return zeControlPoint2D::TangentFlat;
    case 5:
        return zeControlPoint2D::TangentForward;
    case 6:
        return zeControlPoint2D::TangentFree;
    default:
        return zeControlPoint2D::TangentFlat;
    }
}

osg::Color3f zeAnimationUtils::getDefaultCurveColor(const zeAnimationField* field)
{
    if (!field || field->attribute.empty())
        return osg::Color3f(0.0f, 0.0f, 0.0f);
    switch (field->attribute.back()) {
    case 'X':
    case 'R':
        return osg::Color3f(0.898f, 0.298f, 0.298f);
    case 'Y':
    case 'G':
        return osg::Color3f(0.298f, 0.898f, 0.298f);
    case 'Z':
    case 'B':
        return osg::Color3f(0.4f, 0.624f, 0.816f);
    case 'W':
    case 'A':
    case 'I':
        return osg::Color3f(0.898f, 0.827f, 0.298f);
    default:
        return osg::Color3f(0.953f, 0.557f, 0.271f);
    }
}

osg::UInt32 zeAnimationUtils::floatToInt(float value)
{
    return static_cast<osg::UInt32>(roundToInt32(value));
}

bool zeAnimationUtils::floatToBool(float value)
{
    return roundToInt32(value) > 0;
}
