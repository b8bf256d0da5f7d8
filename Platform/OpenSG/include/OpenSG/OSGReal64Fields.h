#ifndef _OSGREAL64FIELDS_H_
#define _OSGREAL64FIELDS_H_

#include "OSGMFSysTypes.h"
#include "OSGSFSysTypes.h"

#endif
