#ifndef _OSGSWITCHFIELDS_H_
#define _OSGSWITCHFIELDS_H_

#include "OSGGroupFields.h"
#include "OSGMField.h"
#include "OSGSField.h"

namespace osg {

class Switch;
typedef FCPtr<GroupPtr, Switch> SwitchPtr;

OSG_DECL_FC_PTR_FIELD_TRAITS(SwitchPtr)

typedef SField<SwitchPtr> SFSwitchPtr;
typedef MField<SwitchPtr> MFSwitchPtr;

} // namespace osg

#endif
