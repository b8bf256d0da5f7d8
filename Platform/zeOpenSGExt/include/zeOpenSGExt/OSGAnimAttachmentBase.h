#ifndef _OSGANIMATTACHMENTBASE_H_
#define _OSGANIMATTACHMENTBASE_H_

#include "OSGAnimAttachmentFields.h"
#include "OSGZeOpenSGExtDef.h"
#include <OpenSG/OSGAttachment.h>
#include <OpenSG/OSGMFSysTypes.h>

namespace osg {

class AnimAttachment;

// Binds animation objects and animation fields to a node, by their 64-bit ids: "objectIds" first,
// then "fieldIds".
class OSG_ZEOPENSGEXT_DLLMAPPING AnimAttachmentBase : public Attachment
{
public:
    typedef Attachment Inherited;
    typedef AnimAttachmentPtr Ptr;

    enum
    {
        ObjectIdsFieldId = Inherited::NextFieldId,
        FieldIdsFieldId = ObjectIdsFieldId + 1,
        NextFieldId = FieldIdsFieldId + 1
    };
    static constexpr BitVector ObjectIdsFieldMask = TypeTraits<BitVector>::One << ObjectIdsFieldId;
    static constexpr BitVector FieldIdsFieldMask = TypeTraits<BitVector>::One << FieldIdsFieldId;

    OSG_FC_TYPE_FUNCTIONS_DECL
    OSG_FC_CREATE_FUNCTIONS_DECL(AnimAttachmentPtr)

    OSG_MFIELD_ACCESSORS(MFUInt64, UInt64, ObjectIds)
    OSG_MFIELD_ACCESSORS(MFUInt64, UInt64, FieldIds)

protected:
    AnimAttachmentBase();
    AnimAttachmentBase(const AnimAttachmentBase& source);
    ~AnimAttachmentBase() override;
};

} // namespace osg

#endif
