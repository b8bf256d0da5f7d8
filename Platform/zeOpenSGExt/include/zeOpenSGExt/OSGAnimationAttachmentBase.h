#ifndef _OSGANIMATIONATTACHMENTBASE_H_
#define _OSGANIMATIONATTACHMENTBASE_H_

#include "OSGAnimationAttachmentFields.h"
#include "OSGAnimationBlockFields.h"
#include "OSGAnimationClipFields.h"
#include "OSGZeOpenSGExtDef.h"
#include <OpenSG/OSGAttachment.h>

namespace osg {

class AnimationAttachment;

// Older animation attachment of a node: its clips and its blocks (referenced). Only read when
// older scenes are imported.
class OSG_ZEOPENSGEXT_DLLMAPPING AnimationAttachmentBase : public Attachment
{
public:
    typedef Attachment Inherited;
    typedef AnimationAttachmentPtr Ptr;

    enum
    {
        ClipsFieldId = Inherited::NextFieldId,
        BlocksFieldId = ClipsFieldId + 1,
        NextFieldId = BlocksFieldId + 1
    };
    static constexpr BitVector ClipsFieldMask = TypeTraits<BitVector>::One << ClipsFieldId;
    static constexpr BitVector BlocksFieldMask = TypeTraits<BitVector>::One << BlocksFieldId;

    OSG_FC_TYPE_FUNCTIONS_DECL
    OSG_FC_CREATE_FUNCTIONS_DECL(AnimationAttachmentPtr)

    OSG_MFIELD_REF_ACCESSORS(MFAnimationClipPtr, AnimationClipPtr, Clips)
    OSG_MFIELD_REF_ACCESSORS(MFAnimationBlockPtr, AnimationBlockPtr, Blocks)

protected:
    AnimationAttachmentBase();
    AnimationAttachmentBase(const AnimationAttachmentBase& source);
    ~AnimationAttachmentBase() override; // releases the referenced containers
};

} // namespace osg

#endif
