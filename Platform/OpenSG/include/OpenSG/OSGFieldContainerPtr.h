#ifndef _OSGFIELDCONTAINERPTR_H_
#define _OSGFIELDCONTAINERPTR_H_

#include "OSGBaseTypes.h"
#include "OSGFieldContainerBase.h"
#include "OSGFieldContainerPtrForward.h"

namespace osg {

// Non-owning handle to a field container. Copying a handle does not touch the reference count;
// addRefCP/subRefCP do. The handle stores the container's address; the reference count and
// container id live in the container itself.
class OSG_SYSTEMLIB_DLLMAPPING FieldContainerPtrBase
{
    typedef void (FieldContainerPtrBase::*unspecified_bool_type)() const;
    void boolHelper() const {}

public:
    static const UInt16 InvalidParentFPos = 0xFFFF;

    constexpr FieldContainerPtrBase() = default;

    // 0 for a null pointer.
    Int32 getRefCount() const;
    // Undefined for a null pointer, as in OpenSG; check first.
    UInt32 getFieldContainerId() const;
    UInt16 getContainerSize() const;
    FieldContainer* getBaseCPtr() const { return _obj; }

    void setParentFieldPos(UInt16 pos) { _parentFPos = pos; }
    UInt16 getParentFieldPos() const { return _parentFPos; }

    bool operator==(const FieldContainerPtrBase& other) const { return _obj == other._obj; }
    bool operator!=(const FieldContainerPtrBase& other) const { return _obj != other._obj; }
    bool operator<(const FieldContainerPtrBase& other) const { return _obj < other._obj; }
    bool operator!() const { return _obj == nullptr; }
    operator unspecified_bool_type() const
    {
        return _obj != nullptr ? &FieldContainerPtrBase::boolHelper : nullptr;
    }

protected:
    explicit FieldContainerPtrBase(const FieldContainer* obj) : _obj(const_cast<FieldContainer*>(obj)) {}

    FieldContainer* _obj = nullptr;
    UInt16 _parentFPos = InvalidParentFPos;
};

class OSG_SYSTEMLIB_DLLMAPPING FieldContainerPtr : public FieldContainerPtrBase
{
public:
    typedef FieldContainer StoredObjectType;
    typedef FieldContainer ObjectType;
    typedef FieldContainerPtrBase Inherited;

    constexpr FieldContainerPtr() = default;
    explicit FieldContainerPtr(const FieldContainer* obj) : FieldContainerPtrBase(obj) {}
    explicit FieldContainerPtr(const FieldContainer& obj) : FieldContainerPtrBase(&obj) {}

    // Both return a mutable object, also through a const handle.
    FieldContainer* operator->() const { return _obj; }
    FieldContainer& operator*() const { return *_obj; }
    FieldContainer* getCPtr() const { return _obj; }

    template <class InTypeT>
    static FieldContainerPtr dcast(const InTypeT oIn)
    {
        FieldContainerPtr result(oIn.getBaseCPtr());
        result.setParentFieldPos(oIn.getParentFieldPos());
        return result;
    }
};

class OSG_SYSTEMLIB_DLLMAPPING NullFieldContainerPtr : public FieldContainerPtr
{
public:
    constexpr NullFieldContainerPtr() = default;
};

// The one null pointer every handle compares and assigns with.
OSG_SYSTEMLIB_DLLMAPPING extern const NullFieldContainerPtr NullFC;
#define OSGNullFC osg::NullFC

// Typed handle: -> and * yield the container type, dcast converts with a checked cast.
template <class BasePtrT, class FieldContainerTypeT>
class OSG_SYSTEMLIB_DLLMAPPING FCPtr : public BasePtrT
{
public:
    typedef FieldContainerTypeT StoredObjectType;
    typedef FieldContainerTypeT ObjectType;
    typedef BasePtrT Inherited;

