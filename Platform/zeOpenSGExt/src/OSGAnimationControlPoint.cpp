#include <zeOpenSGExt/OSGAnimationControlPoint.h>

namespace osg {

OSG_FC_CREATE_FUNCTIONS_IMPL(AnimationControlPointBase, AnimationControlPoint, AnimationControlPointPtr)

FieldContainerType& AnimationControlPointBase::getClassType()
{
    static FieldContainerType type(
        "AnimationControlPoint", &FieldContainer::getClassType(), nullptr, &osgCreateAnimationControlPoint,
        {OSG_SFIELD_DESC(AnimationControlPointBase, SFPnt2f, "position", Position, false),
         OSG_SFIELD_DESC(AnimationControlPointBase, SFPnt2f, "inTangent", InTangent, false),
         OSG_SFIELD_DESC(AnimationControlPointBase, SFPnt2f, "outTangent", OutTangent, false),
         OSG_SFIELD_DESC(AnimationControlPointBase, SFBool, "hasTangents", HasTangents, false),
         OSG_SFIELD_DESC(AnimationControlPointBase, SFUInt32, "tangentType", TangentType, false)});
    return type;
}
OSG_FC_TYPE_FUNCTIONS_IMPL(AnimationControlPointBase)

AnimationControlPointBase::AnimationControlPointBase()
    : _sfHasTangents(bool(false)), _sfTangentType(UInt32(0u))
{}

AnimationControlPointBase::AnimationControlPointBase(const AnimationControlPointBase& source)
    : Inherited(source), _sfPosition(source._sfPosition), _sfInTangent(source._sfInTangent),
      _sfOutTangent(source._sfOutTangent), _sfHasTangents(source._sfHasTangents),
      _sfTangentType(source._sfTangentType)
{}

AnimationControlPointBase::~AnimationControlPointBase() = default;

AnimationControlPoint::AnimationControlPoint() = default;

AnimationControlPoint::AnimationControlPoint(const AnimationControlPoint& source) : Inherited(source) {}

AnimationControlPoint::~AnimationControlPoint() = default;

namespace {
[[maybe_unused]] const bool registered = (AnimationControlPoint::getClassType(), true);
} // namespace

} // namespace osg
