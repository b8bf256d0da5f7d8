#ifndef _OSGPRIMARY_H_
#define _OSGPRIMARY_H_

// The core of the container system. Each of the headers below ends by including this one, so
// including any of them gives all of them.
#include "OSGFieldContainer.h"
#include "OSGFieldContainerFactory.h"
#include "OSGFieldContainerPtr.h"
#include "OSGFieldContainerType.h"
#include "OSGFieldDescription.h"

#endif
