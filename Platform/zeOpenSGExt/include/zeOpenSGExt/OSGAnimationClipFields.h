#ifndef _OSGANIMATIONCLIPFIELDS_H_
#define _OSGANIMATIONCLIPFIELDS_H_

#include "OSGZeOpenSGExtDef.h"
#include <OpenSG/OSGFieldContainerFields.h>
#include <OpenSG/OSGMField.h>
#include <OpenSG/OSGSField.h>

namespace osg {

class AnimationClip;
typedef FCPtr<FieldContainerPtr, AnimationClip> AnimationClipPtr;

OSG_DECL_FC_PTR_FIELD_TRAITS(AnimationClipPtr)

typedef SField<AnimationClipPtr> SFAnimationClipPtr;
typedef MField<AnimationClipPtr> MFAnimationClipPtr;

} // namespace osg

#endif
