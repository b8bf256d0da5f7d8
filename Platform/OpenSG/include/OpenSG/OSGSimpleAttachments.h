#ifndef _OSGSIMPLEATTACHMENTS_H_
#define _OSGSIMPLEATTACHMENTS_H_

#include "OSGAttachment.h"
#include "OSGAttachmentContainer.h"
#include "OSGSFBaseTypes.h"

#include <string>

namespace osg {

// An attachment holding a single field. The description names the type, the field and the group;
// every simple attachment type names its own group, so findAttachment by that group finds it.
// Exported even from libraries built with hidden visibility: the type object behind
// getClassType() must be one per process, not one per library that instantiates the template.
template <class AttachmentDescT>
class OSG_SYSTEMLIB_DLLMAPPING SimpleAttachment : public Attachment
{
public:
    typedef Attachment Inherited;
    typedef typename AttachmentDescT::FieldTypeT StoredFieldType;
    typedef FCPtr<AttachmentPtr, SimpleAttachment> PtrType;

    enum
    {
        SimpleFieldId = Inherited::NextFieldId,
        NextFieldId = SimpleFieldId + 1
    };
    static constexpr BitVector SimpleFieldMask = TypeTraits<BitVector>::One << SimpleFieldId;

    static FieldContainerType& getClassType()
    {
        static FieldContainerType type(
            AttachmentDescT::getTypeName(), &Attachment::getClassType(), AttachmentDescT::getGroupName(),
            &createAsFieldContainer,
            {FieldDescription(StoredFieldType::getClassType(), AttachmentDescT::getFieldName(), SimpleFieldId,
                              SimpleFieldMask, false, &osgFieldAccess<&SimpleAttachment::editFieldPtr>)});
        return type;
    }
    static UInt32 getClassTypeId() { return getClassType().getId(); }
    static UInt16 getClassGroupId() { return getClassType().getGroupId(); }
    FieldContainerType& getType() override { return getClassType(); }
    const FieldContainerType& getType() const override { return getClassType(); }

    static PtrType create() { return createEmpty(); }
    static PtrType createEmpty() { return registerNew<PtrType>(new SimpleAttachment()); }
    FieldContainerPtr shallowCopy() const override
    {
        return registerCopy<FieldContainerPtr>(new SimpleAttachment(*this), this);
    }
    UInt32 getContainerSize() const override { return sizeof(SimpleAttachment); }

    StoredFieldType* getFieldPtr() { return &_field; }
    const StoredFieldType* getFieldPtr() const { return &_field; }
    StoredFieldType* editFieldPtr() { return &_field; }
    StoredFieldType& getField() { return _field; }
    const StoredFieldType& getField() const { return _field; }
    using Inherited::getField;

protected:
    SimpleAttachment() = default;
    SimpleAttachment(const SimpleAttachment& source) : Inherited(source), _field(source._field) {}

private:
    static FieldContainerPtr createAsFieldContainer() { return create(); }

    StoredFieldType _field;
};

struct NameAttachmentDesc
{
    typedef SFString FieldTypeT;
    static const Char8* getTypeName() { return "Name"; }
    static const Char8* getFieldName() { return "name"; }
    static const Char8* getGroupName() { return "name"; }
};

typedef SimpleAttachment<NameAttachmentDesc> Name;
typedef FCPtr<AttachmentPtr, Name> NamePtr;

OSG_DECL_FC_PTR_FIELD_TRAITS(NamePtr)

// The container's name, or null when it is null or has no Name attachment.
OSG_SYSTEMLIB_DLLMAPPING const Char8* getName(AttachmentContainerPtr container);
// Creates the Name attachment if missing; edits the container's attachments inside
// begin/endEditCP with AttachmentsFieldMask.
OSG_SYSTEMLIB_DLLMAPPING void setName(AttachmentContainerPtr container, const std::string& name);
// A null name removes the Name attachment.
OSG_SYSTEMLIB_DLLMAPPING void setName(AttachmentContainerPtr container, const Char8* name);

} // namespace osg

#endif
