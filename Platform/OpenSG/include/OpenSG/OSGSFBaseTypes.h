#ifndef _OSGSFBASETYPES_H_
#define _OSGSFBASETYPES_H_

#include "OSGSField.h"

namespace osg {

typedef SField<std::string> SFString;
typedef SField<Time, 1> SFTime;
typedef SField<Color3f> SFColor3f;
typedef SField<Color4f> SFColor4f;
typedef SField<DynamicVolume> SFDynamicVolume;
// GLenum values are held as UInt32 and printed as numbers.
typedef SField<UInt32, 1> SFGLenum;

} // namespace osg

#endif
