#include <OpenSG/OSGAction.h>

namespace osg {

namespace {

Action::ResultE visitChildren(NodePtr& node, TraverseEnterFunctor& enter)
{
    Action::ResultE result = Action::Continue;
    for (UInt32 i = 0; i < node->getNChildren(); ++i) {
        NodePtr child = node->getChild(i);
        Action::ResultE childResult = enter.call(child);
        if (child == NullFC && childResult != Action::Quit)
            childResult = Action::Continue;
        else if (childResult == Action::Continue)
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
    Action::ResultE result = enter.call(node);
    if (result == Action::Continue) {
        for (UInt32 i = 0; i < node->getNChildren(); ++i) {
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
    return leave.call(node, result);
}

} // namespace

Action::ResultE traverse(NodePtr root, TraverseEnterFunctor func)
{
    Action::ResultE result = func.call(root);
    if (root == NullFC)
        return Action::Continue;
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
