#ifndef _OSGNODEFIELDS_H_
#define _OSGNODEFIELDS_H_

#include "OSGFieldContainerPtr.h"
#include "OSGMField.h"
#include "OSGSField.h"

namespace osg {

OSG_DECL_FC_PTR_FIELD_TRAITS(NodePtr)

typedef SField<NodePtr> SFNodePtr;
typedef MField<NodePtr> MFNodePtr;

} // namespace osg

#endif
