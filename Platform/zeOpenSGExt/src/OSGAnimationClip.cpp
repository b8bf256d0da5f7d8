#include <zeOpenSGExt/OSGAnimationClip.h>

namespace osg {

OSG_FC_CREATE_FUNCTIONS_IMPL(AnimationClipBase, AnimationClip, AnimationClipPtr)

FieldContainerType& AnimationClipBase::getClassType()
{
    static FieldContainerType type(
        "AnimationClip", &FieldContainer::getClassType(), nullptr, &osgCreateAnimationClip,
        {OSG_SFIELD_DESC(AnimationClipBase, SFString, "name", Name, false),
         OSG_SFIELD_DESC(AnimationClipBase, SFBool, "flipped", Flipped, false),
         OSG_SFIELD_DESC(AnimationClipBase, SFBool, "repeating", Repeating, false),
         OSG_SFIELD_DESC(AnimationClipBase, SFBool, "motionBlur", MotionBlur, false),
         OSG_MFIELD_DESC(AnimationClipBase, MFAnimationBlockPtr, "blocks", Blocks, false),
         OSG_MFIELD_DESC(AnimationClipBase, MFAnimationClipPtr, "clips", Clips, false),
         OSG_MFIELD_DESC(AnimationClipBase, MFAnimationTrackPtr, "tracks", Tracks, false)});
    return type;
}
OSG_FC_TYPE_FUNCTIONS_IMPL(AnimationClipBase)

AnimationClipBase::AnimationClipBase()
    : _sfFlipped(bool(false)), _sfRepeating(bool(false)), _sfMotionBlur(bool(false))
{}

AnimationClipBase::AnimationClipBase(const AnimationClipBase& source)
    : Inherited(source), _sfName(source._sfName), _sfFlipped(source._sfFlipped),
      _sfRepeating(source._sfRepeating), _sfMotionBlur(source._sfMotionBlur), _mfBlocks(source._mfBlocks),
      _mfClips(source._mfClips), _mfTracks(source._mfTracks)
{
    // The copy shares the referenced containers, so it takes its own references.
    for (const AnimationBlockPtr& element : _mfBlocks)
        addRefCP(element);
    for (const AnimationClipPtr& element : _mfClips)
        addRefCP(element);
    for (const AnimationTrackPtr& element : _mfTracks)
        addRefCP(element);
}

AnimationClipBase::~AnimationClipBase()
{
    clearBlocks();
    clearClips();
    clearTracks();
}

AnimationClip::AnimationClip() = default;

AnimationClip::AnimationClip(const AnimationClip& source) : Inherited(source) {}

AnimationClip::~AnimationClip() = default;

namespace {
[[maybe_unused]] const bool registered = (AnimationClip::getClassType(), true);
} // namespace

} // namespace osg
