#ifndef _OSGMFBASETYPES_H_
#define _OSGMFBASETYPES_H_

#include "OSGMField.h"

namespace osg {

typedef MField<std::string> MFString;
typedef MField<Time, 1> MFTime;
typedef MField<Color3f> MFColor3f;
typedef MField<Color4f> MFColor4f;
typedef MField<DynamicVolume> MFDynamicVolume;
typedef MField<UInt32, 1> MFGLenum;

} // namespace osg

#endif
