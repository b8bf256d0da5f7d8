#ifndef _OSGFIELDCONTAINERTYPE_H_
#define _OSGFIELDCONTAINERTYPE_H_

#include "OSGBaseTypes.h"
#include "OSGDataType.h"
#include "OSGFieldContainerPtr.h"
#include "OSGFieldDescription.h"

#include <initializer_list>
#include <vector>

namespace osg {

// The type of a field container class: name, parent type, group, and the descriptions of all its
// fields including the inherited ones (sorted by field id, so entry i has id i).
//
// There are no prototype objects: create() default-constructs a container. getPrototype()
// therefore returns NullFC and setPrototype() refuses. The constructor takes the parent type
// itself, the descriptions as a list and the create function, instead of OpenSG's parent name,
// description array and prototype and init callbacks.
class OSG_SYSTEMLIB_DLLMAPPING FieldContainerType : public DataType
{
public:
    typedef FieldContainerPtr (*PrototypeCreateF)(void);

    // create is null for abstract types. groupName null means the type forms its own group,
    // named after it.
    FieldContainerType(const Char8* name, FieldContainerType* parent, const Char8* groupName,
                       PrototypeCreateF create, std::initializer_list<FieldDescription> descs);

    UInt16 getGroupId() const { return _groupId; }
    FieldContainerType* getParent() const { return _parent; }

    // fieldId is 1-based; null when out of range.
    FieldDescription* getFieldDescription(UInt32 fieldId);
    const FieldDescription* getFieldDescription(UInt32 fieldId) const;
    FieldDescription* findFieldDescription(const Char8* fieldName);
    const FieldDescription* findFieldDescription(const Char8* fieldName) const;
    UInt32 getNumFieldDescs() const { return UInt32(_descs.size()); }

    // True when other is this type or one of its ancestors. The TypeBase overload stays the plain
    // type's answer (always false), as in OpenSG: pass a FieldContainerType.
    bool isDerivedFrom(const FieldContainerType& other) const;
    using DataType::isDerivedFrom;

    bool isNode() const { return _isNode; }
    bool isNodeCore() const { return _isNodeCore; }
    bool isAttachment() const { return _isAttachment; }
    bool isAbstract() const { return _create == nullptr; }
    bool isInitialized() const { return true; }

    FieldContainerPtr getPrototype() const;
    bool setPrototype(FieldContainerPtr prototype);

    // Null for abstract types and for the wrong kind.
    FieldContainerPtr createFieldContainer() const;

private:
    bool derivesFromName(const Char8* name) const;

    FieldContainerType* _parent;
    PrototypeCreateF _create;
    UInt16 _groupId;
    std::vector<FieldDescription> _descs;
    bool _isNode = false;
    bool _isNodeCore = false;
    bool _isAttachment = false;
};

} // namespace osg

#include "OSGPrimary.h"

#endif
