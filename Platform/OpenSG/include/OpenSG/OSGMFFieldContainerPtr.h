#ifndef _OSGMFFIELDCONTAINERPTR_H_
#define _OSGMFFIELDCONTAINERPTR_H_

#include "OSGFieldContainerFields.h"

#endif
