#ifndef _OSGMATERIALDRAWABLEFIELDS_H_
#define _OSGMATERIALDRAWABLEFIELDS_H_

#include "OSGDrawableFields.h"
#include "OSGMField.h"
#include "OSGSField.h"

namespace osg {

class MaterialDrawable;
typedef FCPtr<DrawablePtr, MaterialDrawable> MaterialDrawablePtr;

OSG_DECL_FC_PTR_FIELD_TRAITS(MaterialDrawablePtr)

typedef SField<MaterialDrawablePtr> SFMaterialDrawablePtr;
typedef MField<MaterialDrawablePtr> MFMaterialDrawablePtr;

} // namespace osg

#endif
