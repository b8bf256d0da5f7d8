#ifndef _OSGMATERIALGROUPFIELDS_H_
#define _OSGMATERIALGROUPFIELDS_H_

#include "OSGGroupFields.h"
#include "OSGMField.h"
#include "OSGSField.h"

namespace osg {

class MaterialGroup;
typedef FCPtr<GroupPtr, MaterialGroup> MaterialGroupPtr;

OSG_DECL_FC_PTR_FIELD_TRAITS(MaterialGroupPtr)

typedef SField<MaterialGroupPtr> SFMaterialGroupPtr;
typedef MField<MaterialGroupPtr> MFMaterialGroupPtr;

} // namespace osg

#endif
