#ifndef _OSGCOLOR3FFIELDS_H_
#define _OSGCOLOR3FFIELDS_H_

#include "OSGMFBaseTypes.h"
#include "OSGSFBaseTypes.h"

#endif
