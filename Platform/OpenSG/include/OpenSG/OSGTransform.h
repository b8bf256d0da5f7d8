#ifndef _OSGTRANSFORM_H_
#define _OSGTRANSFORM_H_

#include "OSGTransformBase.h"

namespace osg {

// Core that transforms its node's subtree by "matrix".
class OSG_SYSTEMLIB_DLLMAPPING Transform : public TransformBase
{
public:
    typedef TransformBase Inherited;

    void changed(BitVector whichField, UInt32 origin) override;

protected:
    friend class TransformBase;

    Transform();
    Transform(const Transform& source);
    ~Transform() override;
};

} // namespace osg

#endif
