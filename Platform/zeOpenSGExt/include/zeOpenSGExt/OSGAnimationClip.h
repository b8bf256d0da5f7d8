#ifndef _OSGANIMATIONCLIP_H_
#define _OSGANIMATIONCLIP_H_

#include "OSGAnimationClipBase.h"

namespace osg {

// Clip of the older animation format: blocks, nested clips and tracks (all referenced) and flags.
class OSG_ZEOPENSGEXT_DLLMAPPING AnimationClip : public AnimationClipBase
{
public:
    typedef AnimationClipBase Inherited;

protected:
    friend class AnimationClipBase;

    AnimationClip();
    AnimationClip(const AnimationClip& source);
    ~AnimationClip() override;
};

} // namespace osg

#endif
