#ifndef _OSGPNT4FFIELDS_H_
#define _OSGPNT4FFIELDS_H_

#include "OSGMFVecTypes.h"
#include "OSGSFVecTypes.h"

#endif
