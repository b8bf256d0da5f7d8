#ifndef _OSGMFNODEPTR_H_
#define _OSGMFNODEPTR_H_

#include "OSGNodeFields.h"

#endif
