#ifndef _OSGFIELDCONTAINERFACTORY_H_
#define _OSGFIELDCONTAINERFACTORY_H_

#include "OSGBaseTypes.h"
#include "OSGFieldContainerPtr.h"

#include <map>
#include <string>
#include <vector>

namespace osg {

class FieldContainerType;

// Knows every container type and every live container. Container ids start at 1 and are handed
// out in creation order and never reused; the store is indexed by id, so getContainer is O(1).
class OSG_SYSTEMLIB_DLLMAPPING FieldContainerFactory
{
public:
    typedef std::map<UInt32, FieldContainerType*> TypeIdMap;
    typedef TypeIdMap::const_iterator TypeMapIterator;

    static FieldContainerFactory* the();

    // The live container with that id, or NullFC (unknown id, or destroyed).
    FieldContainerPtr getContainer(UInt32 containerId) const
    {
        return containerId < _store.size() ? _store[containerId] : FieldContainerPtr();
    }
    // Single process: the mapped container is the container.
    FieldContainerPtr getMappedContainer(UInt32 containerId) const { return getContainer(containerId); }
    const std::vector<FieldContainerPtr>* getFieldContainerStore() const { return &_store; }

    FieldContainerType* findType(UInt32 typeId) const;
    FieldContainerType* findType(const Char8* name) const;
    UInt32 getNumTypes() const { return UInt32(_typeIdMap.size()); }
    TypeMapIterator beginTypes() const { return _typeIdMap.begin(); }
    TypeMapIterator endTypes() const { return _typeIdMap.end(); }

    // 0 when unknown.
    UInt16 findGroupId(const Char8* name) const;

    // Used by the types and containers themselves.
    UInt16 registerGroup(const Char8* name);
    void registerType(FieldContainerType* type);
    UInt32 registerFieldContainer(const FieldContainerPtr& container);
    bool unregisterFieldContainer(const FieldContainerPtr& container);

private:
    FieldContainerFactory();

    std::vector<FieldContainerPtr> _store; // index = container id, slot 0 stays null
    TypeIdMap _typeIdMap;
    std::map<std::string, FieldContainerType*> _typeNameMap;
    std::vector<std::string> _groupNames; // group id - 1
    std::map<std::string, UInt16> _groupIds;
};

} // namespace osg

#include "OSGPrimary.h"

#endif
