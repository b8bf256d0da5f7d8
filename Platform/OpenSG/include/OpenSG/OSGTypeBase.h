#ifndef _OSGTYPEBASE_H_
#define _OSGTYPEBASE_H_

#include "OSGBaseTypes.h"
#include "OSGIDString.h"

namespace osg {

// Common base of data types, field types and field container types. Every type receives a
// process-wide id from the TypeFactory when it is constructed; the ids are unique and non-zero,
// their values depend on the order in which types come into existence.
class OSG_SYSTEMLIB_DLLMAPPING TypeBase
{
public:
    TypeBase(const Char8* name, const Char8* parentName);
    TypeBase(const TypeBase&) = delete;
    TypeBase& operator=(const TypeBase&) = delete;
    virtual ~TypeBase();

    UInt32 getId() const { return _id; }
    const IDString& getName() const { return _name; }
    const Char8* getCName() const { return _name.str(); }
    const IDString& getParentName() const { return _parentName; }
    const Char8* getCParentName() const { return _parentName.str(); }

    // Plain types know no parents; FieldContainerType overloads this for its own kind.
    virtual bool isDerivedFrom(const TypeBase& other) const;

    bool operator==(const TypeBase& other) const { return _id == other._id; }
    bool operator!=(const TypeBase& other) const { return _id != other._id; }

private:
    UInt32 _id;
    IDString _name;
    IDString _parentName;
};

} // namespace osg

#endif
