#ifndef _OSGBASEFIELDS_H_
#define _OSGBASEFIELDS_H_

// Every field type of the basic value types, single and multi.
#include "OSGMFBaseTypes.h"
#include "OSGMFMathTypes.h"
#include "OSGMFSysTypes.h"
#include "OSGMFVecTypes.h"
#include "OSGSFBaseTypes.h"
#include "OSGSFMathTypes.h"
#include "OSGSFSysTypes.h"
#include "OSGSFVecTypes.h"

#endif
