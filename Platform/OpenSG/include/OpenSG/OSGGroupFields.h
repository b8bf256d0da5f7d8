#ifndef _OSGGROUPFIELDS_H_
#define _OSGGROUPFIELDS_H_

#include "OSGMField.h"
#include "OSGNodeCoreFields.h"
#include "OSGSField.h"

namespace osg {

class Group;
typedef FCPtr<NodeCorePtr, Group> GroupPtr;

OSG_DECL_FC_PTR_FIELD_TRAITS(GroupPtr)

typedef SField<GroupPtr> SFGroupPtr;
typedef MField<GroupPtr> MFGroupPtr;

} // namespace osg

#endif
