#ifndef _OSGANIMATIONBLOCK_H_
#define _OSGANIMATIONBLOCK_H_

#include "OSGAnimationBlockBase.h"

namespace osg {

// Block of the older animation format: curves over [start, end] for one animated "node" (not
// reference counted: the block hangs below the node); the curves are referenced.
class OSG_ZEOPENSGEXT_DLLMAPPING AnimationBlock : public AnimationBlockBase
{
public:
    typedef AnimationBlockBase Inherited;

protected:
    friend class AnimationBlockBase;

    AnimationBlock();
    AnimationBlock(const AnimationBlock& source);
    ~AnimationBlock() override;
};

} // namespace osg

#endif
