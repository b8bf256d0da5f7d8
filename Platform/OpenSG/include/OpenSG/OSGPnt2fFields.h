#ifndef _OSGPNT2FFIELDS_H_
#define _OSGPNT2FFIELDS_H_

#include "OSGMFVecTypes.h"
#include "OSGSFVecTypes.h"

#endif
