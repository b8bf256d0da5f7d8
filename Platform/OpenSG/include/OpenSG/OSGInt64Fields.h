#ifndef _OSGINT64FIELDS_H_
#define _OSGINT64FIELDS_H_

#include "OSGMFSysTypes.h"
#include "OSGSFSysTypes.h"

#endif
