#ifndef _OSGDYNAMICVOLUMEFIELDS_H_
#define _OSGDYNAMICVOLUMEFIELDS_H_

#include "OSGMFBaseTypes.h"
#include "OSGSFBaseTypes.h"

#endif
