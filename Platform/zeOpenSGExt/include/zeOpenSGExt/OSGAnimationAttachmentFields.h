#ifndef _OSGANIMATIONATTACHMENTFIELDS_H_
#define _OSGANIMATIONATTACHMENTFIELDS_H_

#include "OSGZeOpenSGExtDef.h"
#include <OpenSG/OSGAttachmentFields.h>
#include <OpenSG/OSGMField.h>
#include <OpenSG/OSGSField.h>

namespace osg {

class AnimationAttachment;
typedef FCPtr<AttachmentPtr, AnimationAttachment> AnimationAttachmentPtr;

OSG_DECL_FC_PTR_FIELD_TRAITS(AnimationAttachmentPtr)

typedef SField<AnimationAttachmentPtr> SFAnimationAttachmentPtr;
typedef MField<AnimationAttachmentPtr> MFAnimationAttachmentPtr;

} // namespace osg

#endif
