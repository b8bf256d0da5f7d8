#ifndef _OSGINT32FIELDS_H_
#define _OSGINT32FIELDS_H_

#include "OSGMFSysTypes.h"
#include "OSGSFSysTypes.h"

#endif
