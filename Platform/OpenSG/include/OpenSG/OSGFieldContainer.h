#ifndef _OSGFIELDCONTAINER_H_
#define _OSGFIELDCONTAINER_H_

#include "OSGBaseTypes.h"
#include "OSGField.h"
#include "OSGFieldContainerBase.h"
#include "OSGFieldContainerPtr.h"

namespace osg {

class FieldContainerType;

// Base of every field container. Containers are never created with new by clients: each
// concrete class has static create()/createEmpty() that register the container with the factory
// (giving it the next container id) and return a handle; the reference count starts at 0.
class OSG_SYSTEMLIB_DLLMAPPING FieldContainer
{
public:
    typedef FieldContainerPtr Ptr;

    enum
    {
        NextFieldId = 1
    };
    static constexpr BitVector NextFieldMask = TypeTraits<BitVector>::One << NextFieldId;
    static constexpr BitVector MTInfluenceMask = 0;
    static const bool isNodeCore = false;

    static FieldContainerType& getClassType();
    static UInt32 getClassTypeId();
    static UInt16 getClassGroupId();

    virtual FieldContainerType& getType();
    virtual const FieldContainerType& getType() const;
    UInt32 getTypeId() const;
    UInt16 getGroupId() const;
    const Char8* getTypeName() const;

    // The live member field, or null for an unknown id or name. Valid while the container lives.
    Field* getField(UInt32 fieldId);
    Field* getField(const Char8* fieldName);

    virtual FieldContainerPtr shallowCopy() const = 0;
    virtual UInt32 getContainerSize() const = 0;

    // Called by endEditCP; the base does nothing.
    virtual void changed(BitVector whichField, UInt32 origin);

    // Prints the type, id and every field. OpenSG leaves this pure virtual for the generated
    // classes; here one generic version serves all of them.
    virtual void dump(UInt32 indent = 0, const BitVector flags = 0) const;

    FieldContainer& operator=(const FieldContainer&) = delete;

protected:
    FieldContainer();
    // A copy is a new container: it gets its own id and a zero count.
    FieldContainer(const FieldContainer& source);
    virtual ~FieldContainer();

    virtual void onCreate(const FieldContainer* source = nullptr);
    virtual void onDestroy();

    // Registers a freshly allocated container with the factory and wraps it in its handle type.
    template <class PtrT, class ObjT>
    static PtrT registerNew(ObjT* obj)
    {
        registerContainer(obj);
        static_cast<FieldContainer*>(obj)->onCreate(nullptr);
        return PtrT(obj);
    }
    template <class PtrT, class ObjT>
    static PtrT registerCopy(ObjT* obj, const FieldContainer* source)
    {
        registerContainer(obj);
        static_cast<FieldContainer*>(obj)->onCreate(source);
        return PtrT(obj);
    }

private:
    friend class FieldContainerPtrBase;
    friend OSG_SYSTEMLIB_DLLMAPPING void addRefCP(const FieldContainerPtrBase& ptr);
    friend OSG_SYSTEMLIB_DLLMAPPING void subRefCP(const FieldContainerPtrBase& ptr);

    static void registerContainer(FieldContainer* obj);

