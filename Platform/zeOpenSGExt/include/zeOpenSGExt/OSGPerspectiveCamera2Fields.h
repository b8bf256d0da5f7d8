#ifndef _OSGPERSPECTIVECAMERA2FIELDS_H_
#define _OSGPERSPECTIVECAMERA2FIELDS_H_

#include "OSGZeOpenSGExtDef.h"
#include <OpenSG/OSGMField.h>
#include <OpenSG/OSGPerspectiveCameraFields.h>
#include <OpenSG/OSGSField.h>

namespace osg {

class PerspectiveCamera2;
typedef FCPtr<PerspectiveCameraPtr, PerspectiveCamera2> PerspectiveCamera2Ptr;

OSG_DECL_FC_PTR_FIELD_TRAITS(PerspectiveCamera2Ptr)

typedef SField<PerspectiveCamera2Ptr> SFPerspectiveCamera2Ptr;
typedef MField<PerspectiveCamera2Ptr> MFPerspectiveCamera2Ptr;

} // namespace osg

#endif
