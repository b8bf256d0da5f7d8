#include <OpenSG/OSGAttachment.h>
#include <OpenSG/OSGAttachmentContainer.h>
#include <OpenSG/OSGSimpleAttachments.h>

#include <cstdio>

namespace osg {

DataType& FieldDataTraits<AttachmentMap, 0>::getType()
{
    static DataType type("AttachmentMap", nullptr);
    return type;
}

void FieldDataTraits<AttachmentMap, 0>::putToString(const AttachmentMap& in, std::string& out)
{
    out.clear();
    Char8 buffer[32];
    for (const auto& entry : in) {
        if (!out.empty())
            out.append(" ");
        std::snprintf(buffer, sizeof(buffer), "%p", static_cast<const void*>(entry.second.getBaseCPtr()));
        out.append(buffer);
    }
}

// ---------------------------------------------------------------- AttachmentContainer

FieldContainerType& AttachmentContainer::getClassType()
{
    static FieldContainerType type(
        "AttachmentContainer", &FieldContainer::getClassType(), nullptr, nullptr,
        {OSG_SFIELD_DESC(AttachmentContainer, SFAttachmentMap, "attachments", Attachments, false)});
    return type;
}
OSG_FC_TYPE_FUNCTIONS_IMPL(AttachmentContainer)

AttachmentContainer::AttachmentContainer() = default;

AttachmentContainer::AttachmentContainer(const AttachmentContainer& source)
    : Inherited(source), _sfAttachments(source._sfAttachments)
{
    FieldContainerPtr self(this);
    for (auto& entry : _sfAttachments.getValue()) {
        addRefCP(entry.second);
        entry.second->addParent(self);
    }
}

AttachmentContainer::~AttachmentContainer()
{
    FieldContainerPtr self(this);
    AttachmentMap attachments;
    attachments.swap(_sfAttachments.getValue());
    for (auto& entry : attachments) {
        entry.second->subParent(self);
        subRefCP(entry.second);
    }
}

void AttachmentContainer::addAttachment(const AttachmentPtr& attachment, UInt16 binding)
{
    if (attachment == NullFC)
        return;
    AttachmentPtr att = attachment;
    UInt32 key = (UInt32(att->getGroupId()) << 16) | binding;
    FieldContainerPtr self(this);

    addRefCP(att);
    att->addParent(self);

    AttachmentMap& map = _sfAttachments.getValue();
    auto it = map.find(key);
    if (it != map.end()) {
        AttachmentPtr old = it->second;
        it->second = att;
        old->subParent(self);
        subRefCP(old);
    } else {
        map.emplace(key, att);
    }
}

void AttachmentContainer::subAttachment(const AttachmentPtr& attachment, UInt16 binding)
{
    if (attachment == NullFC)
        return;
    UInt32 key = (UInt32(attachment->getGroupId()) << 16) | binding;
    AttachmentMap& map = _sfAttachments.getValue();
    auto it = map.find(key);
    if (it == map.end())
        return;
    AttachmentPtr old = it->second;
    map.erase(it);
    old->subParent(FieldContainerPtr(this));
    subRefCP(old);
}

AttachmentPtr AttachmentContainer::findAttachment(UInt32 groupId, UInt16 binding)
{
    const AttachmentMap& map = _sfAttachments.getValue();
    auto it = map.find((groupId << 16) | binding);
    return it != map.end() ? it->second : AttachmentPtr();
}

AttachmentPtr AttachmentContainer::findAttachment(const FieldContainerType& type, UInt16 binding)
{
    return findAttachment(type.getGroupId(), binding);
}

// ---------------------------------------------------------------- Attachment

OSG_FC_CREATE_FUNCTIONS_IMPL(Attachment, Attachment, AttachmentPtr)

FieldContainerType& Attachment::getClassType()
{
    static FieldContainerType type(
        "Attachment", &FieldContainer::getClassType(), nullptr, &osgCreateAttachment,
        {OSG_MFIELD_DESC(Attachment, MFFieldContainerPtr, "parents", Parents, true),
         OSG_SFIELD_DESC(Attachment, SFBool, "internal", Internal, false)});
    return type;
}
OSG_FC_TYPE_FUNCTIONS_IMPL(Attachment)

Attachment::Attachment() : _sfInternal(false) {}

Attachment::Attachment(const Attachment& source) : Inherited(source), _sfInternal(source._sfInternal) {}

Attachment::~Attachment()
{
    // Only reached with parents left when the count was released too often; keep the parents from
    // holding a dangling pointer.
    AttachmentPtr self(this);
    for (const FieldContainerPtr& parent : _mfParents) {
        AttachmentContainerPtr container = AttachmentContainerPtr::dcast(parent);
        if (container == NullFC)
            continue;
        AttachmentMap& map = container->editSFAttachments()->getValue();
        for (auto it = map.begin(); it != map.end();) {
            if (it->second == self)
                it = map.erase(it);
            else
                ++it;
        }
    }
}

void Attachment::addParent(FieldContainerPtr parent)
{
    _mfParents.push_back(parent);
}

void Attachment::subParent(FieldContainerPtr parent)
{
    auto it = _mfParents.find(parent);
    if (it != _mfParents.end())
        _mfParents.erase(it);
}

// ---------------------------------------------------------------- Name

const Char8* getName(AttachmentContainerPtr container)
{
    if (container == NullFC)
        return nullptr;
    NamePtr name = NamePtr::dcast(container->findAttachment(Name::getClassType().getGroupId()));
    return name != NullFC ? name->getField().getValue().c_str() : nullptr;
}

void setName(AttachmentContainerPtr container, const std::string& name)
{
    if (container == NullFC)
        return;
    NamePtr attachment = NamePtr::dcast(container->findAttachment(Name::getClassType().getGroupId()));
    if (attachment == NullFC) {
        attachment = Name::create();
        beginEditCP(container, AttachmentContainer::AttachmentsFieldMask);
        container->addAttachment(attachment);
        endEditCP(container, AttachmentContainer::AttachmentsFieldMask);
    }
    beginEditCP(attachment);
    attachment->getField().setValue(name);
    endEditCP(attachment);
}

void setName(AttachmentContainerPtr container, const Char8* name)
{
    if (container == NullFC)
        return;
    if (name != nullptr) {
        setName(container, std::string(name));
        return;
    }
    AttachmentPtr attachment = container->findAttachment(Name::getClassType().getGroupId());
    if (attachment == NullFC)
        return;
    beginEditCP(container, AttachmentContainer::AttachmentsFieldMask);
    container->subAttachment(attachment);
    endEditCP(container, AttachmentContainer::AttachmentsFieldMask);
}

namespace {
// Registers the types when the library is loaded, so they can be created by name.
[[maybe_unused]] const bool registered =
    (AttachmentContainer::getClassType(), Attachment::getClassType(), Name::getClassType(), true);
} // namespace

} // namespace osg
