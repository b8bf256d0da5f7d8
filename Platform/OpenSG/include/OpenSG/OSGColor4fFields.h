#ifndef _OSGCOLOR4FFIELDS_H_
#define _OSGCOLOR4FFIELDS_H_

#include "OSGMFBaseTypes.h"
#include "OSGSFBaseTypes.h"

#endif
