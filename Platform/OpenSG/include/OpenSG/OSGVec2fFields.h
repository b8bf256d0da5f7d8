#ifndef _OSGVEC2FFIELDS_H_
#define _OSGVEC2FFIELDS_H_

#include "OSGMFVecTypes.h"
#include "OSGSFVecTypes.h"

#endif
