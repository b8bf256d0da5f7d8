#include <zeOpenSGExt/OSGAnimationBlock.h>

namespace osg {

OSG_FC_CREATE_FUNCTIONS_IMPL(AnimationBlockBase, AnimationBlock, AnimationBlockPtr)

FieldContainerType& AnimationBlockBase::getClassType()
{
    static FieldContainerType type(
        "AnimationBlock", &FieldContainer::getClassType(), nullptr, &osgCreateAnimationBlock,
        {OSG_SFIELD_DESC(AnimationBlockBase, SFString, "name", Name, false),
         OSG_SFIELD_DESC(AnimationBlockBase, SFBool, "repeating", Repeating, false),
         OSG_SFIELD_DESC(AnimationBlockBase, SFBool, "motionBlur", MotionBlur, false),
         OSG_SFIELD_DESC(AnimationBlockBase, SFBool, "flipped", Flipped, false),
         OSG_SFIELD_DESC(AnimationBlockBase, SFReal32, "start", Start, false),
         OSG_SFIELD_DESC(AnimationBlockBase, SFReal32, "end", End, false),
         OSG_SFIELD_DESC(AnimationBlockBase, SFNodePtr, "node", Node, false),
         OSG_MFIELD_DESC(AnimationBlockBase, MFAnimationCurvePtr, "curves", Curves, false)});
    return type;
}
OSG_FC_TYPE_FUNCTIONS_IMPL(AnimationBlockBase)

AnimationBlockBase::AnimationBlockBase()
    : _sfRepeating(bool(false)), _sfMotionBlur(bool(false)), _sfFlipped(bool(false)), _sfStart(Real32(0.f)),
      _sfEnd(Real32(0.f))
{}

AnimationBlockBase::AnimationBlockBase(const AnimationBlockBase& source)
    : Inherited(source), _sfName(source._sfName), _sfRepeating(source._sfRepeating),
      _sfMotionBlur(source._sfMotionBlur), _sfFlipped(source._sfFlipped), _sfStart(source._sfStart),
      _sfEnd(source._sfEnd), _sfNode(source._sfNode), _mfCurves(source._mfCurves)
{
    // The copy shares the referenced containers, so it takes its own references.
    for (const AnimationCurvePtr& element : _mfCurves)
        addRefCP(element);
}

AnimationBlockBase::~AnimationBlockBase()
{
    clearCurves();
}

AnimationBlock::AnimationBlock() = default;

AnimationBlock::AnimationBlock(const AnimationBlock& source) : Inherited(source) {}

AnimationBlock::~AnimationBlock() = default;

namespace {
[[maybe_unused]] const bool registered = (AnimationBlock::getClassType(), true);
} // namespace

} // namespace osg
