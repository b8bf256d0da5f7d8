#include <OpenSG/OSGFieldContainerFactory.h>
#include <OpenSG/OSGFieldContainerType.h>

namespace osg {

FieldContainerFactory* FieldContainerFactory::the()
{
    static FieldContainerFactory factory;
    return &factory;
}

FieldContainerFactory::FieldContainerFactory() : _store(1) {}

FieldContainerType* FieldContainerFactory::findType(UInt32 typeId) const
{
    auto it = _typeIdMap.find(typeId);
    return it != _typeIdMap.end() ? it->second : nullptr;
}

FieldContainerType* FieldContainerFactory::findType(const Char8* name) const
{
    if (name == nullptr)
        return nullptr;
    auto it = _typeNameMap.find(name);
    return it != _typeNameMap.end() ? it->second : nullptr;
}

UInt16 FieldContainerFactory::findGroupId(const Char8* name) const
{
    if (name == nullptr)
        return 0;
    auto it = _groupIds.find(name);
    return it != _groupIds.end() ? it->second : 0;
}

UInt16 FieldContainerFactory::registerGroup(const Char8* name)
{
    if (name == nullptr)
        return 0;
    auto it = _groupIds.find(name);
    if (it != _groupIds.end())
        return it->second;
    _groupNames.push_back(name);
    UInt16 id = UInt16(_groupNames.size());
    _groupIds.emplace(name, id);
    return id;
}

void FieldContainerFactory::registerType(FieldContainerType* type)
{
    _typeIdMap[type->getId()] = type;
    _typeNameMap.emplace(type->getCName(), type);
}

UInt32 FieldContainerFactory::registerFieldContainer(const FieldContainerPtr& container)
{
    _store.push_back(container);
    return UInt32(_store.size() - 1);
}

bool FieldContainerFactory::unregisterFieldContainer(const FieldContainerPtr& container)
{
    if (container == NullFC)
        return false;
    UInt32 id = container.getFieldContainerId();
    if (id == 0 || id >= _store.size() || _store[id] != container)
        return false;
    _store[id] = NullFC;
    return true;
}

} // namespace osg
