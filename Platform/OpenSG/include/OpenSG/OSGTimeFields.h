#ifndef _OSGTIMEFIELDS_H_
#define _OSGTIMEFIELDS_H_

#include "OSGMFBaseTypes.h"
#include "OSGSFBaseTypes.h"

#endif
