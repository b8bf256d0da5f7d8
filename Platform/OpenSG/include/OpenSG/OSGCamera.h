#ifndef _OSGCAMERA_H_
#define _OSGCAMERA_H_

#include "OSGCameraBase.h"

namespace osg {

// Base of cameras (abstract). A camera is not part of the graph: its beacon node places it. The
// beacon is not reference counted, so it must outlive the camera's use of it.
class OSG_SYSTEMLIB_DLLMAPPING Camera : public CameraBase
{
public:
    typedef CameraBase Inherited;

protected:
    friend class CameraBase;

    Camera();
    Camera(const Camera& source);
    ~Camera() override;
};

} // namespace osg

#endif
