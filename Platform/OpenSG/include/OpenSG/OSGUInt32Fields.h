#ifndef _OSGUINT32FIELDS_H_
#define _OSGUINT32FIELDS_H_

#include "OSGMFSysTypes.h"
#include "OSGSFSysTypes.h"

#endif
