#include <OpenSG/OSGChangeRecord.h>
#include <OpenSG/OSGFieldContainer.h>
#include <OpenSG/OSGFieldContainerFactory.h>
#include <OpenSG/OSGFieldContainerType.h>

#include <iostream>
#include <string>

namespace osg {

const NullFieldContainerPtr NullFC;

FieldContainerType& FieldContainer::getClassType()
{
    static FieldContainerType type("FieldContainer", nullptr, nullptr, nullptr, {});
    return type;
}

UInt32 FieldContainer::getClassTypeId()
{
    return getClassType().getId();
}

UInt16 FieldContainer::getClassGroupId()
{
    return getClassType().getGroupId();
}

FieldContainerType& FieldContainer::getType()
{
    return getClassType();
}

const FieldContainerType& FieldContainer::getType() const
{
    return getClassType();
}

UInt32 FieldContainer::getTypeId() const
{
    return getType().getId();
}

UInt16 FieldContainer::getGroupId() const
{
    return getType().getGroupId();
}

const Char8* FieldContainer::getTypeName() const
{
    return getType().getCName();
}

Field* FieldContainer::getField(UInt32 fieldId)
{
    const FieldDescription* desc = getType().getFieldDescription(fieldId);
    return desc != nullptr ? desc->getField(*this) : nullptr;
}

Field* FieldContainer::getField(const Char8* fieldName)
{
    const FieldDescription* desc = getType().findFieldDescription(fieldName);
    return desc != nullptr ? desc->getField(*this) : nullptr;
}

void FieldContainer::changed(BitVector, UInt32) {}

void FieldContainer::dump(UInt32 indent, const BitVector) const
{
    const FieldContainerType& type = getType();
    std::string pad(indent, ' ');
    std::cout << pad << type.getCName() << " (id " << _containerId << ", refcount " << _refCount << ")\n";
    FieldContainer* self = const_cast<FieldContainer*>(this);
    for (UInt32 i = 1; i <= type.getNumFieldDescs(); ++i) {
        const FieldDescription* desc = type.getFieldDescription(i);
        Field* field = desc != nullptr ? self->getField(i) : nullptr;
        if (field == nullptr)
            continue;
        std::string value;
        field->getValueByStr(value);
        std::cout << pad << "    " << desc->getCName() << " " << value << "\n";
    }
}

FieldContainer::FieldContainer() = default;

FieldContainer::FieldContainer(const FieldContainer&) : _refCount(0), _containerId(0), _dying(false) {}

FieldContainer::~FieldContainer() = default;

void FieldContainer::onCreate(const FieldContainer*) {}

void FieldContainer::onDestroy() {}

void FieldContainer::registerContainer(FieldContainer* obj)
{
    obj->_containerId = FieldContainerFactory::the()->registerFieldContainer(FieldContainerPtr(obj));
}

void addRefCP(const FieldContainerPtrBase& ptr)
{
    FieldContainer* obj = ptr.getBaseCPtr();
    if (obj != nullptr)
        ++obj->_refCount;
}

void subRefCP(const FieldContainerPtrBase& ptr)
{
    FieldContainer* obj = ptr.getBaseCPtr();
    // A container being destroyed may be reached again through links its destructor releases;
    // it is already on its way out, so that must not start a second destruction.
    if (obj == nullptr || obj->_dying)
        return;
    if (--obj->_refCount > 0)
        return;
    obj->_dying = true;
    FieldContainerFactory::the()->unregisterFieldContainer(FieldContainerPtr(obj));
    obj->onDestroy();
    delete obj;
}

void setRefdCP(FieldContainerPtrBase& slot, const FieldContainerPtrBase& newValue)
{
    if (slot == newValue)
        return;
    // Take the new reference first, so releasing the old value cannot destroy the new one
    // (the old one may own it).
    addRefCP(newValue);
    subRefCP(slot);
    slot = newValue;
}

void clearRefCP(FieldContainerPtrBase& slot)
{
    FieldContainerPtrBase old = slot;
    slot = FieldContainerPtrBase();
    subRefCP(old);
}

void beginEditCP(const FieldContainerPtr&, BitVector, UInt32) {}

void endEditCP(const FieldContainerPtr& ptr, BitVector whichField, UInt32 origin)
{
    if (ptr == NullFC)
        return;
    ChangeRecord::record(ptr.getFieldContainerId(), whichField, origin);
    ptr->changed(whichField, origin);
}

void changedCP(const FieldContainerPtr& ptr, BitVector whichField, UInt32 origin)
{
    if (ptr == NullFC)
        return;
    ptr->changed(whichField, origin);
}

void endEditNotChangedCP(const FieldContainerPtr& ptr, BitVector whichField, UInt32 origin)
{
    if (ptr == NullFC)
        return;
    ChangeRecord::record(ptr.getFieldContainerId(), whichField, origin);
}

} // namespace osg
