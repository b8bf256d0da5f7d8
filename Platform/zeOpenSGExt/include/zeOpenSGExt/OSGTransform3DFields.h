#ifndef _OSGTRANSFORM3DFIELDS_H_
#define _OSGTRANSFORM3DFIELDS_H_

#include "OSGZeOpenSGExtDef.h"
#include <OpenSG/OSGMField.h>
#include <OpenSG/OSGSField.h>
#include <OpenSG/OSGTransformFields.h>

namespace osg {

class Transform3D;
typedef FCPtr<TransformPtr, Transform3D> Transform3DPtr;

OSG_DECL_FC_PTR_FIELD_TRAITS(Transform3DPtr)

typedef SField<Transform3DPtr> SFTransform3DPtr;
typedef MField<Transform3DPtr> MFTransform3DPtr;

} // namespace osg

#endif
