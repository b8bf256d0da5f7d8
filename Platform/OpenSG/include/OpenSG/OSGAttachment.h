#ifndef _OSGATTACHMENT_H_
#define _OSGATTACHMENT_H_

#include "OSGAttachmentFields.h"
#include "OSGFieldContainer.h"
#include "OSGFieldContainerFields.h"
#include "OSGFieldContainerType.h"
#include "OSGSFSysTypes.h"

namespace osg {

// Base of attachments. Every container the attachment is attached to is listed in "parents"
// (internal, not reference counted). Internal attachments are not written to files.
class OSG_SYSTEMLIB_DLLMAPPING Attachment : public FieldContainer
{
public:
    typedef FieldContainer Inherited;
    typedef AttachmentPtr Ptr;

    enum
    {
        ParentsFieldId = Inherited::NextFieldId,
        InternalFieldId = ParentsFieldId + 1,
        NextFieldId = InternalFieldId + 1
    };
    static constexpr BitVector ParentsFieldMask = TypeTraits<BitVector>::One << ParentsFieldId;
    static constexpr BitVector InternalFieldMask = TypeTraits<BitVector>::One << InternalFieldId;

    OSG_FC_TYPE_FUNCTIONS_DECL
    OSG_FC_CREATE_FUNCTIONS_DECL(AttachmentPtr)

    MFFieldContainerPtr& getParents() { return _mfParents; }
    const MFFieldContainerPtr& getParents() const { return _mfParents; }
    MFFieldContainerPtr* getMFParents() { return &_mfParents; }
    const MFFieldContainerPtr* getMFParents() const { return &_mfParents; }
    MFFieldContainerPtr* editMFParents() { return &_mfParents; }
    void addParent(FieldContainerPtr parent);
    void subParent(FieldContainerPtr parent);

    SFBool& getInternal() { return _sfInternal; }
    const SFBool& getInternal() const { return _sfInternal; }
    SFBool* getSFInternal() { return &_sfInternal; }
    const SFBool* getSFInternal() const { return &_sfInternal; }
    SFBool* editSFInternal() { return &_sfInternal; }
    void setInternal(bool internal) { _sfInternal.setValue(internal); }

protected:
    Attachment();
    // The copy has no parents.
    Attachment(const Attachment& source);
    // Unhooks itself from any container that still lists it.
    ~Attachment() override;

    MFFieldContainerPtr _mfParents;
    SFBool _sfInternal;
};

} // namespace osg

#include "OSGAttachmentContainer.h"

#endif
