#ifndef _OSGSFNODEPTR_H_
#define _OSGSFNODEPTR_H_

#include "OSGNodeFields.h"

#endif
