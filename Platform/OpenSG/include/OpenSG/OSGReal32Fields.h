#ifndef _OSGREAL32FIELDS_H_
#define _OSGREAL32FIELDS_H_

#include "OSGMFSysTypes.h"
#include "OSGSFSysTypes.h"

#endif
