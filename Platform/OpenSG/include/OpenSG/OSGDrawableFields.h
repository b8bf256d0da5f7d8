#ifndef _OSGDRAWABLEFIELDS_H_
#define _OSGDRAWABLEFIELDS_H_

#include "OSGMField.h"
#include "OSGNodeCoreFields.h"
#include "OSGSField.h"

namespace osg {

class Drawable;
typedef FCPtr<NodeCorePtr, Drawable> DrawablePtr;

OSG_DECL_FC_PTR_FIELD_TRAITS(DrawablePtr)

typedef SField<DrawablePtr> SFDrawablePtr;
typedef MField<DrawablePtr> MFDrawablePtr;

} // namespace osg

#endif
