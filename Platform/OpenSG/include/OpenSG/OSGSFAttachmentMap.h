#ifndef _OSGSFATTACHMENTMAP_H_
#define _OSGSFATTACHMENTMAP_H_

#include "OSGAttachmentMapFields.h"

#endif
