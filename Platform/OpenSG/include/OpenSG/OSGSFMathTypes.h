#ifndef _OSGSFMATHTYPES_H_
#define _OSGSFMATHTYPES_H_

#include "OSGSField.h"

namespace osg {

typedef SField<Matrix> SFMatrix;
typedef SField<Quaternion> SFQuaternion;

} // namespace osg

#endif
