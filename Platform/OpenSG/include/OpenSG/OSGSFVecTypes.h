#ifndef _OSGSFVECTYPES_H_
#define _OSGSFVECTYPES_H_

#include "OSGSField.h"

namespace osg {

typedef SField<Vec2f> SFVec2f;
typedef SField<Vec3f> SFVec3f;
typedef SField<Vec4f> SFVec4f;
typedef SField<Pnt2f> SFPnt2f;
typedef SField<Pnt3f> SFPnt3f;
typedef SField<Pnt4f> SFPnt4f;

} // namespace osg

#endif
