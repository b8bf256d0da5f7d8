#ifndef _OSGANIMATIONATTACHMENT_H_
#define _OSGANIMATIONATTACHMENT_H_

#include "OSGAnimationAttachmentBase.h"

namespace osg {

// Older animation attachment of a node: its clips and its blocks (referenced). Only read when
// older scenes are imported.
class OSG_ZEOPENSGEXT_DLLMAPPING AnimationAttachment : public AnimationAttachmentBase
{
public:
    typedef AnimationAttachmentBase Inherited;

protected:
    friend class AnimationAttachmentBase;

    AnimationAttachment();
    AnimationAttachment(const AnimationAttachment& source);
    ~AnimationAttachment() override;
};

} // namespace osg

#endif
