#ifndef _OSGNODEPTR_H_
#define _OSGNODEPTR_H_

#include "OSGNode.h"

#endif
