#ifndef _OSGNODECOREFIELDS_H_
#define _OSGNODECOREFIELDS_H_

#include "OSGFieldContainerPtr.h"
#include "OSGMField.h"
#include "OSGSField.h"

namespace osg {

OSG_DECL_FC_PTR_FIELD_TRAITS(NodeCorePtr)

typedef SField<NodeCorePtr> SFNodeCorePtr;
typedef MField<NodeCorePtr> MFNodeCorePtr;

} // namespace osg

#endif
