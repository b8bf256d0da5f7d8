#ifndef _OSGFIELDCONTAINERFIELDS_H_
#define _OSGFIELDCONTAINERFIELDS_H_

#include "OSGFieldContainerPtr.h"
#include "OSGMField.h"
#include "OSGSField.h"

namespace osg {

OSG_DECL_FC_PTR_FIELD_TRAITS(FieldContainerPtr)

typedef SField<FieldContainerPtr> SFFieldContainerPtr;
typedef MField<FieldContainerPtr> MFFieldContainerPtr;

} // namespace osg

#endif
