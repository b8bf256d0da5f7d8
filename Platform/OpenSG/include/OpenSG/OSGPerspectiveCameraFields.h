#ifndef _OSGPERSPECTIVECAMERAFIELDS_H_
#define _OSGPERSPECTIVECAMERAFIELDS_H_

#include "OSGCameraFields.h"
#include "OSGMField.h"
#include "OSGSField.h"

namespace osg {

class PerspectiveCamera;
typedef FCPtr<CameraPtr, PerspectiveCamera> PerspectiveCameraPtr;

OSG_DECL_FC_PTR_FIELD_TRAITS(PerspectiveCameraPtr)

typedef SField<PerspectiveCameraPtr> SFPerspectiveCameraPtr;
typedef MField<PerspectiveCameraPtr> MFPerspectiveCameraPtr;

} // namespace osg

#endif
