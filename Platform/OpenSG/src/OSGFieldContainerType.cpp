#include <OpenSG/OSGAttachment.h>
#include <OpenSG/OSGFieldContainerFactory.h>
#include <OpenSG/OSGFieldContainerType.h>
#include <OpenSG/OSGNode.h>
#include <OpenSG/OSGNodeCore.h>

#include <algorithm>
#include <cstring>

namespace osg {

FieldContainerType::FieldContainerType(const Char8* name, FieldContainerType* parent, const Char8* groupName,
                                       PrototypeCreateF create, std::initializer_list<FieldDescription> descs)
    : DataType(name, parent != nullptr ? parent->getCName() : nullptr), _parent(parent), _create(create),
      _groupId(0)
{
    FieldContainerFactory* factory = FieldContainerFactory::the();
    _groupId = factory->registerGroup(groupName != nullptr ? groupName : name);

    if (parent != nullptr)
        _descs = parent->_descs;
    _descs.insert(_descs.end(), descs.begin(), descs.end());
    std::stable_sort(_descs.begin(), _descs.end(), [](const FieldDescription& a, const FieldDescription& b) {
        return a.getFieldId() < b.getFieldId();
    });

    _isNode = derivesFromName("Node");
    _isNodeCore = derivesFromName("NodeCore");
    _isAttachment = derivesFromName("Attachment");

    factory->registerType(this);
}

bool FieldContainerType::derivesFromName(const Char8* name) const
{
    for (const FieldContainerType* t = this; t != nullptr; t = t->_parent)
        if (std::strcmp(t->getCName(), name) == 0)
            return true;
    return false;
}

FieldDescription* FieldContainerType::getFieldDescription(UInt32 fieldId)
{
    return fieldId >= 1 && fieldId <= _descs.size() ? &_descs[fieldId - 1] : nullptr;
}

const FieldDescription* FieldContainerType::getFieldDescription(UInt32 fieldId) const
{
    return fieldId >= 1 && fieldId <= _descs.size() ? &_descs[fieldId - 1] : nullptr;
}

FieldDescription* FieldContainerType::findFieldDescription(const Char8* fieldName)
{
    if (fieldName == nullptr)
        return nullptr;
    for (FieldDescription& desc : _descs)
        if (std::strcmp(desc.getCName(), fieldName) == 0)
            return &desc;
    return nullptr;
}

const FieldDescription* FieldContainerType::findFieldDescription(const Char8* fieldName) const
{
    return const_cast<FieldContainerType*>(this)->findFieldDescription(fieldName);
}

bool FieldContainerType::isDerivedFrom(const FieldContainerType& other) const
{
    for (const FieldContainerType* t = this; t != nullptr; t = t->_parent)
        if (t->getId() == other.getId())
            return true;
    return false;
}

FieldContainerPtr FieldContainerType::getPrototype() const
{
    return NullFC;
}

bool FieldContainerType::setPrototype(FieldContainerPtr)
{
    return false;
}

FieldContainerPtr FieldContainerType::createFieldContainer() const
{
    return _create != nullptr ? _create() : FieldContainerPtr();
}

} // namespace osg
