#ifndef _OSGATTACHMENTFIELDS_H_
#define _OSGATTACHMENTFIELDS_H_

#include "OSGFieldContainerPtr.h"
#include "OSGMField.h"
#include "OSGSField.h"

namespace osg {

OSG_DECL_FC_PTR_FIELD_TRAITS(AttachmentPtr)

typedef SField<AttachmentPtr> SFAttachmentPtr;
typedef MField<AttachmentPtr> MFAttachmentPtr;

} // namespace osg

#endif
