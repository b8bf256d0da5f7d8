#ifndef _OSGUINT8FIELDS_H_
#define _OSGUINT8FIELDS_H_

#include "OSGMFSysTypes.h"
#include "OSGSFSysTypes.h"

#endif
