#ifndef _OSGVEC4FFIELDS_H_
#define _OSGVEC4FFIELDS_H_

#include "OSGMFVecTypes.h"
#include "OSGSFVecTypes.h"

#endif
