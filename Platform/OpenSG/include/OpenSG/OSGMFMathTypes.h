#ifndef _OSGMFMATHTYPES_H_
#define _OSGMFMATHTYPES_H_

#include "OSGMField.h"

namespace osg {

typedef MField<Matrix> MFMatrix;
typedef MField<Quaternion> MFQuaternion;

} // namespace osg

#endif
