#include <OpenSG/OSGNode.h>
#include <OpenSG/OSGNodeCore.h>

#include <iostream>

namespace osg {

// ---------------------------------------------------------------- NodeCore

FieldContainerType& NodeCore::getClassType()
{
    static FieldContainerType type("NodeCore", &AttachmentContainer::getClassType(), nullptr, nullptr,
                                   {OSG_MFIELD_DESC(NodeCore, MFNodePtr, "parents", Parents, true)});
    return type;
}
OSG_FC_TYPE_FUNCTIONS_IMPL(NodeCore)

NodeCore::NodeCore() = default;

NodeCore::NodeCore(const NodeCore& source) : Inherited(source) {}

NodeCore::~NodeCore()
{
    // Nodes hold a reference on their core, so this only finds parents when the count was
    // released too often; do not leave them pointing at a dead core.
    for (NodePtr& parent : _mfParents)
        parent->editSFCore()->setValue(NodeCorePtr());
}

void NodeCore::invalidateVolume()
{
    for (NodePtr& parent : _mfParents)
        parent->invalidateVolume();
}

void NodeCore::addParent(const NodePtr& parent)
{
    _mfParents.push_back(parent);
}

void NodeCore::subParent(const NodePtr& parent)
{
    auto it = _mfParents.find(parent);
    if (it != _mfParents.end())
        _mfParents.erase(it);
}

void NodeCore::adjustVolume(DynamicVolume&) {}

// ---------------------------------------------------------------- Node

OSG_FC_CREATE_FUNCTIONS_IMPL(Node, Node, NodePtr)

FieldContainerType& Node::getClassType()
{
    static FieldContainerType type("Node", &AttachmentContainer::getClassType(), nullptr, &osgCreateNode,
                                   {OSG_SFIELD_DESC(Node, SFDynamicVolume, "volume", Volume, false),
                                    OSG_SFIELD_DESC(Node, SFUInt32, "travMask", TravMask, false),
                                    OSG_SFIELD_DESC(Node, SFNodePtr, "parent", Parent, true),
                                    OSG_MFIELD_DESC(Node, MFNodePtr, "children", Children, false),
                                    OSG_SFIELD_DESC(Node, SFNodeCorePtr, "core", Core, false)});
    return type;
}
OSG_FC_TYPE_FUNCTIONS_IMPL(Node)

Node::Node() : _sfTravMask(TypeTraits<UInt32>::getMax()) {}

Node::Node(const Node& source)
    : Inherited(source), _sfVolume(source._sfVolume), _sfTravMask(source._sfTravMask)
{}

Node::~Node()
{
    NodePtr self = thisPtr();

    NodePtr parent = _sfParent.getValue();
    if (parent != NullFC) {
        // Still listed by a parent only after an extra subRefCP; unhook without touching counts.
        MFNodePtr* siblings = parent->editMFChildren();
        auto it = siblings->find(self);
        if (it != siblings->end())
            siblings->erase(it);
    }

    NodeCorePtr core = _sfCore.getValue();
    _sfCore.setValue(NodeCorePtr());
    if (core != NullFC) {
        core->subParent(self);
        subRefCP(core);
    }

    MFNodePtr::StorageType children;
    children.swap(_mfChildren.getValues());
    for (NodePtr& child : children) {
        child->_sfParent.setValue(NodePtr());
        subRefCP(child);
    }
}

void Node::setCore(const NodeCorePtr& core)
{
    NodeCorePtr newCore = core;
    NodeCorePtr oldCore = _sfCore.getValue();
    NodePtr self = thisPtr();

    addRefCP(newCore);
    if (oldCore != NullFC) {
        oldCore->subParent(self);
        subRefCP(oldCore);
    }
    _sfCore.setValue(newCore);
    if (newCore != NullFC)
        newCore->addParent(self);
    invalidateVolume();
}

bool Node::isSelfOrAncestor(const NodePtr& node)
{
    for (NodePtr n = thisPtr(); n != NullFC; n = n->getParent())
        if (n == node)
            return true;
    return false;
}

void Node::addChild(const NodePtr& child)
{
    insertChild(_mfChildren.size(), child);
}

void Node::insertChild(UInt32 index, const NodePtr& childArg)
{
    NodePtr child = childArg;
    if (child == NullFC || isSelfOrAncestor(child))
        return;

    // Take the reference first: removing the child from its old parent must not destroy it.
    addRefCP(child);
    NodePtr oldParent = child->getParent();
    if (oldParent != NullFC) {
        beginEditCP(oldParent, ChildrenFieldMask);
        oldParent->subChild(child);
        endEditCP(oldParent, ChildrenFieldMask);
    }

    if (index > _mfChildren.size())
        index = _mfChildren.size();
    _mfChildren.insert(_mfChildren.begin() + index, child);
    child->_sfParent.setValue(thisPtr());
    invalidateVolume();
}

Int32 Node::findChild(const NodePtr& child) const
{
    for (UInt32 i = 0; i < _mfChildren.size(); ++i)
        if (_mfChildren[i] == child)
            return Int32(i);
    return -1;
}

void Node::subChild(const NodePtr& child)
{
    Int32 pos = findChild(child);
    if (pos < 0) {
        std::cerr << "WARNING: Node::subChild: not a child of this node" << std::endl;
        return;
    }
    subChild(UInt32(pos));
}

void Node::subChild(UInt32 index)
{
    if (index >= _mfChildren.size())
        return;
    NodePtr child = _mfChildren[index];
    _mfChildren.erase(_mfChildren.begin() + index);
    child->_sfParent.setValue(NodePtr());
    subRefCP(child);
    invalidateVolume();
}

const DynamicVolume& Node::getVolume(bool) const
{
    return _sfVolume.getValue();
}

void Node::updateVolume()
{
    _sfVolume.getValue().setValid(true);
}

void Node::invalidateVolume()
{
    _sfVolume.getValue().invalidate();
}

void Node::getWorldVolume(DynamicVolume& result)
{
    result = _sfVolume.getValue();
}

void Node::changed(BitVector whichField, UInt32 origin)
{
    if (whichField & (CoreFieldMask | ChildrenFieldMask))
        invalidateVolume();
    if (whichField & TravMaskFieldMask) {
        NodePtr parent = getParent();
        if (parent != NullFC)
            parent->invalidateVolume();
    }
    Inherited::changed(whichField, origin);
}

namespace {
[[maybe_unused]] const bool registered = (NodeCore::getClassType(), Node::getClassType(), true);
} // namespace

} // namespace osg
