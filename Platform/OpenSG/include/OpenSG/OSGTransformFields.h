#ifndef _OSGTRANSFORMFIELDS_H_
#define _OSGTRANSFORMFIELDS_H_

#include "OSGGroupFields.h"
#include "OSGMField.h"
#include "OSGSField.h"

namespace osg {

class Transform;
typedef FCPtr<GroupPtr, Transform> TransformPtr;

OSG_DECL_FC_PTR_FIELD_TRAITS(TransformPtr)

typedef SField<TransformPtr> SFTransformPtr;
typedef MField<TransformPtr> MFTransformPtr;

} // namespace osg

#endif
