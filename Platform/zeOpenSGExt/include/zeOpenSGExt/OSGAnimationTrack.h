#ifndef _OSGANIMATIONTRACK_H_
#define _OSGANIMATIONTRACK_H_

#include "OSGAnimationTrackBase.h"

namespace osg {

// Track of the older animation format: blocks, sequence entries (blocks used as sequences) and
// nested clips, all referenced.
class OSG_ZEOPENSGEXT_DLLMAPPING AnimationTrack : public AnimationTrackBase
{
public:
    typedef AnimationTrackBase Inherited;

protected:
    friend class AnimationTrackBase;

    AnimationTrack();
    AnimationTrack(const AnimationTrack& source);
    ~AnimationTrack() override;
};

} // namespace osg

#endif
