#include <zeOpenSGExt/OSGAnimationTrack.h>

namespace osg {

OSG_FC_CREATE_FUNCTIONS_IMPL(AnimationTrackBase, AnimationTrack, AnimationTrackPtr)

FieldContainerType& AnimationTrackBase::getClassType()
{
    static FieldContainerType type(
        "AnimationTrack", &FieldContainer::getClassType(), nullptr, &osgCreateAnimationTrack,
        {OSG_MFIELD_DESC(AnimationTrackBase, MFAnimationBlockPtr, "blocks", Blocks, false),
         OSG_MFIELD_DESC(AnimationTrackBase, MFAnimationBlockPtr, "sequences", Sequences, false),
         OSG_MFIELD_DESC(AnimationTrackBase, MFAnimationClipPtr, "clips", Clips, false)});
    return type;
}
OSG_FC_TYPE_FUNCTIONS_IMPL(AnimationTrackBase)

AnimationTrackBase::AnimationTrackBase() {}

AnimationTrackBase::AnimationTrackBase(const AnimationTrackBase& source)
    : Inherited(source), _mfBlocks(source._mfBlocks), _mfSequences(source._mfSequences),
      _mfClips(source._mfClips)
{
    // The copy shares the referenced containers, so it takes its own references.
    for (const AnimationBlockPtr& element : _mfBlocks)
        addRefCP(element);
    for (const AnimationBlockPtr& element : _mfSequences)
        addRefCP(element);
    for (const AnimationClipPtr& element : _mfClips)
        addRefCP(element);
}

AnimationTrackBase::~AnimationTrackBase()
{
    clearBlocks();
    clearSequences();
    clearClips();
}

AnimationTrack::AnimationTrack() = default;

AnimationTrack::AnimationTrack(const AnimationTrack& source) : Inherited(source) {}

AnimationTrack::~AnimationTrack() = default;

namespace {
[[maybe_unused]] const bool registered = (AnimationTrack::getClassType(), true);
} // namespace

} // namespace osg
