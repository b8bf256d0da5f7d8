#ifndef _OSGMATRIXFIELDS_H_
#define _OSGMATRIXFIELDS_H_

#include "OSGMFMathTypes.h"
#include "OSGSFMathTypes.h"

#endif
