#ifndef _OSGPERSPECTIVECAMERA_H_
#define _OSGPERSPECTIVECAMERA_H_

#include "OSGPerspectiveCameraBase.h"

namespace osg {

// Perspective camera. "fov" is in radians (getProjection treats values above Pi as degrees).
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

    // OpenGL-style projection for a viewport of width x height.
    void getProjection(Matrix& result, UInt32 width, UInt32 height);

protected:
    friend class PerspectiveCameraBase;

    PerspectiveCamera();
    PerspectiveCamera(const PerspectiveCamera& source);
    ~PerspectiveCamera() override;
};

} // namespace osg

#endif
