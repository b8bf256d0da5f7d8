#ifndef _OSGNODE_H_
#define _OSGNODE_H_

#include "OSGAttachmentContainer.h"
#include "OSGDynamicVolume.h"
#include "OSGMatrix.h"
#include "OSGNodeCore.h"
#include "OSGNodeCoreFields.h"
#include "OSGNodeFields.h"
#include "OSGSFBaseTypes.h"
#include "OSGSFSysTypes.h"

namespace osg {

// A node of the scene graph: one core, any number of children, at most one parent.
// A node holds a reference on its core and on each child.
class OSG_SYSTEMLIB_DLLMAPPING Node : public AttachmentContainer
{
public:
    typedef AttachmentContainer Inherited;
    typedef NodePtr Ptr;

    enum
    {
        VolumeFieldId = Inherited::NextFieldId,
        TravMaskFieldId = VolumeFieldId + 1,
        ParentFieldId = TravMaskFieldId + 1,
        ChildrenFieldId = ParentFieldId + 1,
        CoreFieldId = ChildrenFieldId + 1,
        NextFieldId = CoreFieldId + 1
    };
    static constexpr BitVector VolumeFieldMask = TypeTraits<BitVector>::One << VolumeFieldId;
    static constexpr BitVector TravMaskFieldMask = TypeTraits<BitVector>::One << TravMaskFieldId;
    static constexpr BitVector ParentFieldMask = TypeTraits<BitVector>::One << ParentFieldId;
    static constexpr BitVector ChildrenFieldMask = TypeTraits<BitVector>::One << ChildrenFieldId;
    static constexpr BitVector CoreFieldMask = TypeTraits<BitVector>::One << CoreFieldId;

    OSG_FC_TYPE_FUNCTIONS_DECL
    OSG_FC_CREATE_FUNCTIONS_DECL(NodePtr)

    NodeCorePtr getCore() { return _sfCore.getValue(); }
    NodeCorePtr getCore() const { return _sfCore.getValue(); }
    // addRefs the new core, unlinks and subRefs the old one.
    void setCore(const NodeCorePtr& core);

    // NullFC for a root.
    NodePtr getParent() { return _sfParent.getValue(); }

    UInt32 getNChildren() const { return _mfChildren.size(); }
    // NullFC for an index out of range (OpenSG asserts instead).
    NodePtr getChild(UInt32 index) { return index < _mfChildren.size() ? _mfChildren[index] : NodePtr(); }

    // addRefs the child, takes it away from its previous parent (which subRefs it) and appends it.
    // Null is ignored, and so is a child that would close a cycle (this node or one of its
    // ancestors); OpenSG does not check for cycles.
    void addChild(const NodePtr& child);
    void insertChild(UInt32 index, const NodePtr& child);
    // -1 when absent.
    Int32 findChild(const NodePtr& child) const;
    // Clears the child's parent and subRefs it, which may destroy it. A non-child is ignored
    // with a warning on stderr.
    void subChild(const NodePtr& child);
    void subChild(UInt32 index);

    // Active means travMask is all ones. Traversals here do not look at it.
    bool getActive() const { return _sfTravMask.getValue() == TypeTraits<UInt32>::getMax(); }
    void setActive(bool active) { _sfTravMask.setValue(active ? TypeTraits<UInt32>::getMax() : 0u); }
    UInt32 getTravMask() const { return _sfTravMask.getValue(); }
    void setTravMask(UInt32 mask) { _sfTravMask.setValue(mask); }

    // Volumes are not computed (there is no geometry data): these hand out what the field holds.
    DynamicVolume& getVolume() { return _sfVolume.getValue(); }
    const DynamicVolume& getVolume(bool update) const;
    void updateVolume();
    void invalidateVolume();
    void getWorldVolume(DynamicVolume& result);

    SFDynamicVolume* getSFVolume() { return &_sfVolume; }
    SFDynamicVolume* editSFVolume() { return &_sfVolume; }
    SFUInt32* getSFTravMask() { return &_sfTravMask; }
    SFUInt32* editSFTravMask() { return &_sfTravMask; }
    SFNodePtr* getSFParent() { return &_sfParent; }
    SFNodePtr* editSFParent() { return &_sfParent; }
    SFNodeCorePtr* getSFCore() { return &_sfCore; }
    SFNodeCorePtr* editSFCore() { return &_sfCore; }
    MFNodePtr* getMFChildren() { return &_mfChildren; }
    const MFNodePtr* getMFChildren() const { return &_mfChildren; }
    MFNodePtr* editMFChildren() { return &_mfChildren; }

    void changed(BitVector whichField, UInt32 origin) override;

protected:
    friend class NodePtr;

    Node();
    // The copy has the same volume and travMask but no parent, children or core.
    Node(const Node& source);
    // Unlinks and subRefs the core and every child.
    ~Node() override;

    bool isSelfOrAncestor(const NodePtr& node);
    NodePtr thisPtr() { return NodePtr(this); }

    SFDynamicVolume _sfVolume;
    SFUInt32 _sfTravMask;
    SFNodePtr _sfParent;
    MFNodePtr _mfChildren;
    SFNodeCorePtr _sfCore;
};

inline NodeCore* NodePtr::getCore() const
{
    return getCPtr()->getCore().getCPtr();
}

inline NodeCore* CNodePtr::operator->() const
{
    return getCPtr();
}

inline NodeCore& CNodePtr::operator*() const
{
    return *getCPtr();
}

inline NodeCore* CNodePtr::getCPtr() const
{
    return getNode()->getCore().getCPtr();
}

inline Node* CNodePtr::getNode() const
{
    return static_cast<Node*>(_obj);
}

// Helper from the actions: a generic pointer that is known to be a node.
inline NodePtr parentToNode(const FieldContainerPtr& fc)
{
    return NodePtr::dcast(fc);
}

} // namespace osg

#endif
