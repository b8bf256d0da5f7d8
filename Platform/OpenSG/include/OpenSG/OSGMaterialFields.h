#ifndef _OSGMATERIALFIELDS_H_
#define _OSGMATERIALFIELDS_H_

#include "OSGFieldContainerPtr.h"
#include "OSGMField.h"
#include "OSGSField.h"

namespace osg {

class Material;
typedef FCPtr<AttachmentContainerPtr, Material> MaterialPtr;

OSG_DECL_FC_PTR_FIELD_TRAITS(MaterialPtr)

typedef SField<MaterialPtr> SFMaterialPtr;
typedef MField<MaterialPtr> MFMaterialPtr;

} // namespace osg

#endif
