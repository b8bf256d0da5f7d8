#ifndef _OSGANIMATIONTRACKFIELDS_H_
#define _OSGANIMATIONTRACKFIELDS_H_

#include "OSGZeOpenSGExtDef.h"
#include <OpenSG/OSGFieldContainerFields.h>
#include <OpenSG/OSGMField.h>
#include <OpenSG/OSGSField.h>

namespace osg {

class AnimationTrack;
typedef FCPtr<FieldContainerPtr, AnimationTrack> AnimationTrackPtr;

OSG_DECL_FC_PTR_FIELD_TRAITS(AnimationTrackPtr)

typedef SField<AnimationTrackPtr> SFAnimationTrackPtr;
typedef MField<AnimationTrackPtr> MFAnimationTrackPtr;

} // namespace osg

#endif
