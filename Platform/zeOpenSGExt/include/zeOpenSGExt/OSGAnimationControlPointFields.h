#ifndef _OSGANIMATIONCONTROLPOINTFIELDS_H_
#define _OSGANIMATIONCONTROLPOINTFIELDS_H_

#include "OSGZeOpenSGExtDef.h"
#include <OpenSG/OSGFieldContainerFields.h>
#include <OpenSG/OSGMField.h>
#include <OpenSG/OSGSField.h>

namespace osg {

class AnimationControlPoint;
typedef FCPtr<FieldContainerPtr, AnimationControlPoint> AnimationControlPointPtr;

OSG_DECL_FC_PTR_FIELD_TRAITS(AnimationControlPointPtr)

typedef SField<AnimationControlPointPtr> SFAnimationControlPointPtr;
typedef MField<AnimationControlPointPtr> MFAnimationControlPointPtr;

} // namespace osg

#endif
