#ifndef _OSGANIMATTACHMENT_H_
#define _OSGANIMATTACHMENT_H_

#include "OSGAnimAttachmentBase.h"

namespace osg {

// Binds animation objects and animation fields to a node, by their 64-bit ids: "objectIds" first,
// then "fieldIds".
class OSG_ZEOPENSGEXT_DLLMAPPING AnimAttachment : public AnimAttachmentBase
{
public:
    typedef AnimAttachmentBase Inherited;

protected:
    friend class AnimAttachmentBase;

    AnimAttachment();
    AnimAttachment(const AnimAttachment& source);
    ~AnimAttachment() override;
};

} // namespace osg

#endif
