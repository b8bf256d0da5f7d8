#ifndef _OSGCAMERASETTING_H_
#define _OSGCAMERASETTING_H_

#include "OSGCameraSettingBase.h"

namespace osg {

// Camera settings of the host, kept as a core on the camera's node: eye point "from", target "at",
// "up" vector, roll (degrees), lens fStop and focalLength (mm), eye height, distance, turntable
// angle (degrees); isViewpoint marks the settings that drive the main view; fieldOfView is the
// vertical opening angle of the lens in radians (default pi/4).
class OSG_ZEOPENSGEXT_DLLMAPPING CameraSetting : public CameraSettingBase
{
public:
    typedef CameraSettingBase Inherited;

protected:
    friend class CameraSettingBase;

    CameraSetting();
    CameraSetting(const CameraSetting& source);
    ~CameraSetting() override;
};

} // namespace osg

#endif
