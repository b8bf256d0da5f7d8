#ifndef _OSGCAMERASETTINGFIELDS_H_
#define _OSGCAMERASETTINGFIELDS_H_

#include "OSGZeOpenSGExtDef.h"
#include <OpenSG/OSGMField.h>
#include <OpenSG/OSGNodeCoreFields.h>
#include <OpenSG/OSGSField.h>

namespace osg {

class CameraSetting;
typedef FCPtr<NodeCorePtr, CameraSetting> CameraSettingPtr;

OSG_DECL_FC_PTR_FIELD_TRAITS(CameraSettingPtr)

typedef SField<CameraSettingPtr> SFCameraSettingPtr;
typedef MField<CameraSettingPtr> MFCameraSettingPtr;

} // namespace osg

#endif
