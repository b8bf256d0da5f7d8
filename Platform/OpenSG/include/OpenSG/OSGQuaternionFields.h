#ifndef _OSGQUATERNIONFIELDS_H_
#define _OSGQUATERNIONFIELDS_H_

#include "OSGMFMathTypes.h"
#include "OSGSFMathTypes.h"

#endif
