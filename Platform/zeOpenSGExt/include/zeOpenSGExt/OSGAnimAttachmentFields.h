#ifndef _OSGANIMATTACHMENTFIELDS_H_
#define _OSGANIMATTACHMENTFIELDS_H_

#include "OSGZeOpenSGExtDef.h"
#include <OpenSG/OSGAttachmentFields.h>
#include <OpenSG/OSGMField.h>
#include <OpenSG/OSGSField.h>

namespace osg {

class AnimAttachment;
typedef FCPtr<AttachmentPtr, AnimAttachment> AnimAttachmentPtr;

OSG_DECL_FC_PTR_FIELD_TRAITS(AnimAttachmentPtr)

typedef SField<AnimAttachmentPtr> SFAnimAttachmentPtr;
typedef MField<AnimAttachmentPtr> MFAnimAttachmentPtr;

} // namespace osg

#endif
