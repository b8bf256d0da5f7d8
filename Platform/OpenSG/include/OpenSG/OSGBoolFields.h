#ifndef _OSGBOOLFIELDS_H_
#define _OSGBOOLFIELDS_H_

#include "OSGMFSysTypes.h"
#include "OSGSFSysTypes.h"

#endif