    FCPtr() = default;
    FCPtr(const NullFieldContainerPtr&) : BasePtrT() {}
    explicit FCPtr(const FieldContainerTypeT& obj) : BasePtrT(&obj) {}
    explicit FCPtr(const FieldContainerTypeT* obj) : BasePtrT(obj) {}

    FieldContainerTypeT* operator->() const { return static_cast<FieldContainerTypeT*>(this->_obj); }
    FieldContainerTypeT& operator*() const { return *static_cast<FieldContainerTypeT*>(this->_obj); }
    FieldContainerTypeT* getCPtr() const { return static_cast<FieldContainerTypeT*>(this->_obj); }

    // A null input or a container of another type gives a null pointer.
    template <class InTypeT>
    static FCPtr dcast(const InTypeT oIn)
    {
        FCPtr result(dynamic_cast<const FieldContainerTypeT*>(oIn.getBaseCPtr()));
        result.setParentFieldPos(oIn.getParentFieldPos());
        return result;
    }
};

class OSG_SYSTEMLIB_DLLMAPPING AttachmentContainerPtr : public FCPtr<FieldContainerPtr, AttachmentContainer>
{
    typedef FCPtr<FieldContainerPtr, AttachmentContainer> Base;

public:
    typedef FieldContainerPtr Inherited;

    AttachmentContainerPtr() = default;
    AttachmentContainerPtr(const NullFieldContainerPtr&) : Base() {}
    // Defined out of line: the conversion needs the complete container type.
    explicit AttachmentContainerPtr(const AttachmentContainer& obj);
    explicit AttachmentContainerPtr(const AttachmentContainer* obj);

    template <class InTypeT>
    static AttachmentContainerPtr dcast(const InTypeT oIn)
    {
        AttachmentContainerPtr result(dynamic_cast<const AttachmentContainer*>(oIn.getBaseCPtr()));
        result.setParentFieldPos(oIn.getParentFieldPos());
        return result;
    }
};

class OSG_SYSTEMLIB_DLLMAPPING NodePtr : public FCPtr<AttachmentContainerPtr, Node>
{
    typedef FCPtr<AttachmentContainerPtr, Node> Base;

public:
    typedef AttachmentContainerPtr Inherited;

    NodePtr() = default;
    NodePtr(const NullFieldContainerPtr&) : Base() {}
    // Defined out of line: the conversion needs the complete container type.
    explicit NodePtr(const Node& obj);
    explicit NodePtr(const Node* obj);

    // The node's core as a raw pointer (defined in OSGNode.h).
    NodeCore* getCore() const;

    template <class InTypeT>
    static NodePtr dcast(const InTypeT oIn)
    {
        NodePtr result(dynamic_cast<const Node*>(oIn.getBaseCPtr()));
        result.setParentFieldPos(oIn.getParentFieldPos());
        return result;
    }
};

// Points at a node, but -> yields the node's core (used by actions).
class OSG_SYSTEMLIB_DLLMAPPING CNodePtr : public AttachmentContainerPtr
{
public:
    CNodePtr() = default;
    CNodePtr(const NullFieldContainerPtr&) : AttachmentContainerPtr() {}
    CNodePtr(const NodePtr& node);

    NodeCore* operator->() const; // defined in OSGNode.h
    NodeCore& operator*() const;  // defined in OSGNode.h
    NodeCore* getCPtr() const;    // defined in OSGNode.h
    Node* getNode() const;        // defined in OSGNode.h
};

class OSG_SYSTEMLIB_DLLMAPPING AttachmentPtr : public FCPtr<FieldContainerPtr, Attachment>
{
    typedef FCPtr<FieldContainerPtr, Attachment> Base;

public:
    typedef FieldContainerPtr Inherited;

    AttachmentPtr() = default;
    AttachmentPtr(const NullFieldContainerPtr&) : Base() {}
    // Defined out of line: the conversion needs the complete container type.
    explicit AttachmentPtr(const Attachment& obj);
    explicit AttachmentPtr(const Attachment* obj);

