#ifndef _OSGSTATECHUNKFIELDS_H_
#define _OSGSTATECHUNKFIELDS_H_

#include "OSGAttachmentFields.h"
#include "OSGMField.h"
#include "OSGSField.h"

namespace osg {

class StateChunk;
typedef FCPtr<AttachmentPtr, StateChunk> StateChunkPtr;

OSG_DECL_FC_PTR_FIELD_TRAITS(StateChunkPtr)

typedef SField<StateChunkPtr> SFStateChunkPtr;
typedef MField<StateChunkPtr> MFStateChunkPtr;

} // namespace osg

#endif
