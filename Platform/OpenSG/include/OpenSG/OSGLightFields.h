#ifndef _OSGLIGHTFIELDS_H_
#define _OSGLIGHTFIELDS_H_

#include "OSGGroupFields.h"
#include "OSGMField.h"
#include "OSGSField.h"

namespace osg {

class Light;
typedef FCPtr<GroupPtr, Light> LightPtr;

OSG_DECL_FC_PTR_FIELD_TRAITS(LightPtr)

typedef SField<LightPtr> SFLightPtr;
typedef MField<LightPtr> MFLightPtr;

} // namespace osg

#endif
