#ifndef _OSGMFVECTYPES_H_
#define _OSGMFVECTYPES_H_

#include "OSGMField.h"

namespace osg {

typedef MField<Vec2f> MFVec2f;
typedef MField<Vec3f> MFVec3f;
typedef MField<Vec4f> MFVec4f;
typedef MField<Pnt2f> MFPnt2f;
typedef MField<Pnt3f> MFPnt3f;
typedef MField<Pnt4f> MFPnt4f;

} // namespace osg

#endif
