#include <OpenSG/OSGTypeBase.h>
#include <OpenSG/OSGTypeFactory.h>

namespace osg {

TypeBase::TypeBase(const Char8* name, const Char8* parentName) : _id(0), _name(name), _parentName(parentName)
{
    _id = TypeFactory::the()->registerType(this);
}

// Types live as long as the process; the factory is not told, nobody asks after exit.
TypeBase::~TypeBase() = default;

bool TypeBase::isDerivedFrom(const TypeBase&) const
{
    return false;
}

TypeFactory* TypeFactory::the()
{
    static TypeFactory factory;
    return &factory;
}

TypeFactory::TypeFactory() : _types(1, nullptr) {}

UInt32 TypeFactory::registerType(TypeBase* type)
{
    UInt32 id = UInt32(_types.size());
    _types.push_back(type);
    // The first type of a name wins; a field type and a data type never share one.
    _byName.emplace(type->getCName(), type);
    return id;
}

TypeBase* TypeFactory::findType(UInt32 id) const
{
    return id < _types.size() ? _types[id] : nullptr;
}

TypeBase* TypeFactory::findType(const Char8* name) const
{
    if (name == nullptr)
        return nullptr;
    auto it = _byName.find(name);
    return it != _byName.end() ? it->second : nullptr;
}

} // namespace osg
