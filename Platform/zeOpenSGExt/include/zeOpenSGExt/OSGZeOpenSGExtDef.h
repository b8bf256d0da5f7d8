#ifndef _OSGZEOPENSGEXTDEF_H_
#define _OSGZEOPENSGEXTDEF_H_

// The host's scene extension types, written like every OpenSG container type: generated-style
// XxxBase classes hold the fields, Xxx adds the behaviour.
#include <OpenSG/OSGConfig.h>

#define OSG_ZEOPENSGEXT_DLLMAPPING __attribute__((visibility("default")))

#endif
