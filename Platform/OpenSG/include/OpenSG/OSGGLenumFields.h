#ifndef _OSGGLENUMFIELDS_H_
#define _OSGGLENUMFIELDS_H_

#include "OSGMFBaseTypes.h"
#include "OSGSFBaseTypes.h"

#endif