    Int32 _refCount = 0;
    UInt32 _containerId = 0;
    bool _dying = false;
};

inline Int32 FieldContainerPtrBase::getRefCount() const
{
    return _obj != nullptr ? _obj->_refCount : 0;
}

inline UInt32 FieldContainerPtrBase::getFieldContainerId() const
{
    return _obj->_containerId;
}

inline UInt16 FieldContainerPtrBase::getContainerSize() const
{
    return _obj != nullptr ? UInt16(_obj->getContainerSize()) : 0;
}

// Declarations shared by every generated container class.
#define OSG_FC_TYPE_FUNCTIONS_DECL                                                                           \
    static FieldContainerType& getClassType();                                                               \
    static UInt32 getClassTypeId();                                                                          \
    static UInt16 getClassGroupId();                                                                         \
    FieldContainerType& getType() override;                                                                  \
    const FieldContainerType& getType() const override;

#define OSG_FC_TYPE_FUNCTIONS_IMPL(CLASS)                                                                    \
    UInt32 CLASS::getClassTypeId()                                                                           \
    {                                                                                                        \
        return getClassType().getId();                                                                       \
    }                                                                                                        \
    UInt16 CLASS::getClassGroupId()                                                                          \
    {                                                                                                        \
        return getClassType().getGroupId();                                                                  \
    }                                                                                                        \
    FieldContainerType& CLASS::getType()                                                                     \
    {                                                                                                        \
        return getClassType();                                                                               \
    }                                                                                                        \
    const FieldContainerType& CLASS::getType() const                                                         \
    {                                                                                                        \
        return getClassType();                                                                               \
    }

// Concrete classes: create, createEmpty, shallowCopy and the container size.
#define OSG_FC_CREATE_FUNCTIONS_DECL(PTR)                                                                    \
    static PTR create();                                                                                     \
    static PTR createEmpty();                                                                                \
    FieldContainerPtr shallowCopy() const override;                                                          \
    UInt32 getContainerSize() const override;

#define OSG_FC_CREATE_FUNCTIONS_IMPL(BASE, CLASS, PTR)                                                       \
    PTR BASE::create()                                                                                       \
    {                                                                                                        \
        return createEmpty();                                                                                \
    }                                                                                                        \
    PTR BASE::createEmpty()                                                                                  \
    {                                                                                                        \
        return registerNew<PTR>(new CLASS());                                                                \
    }                                                                                                        \
    FieldContainerPtr BASE::shallowCopy() const                                                              \
    {                                                                                                        \
        return registerCopy<FieldContainerPtr>(new CLASS(*static_cast<const CLASS*>(this)), this);           \
    }                                                                                                        \
    UInt32 BASE::getContainerSize() const                                                                    \
    {                                                                                                        \
        return sizeof(CLASS);                                                                                \
    }                                                                                                        \
    static FieldContainerPtr osgCreate##CLASS()                                                              \
    {                                                                                                        \
        return BASE::create();                                                                               \
    }

// The getters of a single field `Name` of type FT holding VT: getSFName, editSFName, getName,
// editName, and the member _sfName.
#define OSG_SFIELD_GETTERS(FT, VT, Name)                                                                     \
public:                                                                                                      \
    FT* getSF##Name()                                                                                        \
    {                                                                                                        \
        return &_sf##Name;                                                                                   \
    }                                                                                                        \
    const FT* getSF##Name() const                                                                            \
    {                                                                                                        \
        return &_sf##Name;                                                                                   \
    }                                                                                                        \
    FT* editSF##Name()                                                                                       \
    {                                                                                                        \
        return &_sf##Name;                                                                                   \
    }                                                                                                        \
    VT& get##Name()                                                                                          \
    {                                                                                                        \
        return _sf##Name.getValue();                                                                         \
    }                                                                                                        \
    const VT& get##Name() const                                                                              \
    {                                                                                                        \
        return _sf##Name.getValue();                                                                         \
    }                                                                                                        \
    VT& edit##Name()                                                                                         \
    {                                                                                                        \
        return _sf##Name.getValue();                                                                         \
    }                                                                                                        \
                                                                                                             \
protected:                                                                                                   \
    FT _sf##Name;

// Accessors of a single field: the getters and setName.
#define OSG_SFIELD_ACCESSORS(FT, VT, Name)                                                                   \
    OSG_SFIELD_GETTERS(FT, VT, Name)                                                                         \
public:                                                                                                      \
    void set##Name(const VT& value)                                                                          \
    {                                                                                                        \
        _sf##Name.setValue(value);                                                                           \
    }                                                                                                        \
                                                                                                             \
protected:

// Accessors of a multi field `Name` of type FT holding VT: getMFName, editMFName, getName (the
// field), getName(i), editName, and the member _mfName.
#define OSG_MFIELD_ACCESSORS(FT, VT, Name)                                                                   \
public:                                                                                                      \
    FT* getMF##Name()                                                                                        \
    {                                                                                                        \
        return &_mf##Name;                                                                                   \
    }                                                                                                        \
    const FT* getMF##Name() const                                                                            \
    {                                                                                                        \
        return &_mf##Name;                                                                                   \
    }                                                                                                        \
    FT* editMF##Name()                                                                                       \
    {                                                                                                        \
        return &_mf##Name;                                                                                   \
    }                                                                                                        \
    FT& get##Name()                                                                                          \
    {                                                                                                        \
        return _mf##Name;                                                                                    \
    }                                                                                                        \
    const FT& get##Name() const                                                                              \
    {                                                                                                        \
        return _mf##Name;                                                                                    \
    }                                                                                                        \
    FT& edit##Name()                                                                                         \
    {                                                                                                        \
        return _mf##Name;                                                                                    \
    }                                                                                                        \
    typename FT::reference get##Name(UInt32 index)                                                           \
    {                                                                                                        \
        return _mf##Name[index];                                                                             \
    }                                                                                                        \
    typename FT::const_reference get##Name(UInt32 index) const                                               \
    {                                                                                                        \
        return _mf##Name[index];                                                                             \
    }                                                                                                        \
                                                                                                             \
protected:                                                                                                   \
    FT _mf##Name;

// As OSG_SFIELD_ACCESSORS for a pointer field that holds a reference: setName releases the old
// value and takes a reference on the new one (editName gives raw access without counting).
#define OSG_SFIELD_REF_ACCESSORS(FT, VT, Name)                                                               \
    OSG_SFIELD_GETTERS(FT, VT, Name)                                                                         \
public:                                                                                                      \
    void set##Name(const VT& value)                                                                          \
    {                                                                                                        \
        setRefdCP(_sf##Name.getValue(), value);                                                              \
    }                                                                                                        \
                                                                                                             \
protected:

// As OSG_MFIELD_ACCESSORS for a list of pointers that holds a reference on each element:
// pushToName adds (null is ignored), removeFromName removes one element by index or the first
// equal one, clearName removes all; each removal subRefs.
#define OSG_MFIELD_REF_ACCESSORS(FT, VT, Name)                                                               \
    OSG_MFIELD_ACCESSORS(FT, VT, Name)                                                                       \
public:                                                                                                      \
    void pushTo##Name(const VT& value)                                                                       \
    {                                                                                                        \
        if (value == NullFC)                                                                                 \
            return;                                                                                          \
        addRefCP(value);                                                                                     \
        _mf##Name.push_back(value);                                                                          \
    }                                                                                                        \
    void removeFrom##Name(UInt32 index)                                                                      \
    {                                                                                                        \
        if (index >= _mf##Name.size())                                                                       \
            return;                                                                                          \
        VT old = _mf##Name[index];                                                                           \
        _mf##Name.erase(_mf##Name.begin() + index);                                                          \
        subRefCP(old);                                                                                       \
    }                                                                                                        \
    void removeFrom##Name(const VT& value)                                                                   \
    {                                                                                                        \
        auto it = _mf##Name.find(value);                                                                     \
        if (it != _mf##Name.end())                                                                           \
            removeFrom##Name(UInt32(it - _mf##Name.begin()));                                                \
    }                                                                                                        \
    void clear##Name()                                                                                       \
    {                                                                                                        \
        typename FT::StorageType old;                                                                        \
        old.swap(_mf##Name.getValues());                                                                     \
        for (const VT& element : old)                                                                        \
            subRefCP(element);                                                                               \
    }                                                                                                        \
                                                                                                             \
protected:

// One entry of a type's description list, for a single or a multi field.
#define OSG_SFIELD_DESC(CLASS, FT, NAME, Name, INTERNAL)                                                     \
    FieldDescription(FT::getClassType(), NAME, CLASS::Name##FieldId, CLASS::Name##FieldMask, INTERNAL,       \
                     &osgFieldAccess<&CLASS::editSF##Name>)
#define OSG_MFIELD_DESC(CLASS, FT, NAME, Name, INTERNAL)                                                     \
    FieldDescription(FT::getClassType(), NAME, CLASS::Name##FieldId, CLASS::Name##FieldMask, INTERNAL,       \
                     &osgFieldAccess<&CLASS::editMF##Name>)

} // namespace osg

#include "OSGPrimary.h"

#endif
