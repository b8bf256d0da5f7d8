#ifndef _OSGCOMPONENTTRANSFORM_H_
#define _OSGCOMPONENTTRANSFORM_H_

#include "OSGComponentTransformBase.h"

namespace osg {

// Transform built from components. changed() keeps "matrix" in step: an edit of any component
// rebuilds the matrix; an edit of only the matrix decomposes it back into translation, rotation and
// scale (centre and scale orientation are then reset, shear is lost).
class OSG_SYSTEMLIB_DLLMAPPING ComponentTransform : public ComponentTransformBase
{
public:
    typedef ComponentTransformBase Inherited;

    void changed(BitVector whichField, UInt32 origin) override;

protected:
    friend class ComponentTransformBase;

    ComponentTransform();
    ComponentTransform(const ComponentTransform& source);
    ~ComponentTransform() override;
};

} // namespace osg

#endif
