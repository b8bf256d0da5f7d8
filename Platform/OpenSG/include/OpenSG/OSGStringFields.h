#ifndef _OSGSTRINGFIELDS_H_
#define _OSGSTRINGFIELDS_H_

#include "OSGMFBaseTypes.h"
#include "OSGSFBaseTypes.h"

#endif
