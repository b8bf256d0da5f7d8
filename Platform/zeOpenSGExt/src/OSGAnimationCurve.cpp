#include <zeOpenSGExt/OSGAnimationCurve.h>

namespace osg {

OSG_FC_CREATE_FUNCTIONS_IMPL(AnimationCurveBase, AnimationCurve, AnimationCurvePtr)

FieldContainerType& AnimationCurveBase::getClassType()
{
    static FieldContainerType type(
        "AnimationCurve", &FieldContainer::getClassType(), nullptr, &osgCreateAnimationCurve,
        {OSG_SFIELD_DESC(AnimationCurveBase, SFNodePtr, "AFAppNode", AFAppNode, false),
         OSG_SFIELD_DESC(AnimationCurveBase, SFNodePtr, "AFAppropriateNode", AFAppropriateNode, false),
         OSG_SFIELD_DESC(AnimationCurveBase, SFString, "AFFieldName", AFFieldName, false),
         OSG_SFIELD_DESC(AnimationCurveBase, SFString, "AFGlobalFieldName", AFGlobalFieldName, false),
         OSG_SFIELD_DESC(AnimationCurveBase, SFString, "AFAttribute", AFAttribute, false),
         OSG_SFIELD_DESC(AnimationCurveBase, SFReal32, "AFValue", AFValue, false),
         OSG_SFIELD_DESC(AnimationCurveBase, SFUInt16, "AFValuePosition", AFValuePosition, false),
         OSG_SFIELD_DESC(AnimationCurveBase, SFBool, "AFDirty", AFDirty, false),
         OSG_MFIELD_DESC(AnimationCurveBase, MFAnimationControlPointPtr, "controlPoints", ControlPoints,
                         false)});
    return type;
}
OSG_FC_TYPE_FUNCTIONS_IMPL(AnimationCurveBase)

AnimationCurveBase::AnimationCurveBase()
    : _sfAFValue(Real32(0.f)), _sfAFValuePosition(UInt16(0)), _sfAFDirty(bool(false))
{}

AnimationCurveBase::AnimationCurveBase(const AnimationCurveBase& source)
    : Inherited(source), _sfAFAppNode(source._sfAFAppNode), _sfAFAppropriateNode(source._sfAFAppropriateNode),
      _sfAFFieldName(source._sfAFFieldName), _sfAFGlobalFieldName(source._sfAFGlobalFieldName),
      _sfAFAttribute(source._sfAFAttribute), _sfAFValue(source._sfAFValue),
      _sfAFValuePosition(source._sfAFValuePosition), _sfAFDirty(source._sfAFDirty),
      _mfControlPoints(source._mfControlPoints)
{
    // The copy shares the referenced containers, so it takes its own references.
    for (const AnimationControlPointPtr& element : _mfControlPoints)
        addRefCP(element);
}

AnimationCurveBase::~AnimationCurveBase()
{
    clearControlPoints();
}

AnimationCurve::AnimationCurve() = default;

AnimationCurve::AnimationCurve(const AnimationCurve& source) : Inherited(source) {}

AnimationCurve::~AnimationCurve() = default;

namespace {
[[maybe_unused]] const bool registered = (AnimationCurve::getClassType(), true);
} // namespace

} // namespace osg
