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

Action::ResultE visit(NodePtr& node, TraverseEnterFunctor& enter, TraverseLeaveFunctor& leave)
{
    UInt32 id = node.getFieldContainerId();
    Action::ResultE result = enter.call(node);
    if (!stillAlive(node, id))
        return result == Action::Quit ? Action::Quit : Action::Continue;
    if (result == Action::Continue) {
        for (UInt32 i = 0; stillAlive(node, id) && i < node->getNChildren(); ++i) {
            NodePtr child = node->getChild(i);
            if (child == NullFC)
                continue;
            result = visit(child, enter, leave);
            if (result == Action::Quit)
                break;
        }
    } else if (result == Action::Skip) {
        result = Action::Continue;
    }
    if (!stillAlive(node, id))
        return result;
    return leave.call(node, result);
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

Action::ResultE traverse(const std::vector<NodePtr>& nodeList, TraverseEnterFunctor func)
{
    Action::ResultE result = Action::Continue;
    for (const NodePtr& node : nodeList) {
        result = traverse(node, func);
        if (result == Action::Quit)
            break;
    }
    return result;
}

Action::ResultE traverse(NodePtr root, TraverseEnterFunctor enter, TraverseLeaveFunctor leave)
{
    if (root == NullFC)
        return Action::Continue;
    return visit(root, enter, leave);
}

Action::ResultE traverse(const std::vector<NodePtr>& nodeList, TraverseEnterFunctor enter,
                         TraverseLeaveFunctor leave)
{
    Action::ResultE result = Action::Continue;
    for (const NodePtr& node : nodeList) {
        result = traverse(node, enter, leave);
        if (result == Action::Quit)
            break;
    }
    return result;
}

} // namespace osg
