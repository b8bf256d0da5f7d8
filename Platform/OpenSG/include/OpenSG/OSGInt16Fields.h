#ifndef _OSGINT16FIELDS_H_
#define _OSGINT16FIELDS_H_

#include "OSGMFSysTypes.h"
#include "OSGSFSysTypes.h"

#endif
