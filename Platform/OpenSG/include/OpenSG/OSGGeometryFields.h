#ifndef _OSGGEOMETRYFIELDS_H_
#define _OSGGEOMETRYFIELDS_H_

#include "OSGMField.h"
#include "OSGMaterialDrawableFields.h"
#include "OSGSField.h"

namespace osg {

class Geometry;
typedef FCPtr<MaterialDrawablePtr, Geometry> GeometryPtr;

OSG_DECL_FC_PTR_FIELD_TRAITS(GeometryPtr)

typedef SField<GeometryPtr> SFGeometryPtr;
typedef MField<GeometryPtr> MFGeometryPtr;

} // namespace osg

#endif
