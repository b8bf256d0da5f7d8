#ifndef _OSGTYPEFACTORY_H_
#define _OSGTYPEFACTORY_H_

#include "OSGTypeBase.h"

#include <map>
#include <string>
#include <vector>

namespace osg {

// Registry of every type, shared by data, field and field container types.
class OSG_SYSTEMLIB_DLLMAPPING TypeFactory
{
public:
    static TypeFactory* the();

    // Returns the new type's id, starting at 1.
    UInt32 registerType(TypeBase* type);

    TypeBase* findType(UInt32 id) const;
    TypeBase* findType(const Char8* name) const;
    UInt32 getNumTypes() const { return UInt32(_types.size()) - 1; }

private:
    TypeFactory();

    std::vector<TypeBase*> _types; // index = id, slot 0 unused
    std::map<std::string, TypeBase*> _byName;
};

} // namespace osg

#endif
