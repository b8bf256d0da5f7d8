#ifndef _OSGVEC3FFIELDS_H_
#define _OSGVEC3FFIELDS_H_

#include "OSGMFVecTypes.h"
#include "OSGSFVecTypes.h"

#endif
