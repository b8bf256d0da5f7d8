#ifndef _OSGUINT64FIELDS_H_
#define _OSGUINT64FIELDS_H_

#include "OSGMFSysTypes.h"
#include "OSGSFSysTypes.h"

#endif
