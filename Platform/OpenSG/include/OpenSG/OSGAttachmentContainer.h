#ifndef _OSGATTACHMENTCONTAINER_H_
#define _OSGATTACHMENTCONTAINER_H_

#include "OSGAttachmentMapFields.h"
#include "OSGFieldContainer.h"
#include "OSGFieldContainerType.h"

namespace osg {

// A container that can carry attachments (abstract). Attachments are stored under the key
// (group id << 16) | binding, so one attachment per group and binding: adding a second one
// replaces the first. None of these methods calls begin/endEditCP on the container itself.
class OSG_SYSTEMLIB_DLLMAPPING AttachmentContainer : public FieldContainer
{
public:
    typedef FieldContainer Inherited;
    typedef AttachmentContainerPtr Ptr;

    enum
    {
        AttachmentsFieldId = Inherited::NextFieldId,
        NextFieldId = AttachmentsFieldId + 1
    };
    static constexpr BitVector AttachmentsFieldMask = TypeTraits<BitVector>::One << AttachmentsFieldId;

    OSG_FC_TYPE_FUNCTIONS_DECL

    // addRefs the attachment and links this container as its parent; an attachment already
    // stored under the key is unlinked and subRef'd. Null is ignored.
    void addAttachment(const AttachmentPtr& attachment, UInt16 binding = 0);
    // Removes (unlinks and subRefs) whatever is stored under the attachment's group and binding.
    void subAttachment(const AttachmentPtr& attachment, UInt16 binding = 0);
    AttachmentPtr findAttachment(UInt32 groupId, UInt16 binding = 0);
    AttachmentPtr findAttachment(const FieldContainerType& type, UInt16 binding = 0);

    SFAttachmentMap* getSFAttachments() { return &_sfAttachments; }
    const SFAttachmentMap* getSFAttachments() const { return &_sfAttachments; }
    SFAttachmentMap* editSFAttachments() { return &_sfAttachments; }

protected:
    AttachmentContainer();
    // The copy shares the source's attachments (each gains a reference and a parent).
    AttachmentContainer(const AttachmentContainer& source);
    // Unlinks and subRefs every attachment.
    ~AttachmentContainer() override;

    SFAttachmentMap _sfAttachments;
};

} // namespace osg

#endif
