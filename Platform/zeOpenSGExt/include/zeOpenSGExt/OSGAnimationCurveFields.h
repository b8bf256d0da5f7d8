#ifndef _OSGANIMATIONCURVEFIELDS_H_
#define _OSGANIMATIONCURVEFIELDS_H_

#include "OSGZeOpenSGExtDef.h"
#include <OpenSG/OSGFieldContainerFields.h>
#include <OpenSG/OSGMField.h>
#include <OpenSG/OSGSField.h>

namespace osg {

class AnimationCurve;
typedef FCPtr<FieldContainerPtr, AnimationCurve> AnimationCurvePtr;

OSG_DECL_FC_PTR_FIELD_TRAITS(AnimationCurvePtr)

typedef SField<AnimationCurvePtr> SFAnimationCurvePtr;
typedef MField<AnimationCurvePtr> MFAnimationCurvePtr;

} // namespace osg

#endif
