#ifndef _OSGTRANSFORMATTACHMENTFIELDS_H_
#define _OSGTRANSFORMATTACHMENTFIELDS_H_

#include "OSGZeOpenSGExtDef.h"
#include <OpenSG/OSGAttachmentFields.h>
#include <OpenSG/OSGMField.h>
#include <OpenSG/OSGSField.h>

namespace osg {

class TransformAttachment;
typedef FCPtr<AttachmentPtr, TransformAttachment> TransformAttachmentPtr;

OSG_DECL_FC_PTR_FIELD_TRAITS(TransformAttachmentPtr)

typedef SField<TransformAttachmentPtr> SFTransformAttachmentPtr;
typedef MField<TransformAttachmentPtr> MFTransformAttachmentPtr;

} // namespace osg

#endif
