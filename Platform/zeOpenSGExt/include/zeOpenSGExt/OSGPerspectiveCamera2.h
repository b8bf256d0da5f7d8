#ifndef _OSGPERSPECTIVECAMERA2_H_
#define _OSGPERSPECTIVECAMERA2_H_

#include "OSGPerspectiveCamera2Base.h"

namespace osg {

// Perspective camera of the host with an exposure: shutterSpeed s means an exposure of 1/s seconds.
class OSG_ZEOPENSGEXT_DLLMAPPING PerspectiveCamera2 : public PerspectiveCamera2Base
{
public:
    typedef PerspectiveCamera2Base Inherited;

protected:
    friend class PerspectiveCamera2Base;

    PerspectiveCamera2();
    PerspectiveCamera2(const PerspectiveCamera2& source);
    ~PerspectiveCamera2() override;
};

} // namespace osg

#endif
