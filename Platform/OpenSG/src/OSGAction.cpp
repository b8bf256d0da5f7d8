#include <OpenSG/OSGAction.h>
#include <OpenSG/OSGFieldContainerFactory.h>

namespace osg {

namespace {

// The callee may have destroyed the node it was given; only descend into a node that is still
// alive (the factory lookup is O(1) and never touches the node itself).
bool stillAlive(const NodePtr& node, UInt32 id)
{
    return node != NullFC && FieldContainerFactory::the()->getContainer(id) == node;
}

Action::ResultE visitChildren(NodePtr& node, TraverseEnterFunctor& enter)
{
    Action::ResultE result = Action::Continue;
    UInt32 nodeId = node.getFieldContainerId();
    for (UInt32 i = 0; stillAlive(node, nodeId) && i < node->getNChildren(); ++i) {
        NodePtr child = node->getChild(i);
        UInt32 id = child != NullFC ? child.getFieldContainerId() : 0;
        Action::ResultE childResult = enter.call(child);
        if (childResult == Action::Continue && stillAlive(child, id))
            childResult = visitChildren(child, enter);
        else if (childResult == Action::Skip)
            childResult = Action::Continue;
        if (childResult == Action::Quit)
            return Action::Quit;
        result = childResult;
    }
    return result;
}

} // namespace

Action::ResultE traverse(NodePtr root, TraverseEnterFunctor func)
{
    UInt32 id = root != NullFC ? root.getFieldContainerId() : 0;
    Action::ResultE result = func.call(root);
    if (!stillAlive(root, id))
        return result == Action::Quit ? Action::Quit : Action::Continue;
    if (result == Action::Skip)
        return Action::Continue;
    if (result == Action::Continue)
        return visitChildren(root, func);
    return result;
}

} // namespace osg
