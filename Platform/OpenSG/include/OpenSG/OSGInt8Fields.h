#ifndef _OSGINT8FIELDS_H_
#define _OSGINT8FIELDS_H_

#include "OSGMFSysTypes.h"
#include "OSGSFSysTypes.h"

#endif
