#ifndef _OSGTRANSFORMATTACHMENTBASE_H_
#define _OSGTRANSFORMATTACHMENTBASE_H_

#include "OSGTransformAttachmentFields.h"
#include "OSGZeOpenSGExtDef.h"
#include <OpenSG/OSGAttachment.h>
#include <OpenSG/OSGSFVecTypes.h>

namespace osg {

class TransformAttachment;

// Attachment holding the rotation of a node whose core is a Transform3D: angles in degrees
// about x, y and z (see Transform3D for the order).
class OSG_ZEOPENSGEXT_DLLMAPPING TransformAttachmentBase : public Attachment
{
public:
    typedef Attachment Inherited;
    typedef TransformAttachmentPtr Ptr;

    enum
    {
        RotationAnglesFieldId = Inherited::NextFieldId,
        NextFieldId = RotationAnglesFieldId + 1
    };
    static constexpr BitVector RotationAnglesFieldMask = TypeTraits<BitVector>::One << RotationAnglesFieldId;

    OSG_FC_TYPE_FUNCTIONS_DECL
    OSG_FC_CREATE_FUNCTIONS_DECL(TransformAttachmentPtr)

    OSG_SFIELD_ACCESSORS(SFVec3f, Vec3f, RotationAngles)

protected:
    TransformAttachmentBase();
    TransformAttachmentBase(const TransformAttachmentBase& source);
    ~TransformAttachmentBase() override;
};

} // namespace osg

#endif
