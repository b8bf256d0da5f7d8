#ifndef _OSGDATATYPE_H_
#define _OSGDATATYPE_H_

#include "OSGTypeBase.h"

namespace osg {

// The type of a value held by a field ("Vec3f", "Real32", "NodePtr", ...).
class OSG_SYSTEMLIB_DLLMAPPING DataType : public TypeBase
{
public:
    DataType(const Char8* name, const Char8* parentName) : TypeBase(name, parentName) {}
};

} // namespace osg

#endif
