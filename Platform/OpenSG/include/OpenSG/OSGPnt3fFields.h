#ifndef _OSGPNT3FFIELDS_H_
#define _OSGPNT3FFIELDS_H_

#include "OSGMFVecTypes.h"
#include "OSGSFVecTypes.h"

#endif
