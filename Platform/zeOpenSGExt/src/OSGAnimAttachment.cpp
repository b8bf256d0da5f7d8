#include <zeOpenSGExt/OSGAnimAttachment.h>

namespace osg {

OSG_FC_CREATE_FUNCTIONS_IMPL(AnimAttachmentBase, AnimAttachment, AnimAttachmentPtr)

FieldContainerType& AnimAttachmentBase::getClassType()
{
    static FieldContainerType type(
        "AnimAttachment", &Attachment::getClassType(), nullptr, &osgCreateAnimAttachment,
        {OSG_MFIELD_DESC(AnimAttachmentBase, MFUInt64, "objectIds", ObjectIds, false),
         OSG_MFIELD_DESC(AnimAttachmentBase, MFUInt64, "fieldIds", FieldIds, false)});
    return type;
}
OSG_FC_TYPE_FUNCTIONS_IMPL(AnimAttachmentBase)

AnimAttachmentBase::AnimAttachmentBase() {}

AnimAttachmentBase::AnimAttachmentBase(const AnimAttachmentBase& source)
    : Inherited(source), _mfObjectIds(source._mfObjectIds), _mfFieldIds(source._mfFieldIds)
{}

AnimAttachmentBase::~AnimAttachmentBase() = default;

AnimAttachment::AnimAttachment() = default;

AnimAttachment::AnimAttachment(const AnimAttachment& source) : Inherited(source) {}

AnimAttachment::~AnimAttachment() = default;

namespace {
[[maybe_unused]] const bool registered = (AnimAttachment::getClassType(), true);
} // namespace

} // namespace osg
