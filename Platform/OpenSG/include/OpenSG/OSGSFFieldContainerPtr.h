#ifndef _OSGSFFIELDCONTAINERPTR_H_
#define _OSGSFFIELDCONTAINERPTR_H_

#include "OSGFieldContainerFields.h"

#endif
