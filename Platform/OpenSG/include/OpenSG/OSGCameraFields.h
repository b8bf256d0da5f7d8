#ifndef _OSGCAMERAFIELDS_H_
#define _OSGCAMERAFIELDS_H_

#include "OSGFieldContainerPtr.h"
#include "OSGMField.h"
#include "OSGSField.h"

namespace osg {

class Camera;
typedef FCPtr<AttachmentContainerPtr, Camera> CameraPtr;

OSG_DECL_FC_PTR_FIELD_TRAITS(CameraPtr)

typedef SField<CameraPtr> SFCameraPtr;
typedef MField<CameraPtr> MFCameraPtr;

} // namespace osg

#endif
