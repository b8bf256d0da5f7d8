#ifndef _OSGFIELDDESCRIPTION_H_
#define _OSGFIELDDESCRIPTION_H_

#include "OSGBaseTypes.h"
#include "OSGField.h"
#include "OSGFieldContainerPtrForward.h"
#include "OSGIDString.h"
#include "OSGTypeBase.h"

namespace osg {

// Reaches a container's member field. OpenSG stores a pointer to a member function
// `Field* (FieldContainer::*)()` obtained by casting each class's typed accessor; calling a member
// function through a pointer of another type is undefined behaviour, so descriptions here hold a
// plain function generated per field by osgFieldAccess<&Class::editSFName> instead.
typedef Field* (*FieldAccessMethod)(FieldContainer*);

template <class>
struct OSGFieldAccessTraits;
template <class ClassT, class FieldT>
struct OSGFieldAccessTraits<FieldT* (ClassT::*)()>
{
    typedef ClassT ClassType;
};

template <auto AccessorM>
Field* osgFieldAccess(FieldContainer* container)
{
    typedef typename OSGFieldAccessTraits<decltype(AccessorM)>::ClassType ClassType;
    return (static_cast<ClassType*>(container)->*AccessorM)();
}

// Describes one field of a container type: its field type, name, id, mask and whether it is
// internal (internal fields, such as parent links, are not written to files).
class OSG_SYSTEMLIB_DLLMAPPING FieldDescription
{
public:
    FieldDescription(const TypeBase& fieldType, const Char8* name, UInt32 fieldId, BitVector fieldMask,
                     bool internal, FieldAccessMethod accessMethod, const Char8* defaultValue = nullptr)
        : _fieldType(&fieldType), _name(name), _fieldId(fieldId), _fieldMask(fieldMask), _internal(internal),
          _accessMethod(accessMethod), _defaultValue(defaultValue != nullptr ? defaultValue : "")
    {}

    const Char8* getCName() const { return _name.str(); }
    const IDString& getName() const { return _name; }
    // The id of the field type (e.g. SFVec3f), not of the value type.
    UInt32 getTypeId() const { return _fieldType->getId(); }
    const TypeBase& getFieldType() const { return *_fieldType; }
    BitVector getFieldMask() const { return _fieldMask; }
    UInt32 getFieldId() const { return _fieldId; }
    bool isInternal() const { return _internal; }
    const Char8* getDefaultValue() const { return _defaultValue.c_str(); }
    bool isValid() const { return _accessMethod != nullptr && !_name.isEmpty(); }

protected:
    friend class FieldContainer;
    Field* getField(FieldContainer& container) const
    {
        return _accessMethod != nullptr ? _accessMethod(&container) : nullptr;
    }

private:
    const TypeBase* _fieldType;
    IDString _name;
    UInt32 _fieldId;
    BitVector _fieldMask;
    bool _internal;
    FieldAccessMethod _accessMethod;
    std::string _defaultValue;
};

} // namespace osg

#include "OSGPrimary.h"

#endif
