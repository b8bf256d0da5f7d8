#ifndef _OSGPERSPECTIVECAMERA_H_
#define _OSGPERSPECTIVECAMERA_H_

#include "OSGPerspectiveCameraBase.h"

namespace osg {

// Perspective camera. "fov" is in radians.
class OSG_SYSTEMLIB_DLLMAPPING PerspectiveCamera : public PerspectiveCameraBase
{
public:
    typedef PerspectiveCameraBase Inherited;

    enum FovMode
    {
        FOV_vertical = 0,
        FOV_horizontal,
        FOV_smaller
    };

protected:
    friend class PerspectiveCameraBase;

    PerspectiveCamera();
    PerspectiveCamera(const PerspectiveCamera& source);
    ~PerspectiveCamera() override;
};

} // namespace osg

#endif
