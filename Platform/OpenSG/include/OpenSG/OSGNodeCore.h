#ifndef _OSGNODECORE_H_
#define _OSGNODECORE_H_

#include "OSGAttachmentContainer.h"
#include "OSGDynamicVolume.h"
#include "OSGMatrix.h"
#include "OSGNodeCoreFields.h"
#include "OSGNodeFields.h"

namespace osg {

// What a node is (abstract). A core may be shared by several nodes; "parents" lists them
// (internal, not reference counted: the nodes hold the references to the core).
class OSG_SYSTEMLIB_DLLMAPPING NodeCore : public AttachmentContainer
{
public:
    typedef AttachmentContainer Inherited;
    typedef NodeCorePtr Ptr;

    enum
    {
        ParentsFieldId = Inherited::NextFieldId,
        NextFieldId = ParentsFieldId + 1
    };
    static constexpr BitVector ParentsFieldMask = TypeTraits<BitVector>::One << ParentsFieldId;
    static const bool isNodeCore = true;

    OSG_FC_TYPE_FUNCTIONS_DECL

    MFNodePtr& getParents() { return _mfParents; }
    const MFNodePtr& getParents() const { return _mfParents; }
    MFNodePtr* getMFParents() { return &_mfParents; }
    const MFNodePtr* getMFParents() const { return &_mfParents; }
    MFNodePtr* editMFParents() { return &_mfParents; }

    // Bounding volumes are not computed; this only marks the parents' volumes invalid.
    virtual void invalidateVolume();

protected:
    friend class Node;

    NodeCore();
    // The copy has no parents.
    NodeCore(const NodeCore& source);
    // Clears the core of any node that still uses it.
    ~NodeCore() override;

    void addParent(const NodePtr& parent);
    void subParent(const NodePtr& parent);
    virtual void adjustVolume(DynamicVolume& volume);

    MFNodePtr _mfParents;
};

} // namespace osg

#endif