    template <class InTypeT>
    static AttachmentPtr dcast(const InTypeT oIn)
    {
        AttachmentPtr result(dynamic_cast<const Attachment*>(oIn.getBaseCPtr()));
        result.setParentFieldPos(oIn.getParentFieldPos());
        return result;
    }
};

template <class OutPtrT>
inline OutPtrT dynamic_pointer_cast(const FieldContainerPtr& in)
{
    return OutPtrT::dcast(in);
}

// Reference counting. Both ignore null. A container whose count drops to zero or below is
// destroyed at once: it leaves the factory (getContainer(id) then returns NullFC), onDestroy()
// runs, then the destructor.
OSG_SYSTEMLIB_DLLMAPPING void addRefCP(const FieldContainerPtrBase& ptr);
OSG_SYSTEMLIB_DLLMAPPING void subRefCP(const FieldContainerPtrBase& ptr);
// If slot and newValue differ: subRef the old value, assign, addRef the new one.
OSG_SYSTEMLIB_DLLMAPPING void setRefdCP(FieldContainerPtrBase& slot, const FieldContainerPtrBase& newValue);
// subRef, then set to null.
OSG_SYSTEMLIB_DLLMAPPING void clearRefCP(FieldContainerPtrBase& slot);

// beginEditCP does nothing (one aspect, one thread). endEditCP on a non-null container records
// (container, mask, origin) in the change record and then calls the container's changed().
// Fields may be written without begin/end; then changed() is simply not called.
OSG_SYSTEMLIB_DLLMAPPING void beginEditCP(const FieldContainerPtr& ptr,
                                          BitVector whichField = FieldBits::AllFields,
                                          UInt32 origin = ChangedOrigin::External);
OSG_SYSTEMLIB_DLLMAPPING void endEditCP(const FieldContainerPtr& ptr,
                                        BitVector whichField = FieldBits::AllFields,
                                        UInt32 origin = ChangedOrigin::External);
// Only calls changed().
OSG_SYSTEMLIB_DLLMAPPING void changedCP(const FieldContainerPtr& ptr,
                                        BitVector whichField = FieldBits::AllFields,
                                        UInt32 origin = ChangedOrigin::External);
// Only records the change.
OSG_SYSTEMLIB_DLLMAPPING void endEditNotChangedCP(const FieldContainerPtr& ptr,
                                                  BitVector whichField = FieldBits::AllFields,
                                                  UInt32 origin = ChangedOrigin::External);

template <class PtrT>
inline UInt32 getContainerId(const PtrT& ptr)
{
    return ptr.getFieldContainerId();
}
template <class PtrT>
inline typename PtrT::StoredObjectType* getCPtr(const PtrT& ptr)
{
    return ptr.getCPtr();
}
template <class PtrT>
inline Int32 getRefCount(const PtrT& ptr)
{
    return ptr.getRefCount();
}
template <class PtrT>
inline void addRef(const PtrT& ptr)
{
    addRefCP(ptr);
}
template <class PtrT>
inline void subRef(const PtrT& ptr)
{
    subRefCP(ptr);
}

// Begins an edit on construction and ends it on destruction.
class OSG_SYSTEMLIB_DLLMAPPING CPEditor
{
public:
    CPEditor(const FieldContainerPtr& ptr, BitVector mask = FieldBits::AllFields,
             UInt32 origin = ChangedOrigin::External)
        : _ptr(ptr), _mask(mask), _origin(origin)
    {
        beginEditCP(_ptr, _mask, _origin);
    }
    ~CPEditor() { endEditCP(_ptr, _mask, _origin); }
    CPEditor(const CPEditor&) = delete;
    CPEditor& operator=(const CPEditor&) = delete;

private:
    FieldContainerPtr _ptr;
    BitVector _mask;
    UInt32 _origin;
};

#define CPEdit(fc, mask) osg::CPEditor osgCPEditor##__LINE__((fc), (mask))

} // namespace osg

#include "OSGPrimary.h"

#endif
