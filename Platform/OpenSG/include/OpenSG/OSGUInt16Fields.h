#ifndef _OSGUINT16FIELDS_H_
#define _OSGUINT16FIELDS_H_

#include "OSGMFSysTypes.h"
#include "OSGSFSysTypes.h"

#endif
