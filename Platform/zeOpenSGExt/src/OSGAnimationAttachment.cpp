#include <zeOpenSGExt/OSGAnimationAttachment.h>

namespace osg {

OSG_FC_CREATE_FUNCTIONS_IMPL(AnimationAttachmentBase, AnimationAttachment, AnimationAttachmentPtr)

FieldContainerType& AnimationAttachmentBase::getClassType()
{
    static FieldContainerType type(
        "AnimationAttachment", &Attachment::getClassType(), nullptr, &osgCreateAnimationAttachment,
        {OSG_MFIELD_DESC(AnimationAttachmentBase, MFAnimationClipPtr, "clips", Clips, false),
         OSG_MFIELD_DESC(AnimationAttachmentBase, MFAnimationBlockPtr, "blocks", Blocks, false)});
    return type;
}
OSG_FC_TYPE_FUNCTIONS_IMPL(AnimationAttachmentBase)

AnimationAttachmentBase::AnimationAttachmentBase() {}

AnimationAttachmentBase::AnimationAttachmentBase(const AnimationAttachmentBase& source)
    : Inherited(source), _mfClips(source._mfClips), _mfBlocks(source._mfBlocks)
{
    // The copy shares the referenced containers, so it takes its own references.
    for (const AnimationClipPtr& element : _mfClips)
        addRefCP(element);
    for (const AnimationBlockPtr& element : _mfBlocks)
        addRefCP(element);
}

AnimationAttachmentBase::~AnimationAttachmentBase()
{
    clearClips();
    clearBlocks();
}

AnimationAttachment::AnimationAttachment() = default;

AnimationAttachment::AnimationAttachment(const AnimationAttachment& source) : Inherited(source) {}

AnimationAttachment::~AnimationAttachment() = default;

namespace {
[[maybe_unused]] const bool registered = (AnimationAttachment::getClassType(), true);
} // namespace

} // namespace osg
