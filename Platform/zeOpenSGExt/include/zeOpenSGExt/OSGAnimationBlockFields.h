#ifndef _OSGANIMATIONBLOCKFIELDS_H_
#define _OSGANIMATIONBLOCKFIELDS_H_

#include "OSGZeOpenSGExtDef.h"
#include <OpenSG/OSGFieldContainerFields.h>
#include <OpenSG/OSGMField.h>
#include <OpenSG/OSGSField.h>

namespace osg {

class AnimationBlock;
typedef FCPtr<FieldContainerPtr, AnimationBlock> AnimationBlockPtr;

OSG_DECL_FC_PTR_FIELD_TRAITS(AnimationBlockPtr)

typedef SField<AnimationBlockPtr> SFAnimationBlockPtr;
typedef MField<AnimationBlockPtr> MFAnimationBlockPtr;

} // namespace osg

#endif
