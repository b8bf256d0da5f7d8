#ifndef _OSGTRANSFORMATTACHMENT_H_
#define _OSGTRANSFORMATTACHMENT_H_

#include "OSGTransformAttachmentBase.h"

namespace osg {

// Rotation of a Transform3D node. Ending an edit of "rotationAngles" rebuilds the matrix of every
// Transform3D core of the nodes carrying this attachment.
class OSG_ZEOPENSGEXT_DLLMAPPING TransformAttachment : public TransformAttachmentBase
{
public:
    typedef TransformAttachmentBase Inherited;

    void changed(BitVector whichField, UInt32 origin) override;

protected:
    friend class TransformAttachmentBase;

    TransformAttachment();
    TransformAttachment(const TransformAttachment& source);
    ~TransformAttachment() override;
};

} // namespace osg

#endif
