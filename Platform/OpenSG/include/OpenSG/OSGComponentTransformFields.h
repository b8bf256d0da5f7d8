#ifndef _OSGCOMPONENTTRANSFORMFIELDS_H_
#define _OSGCOMPONENTTRANSFORMFIELDS_H_

#include "OSGMField.h"
#include "OSGSField.h"
#include "OSGTransformFields.h"

namespace osg {

class ComponentTransform;
typedef FCPtr<TransformPtr, ComponentTransform> ComponentTransformPtr;

OSG_DECL_FC_PTR_FIELD_TRAITS(ComponentTransformPtr)

typedef SField<ComponentTransformPtr> SFComponentTransformPtr;
typedef MField<ComponentTransformPtr> MFComponentTransformPtr;

} // namespace osg

#endif
