#include <OpenSG/OSGAction.h>
#include <OpenSG/OSGGroup.h>
#include <OpenSG/OSGNode.h>
#include <OpenSG/OSGSimpleAttachments.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace osg;

namespace {

// root
// +- a
// |  +- a1
// |  +- a2
// +- b
//    +- b1
struct Scene
{
    NodePtr root, a, a1, a2, b, b1;

    Scene()
    {
        root = make("root");
        a = make("a");
        a1 = make("a1");
        a2 = make("a2");
        b = make("b");
        b1 = make("b1");
        root->addChild(a);
        a->addChild(a1);
        a->addChild(a2);
        root->addChild(b);
        b->addChild(b1);
        a2->setActive(false); // traversal ignores the mask
    }
    ~Scene() { subRefCP(root); }

    static NodePtr make(const char* name)
    {
        NodePtr n = Node::create();
        n->setCore(Group::create());
        setName(n, name);
        return n;
    }
};

struct Recorder
{
    std::vector<std::string> visits;
    std::string skipAt, quitAt;

    Action::ResultE enter(NodePtr& node)
    {
        std::string name = node != NullFC ? getName(node) : "null";
        visits.push_back(name);
        if (name == quitAt)
            return Action::Quit;
        if (name == skipAt)
            return Action::Skip;
        return Action::Continue;
    }
    Action::ResultE leave(NodePtr& node, Action::ResultE result)
    {
        visits.push_back(std::string("/") + getName(node));
        return result;
    }
    // Walks the tree from `root` with the enter functor only, or with enter and leave.
    Action::ResultE walk(NodePtr& root, bool withLeave = false)
    {
        const auto enterFunctor =
            osgTypedMethodFunctor1ObjPtrCPtrRef<Action::ResultE, Recorder, NodePtr>(this, &Recorder::enter);
        if (!withLeave)
            return traverse(root, enterFunctor);
        return traverse(
            root, enterFunctor,
            osgTypedMethodFunctor2ObjPtrCPtrRef<Action::ResultE, Recorder, NodePtr, Action::ResultE>(
                this, &Recorder::leave));
    }
};

std::vector<std::string> functionVisits;
Action::ResultE recordByFunction(NodePtr& node)
{
    functionVisits.push_back(node != NullFC ? getName(node) : "null");
    return Action::Continue;
}
Action::ResultE recordByConstFunction(const NodePtr& node)
{
    functionVisits.push_back(getName(node));
    return Action::Skip;
}

} // namespace

TEST(Traverse, VisitsInPreOrderWhateverTheMaskSkipPrunesAndQuitStops)
{
    Scene scene;
    Recorder all, skip, quit, skipRoot;
    EXPECT_EQ(all.walk(scene.root), Action::Continue);
    EXPECT_EQ(all.visits, (std::vector<std::string>{"root", "a", "a1", "a2", "b", "b1"}));
    skip.skipAt = "a";
    EXPECT_EQ(skip.walk(scene.root), Action::Continue);
    EXPECT_EQ(skip.visits, (std::vector<std::string>{"root", "a", "b", "b1"}));
    quit.quitAt = "a1";
    EXPECT_EQ(quit.walk(scene.root), Action::Quit);
    EXPECT_EQ(quit.visits, (std::vector<std::string>{"root", "a", "a1"}));
    skipRoot.skipAt = "root";
    EXPECT_EQ(skipRoot.walk(scene.root), Action::Continue);
    EXPECT_EQ(skipRoot.visits, (std::vector<std::string>{"root"}));
}

TEST(Traverse, FunctionFunctorsAndNodeLists)
{
    Scene scene;
    functionVisits.clear();
    traverse(scene.b, osgTypedFunctionFunctor1CPtrRef<Action::ResultE, NodePtr>(recordByFunction));
    EXPECT_EQ(functionVisits, (std::vector<std::string>{"b", "b1"}));

    functionVisits.clear();
    std::vector<NodePtr> list{scene.a, scene.b};
    traverse(list, osgTypedFunctionFunctor1CPtrRef<Action::ResultE, NodePtr>(recordByConstFunction));
    EXPECT_EQ(functionVisits, (std::vector<std::string>{"a", "b"}));

    // The enter-only form calls the functor for a null root and reports Continue.
    functionVisits.clear();
    EXPECT_EQ(
        traverse(NodePtr(), osgTypedFunctionFunctor1CPtrRef<Action::ResultE, NodePtr>(recordByFunction)),
        Action::Continue);
    EXPECT_EQ(functionVisits, (std::vector<std::string>{"null"}));
}

TEST(Traverse, EnterLeaveFormCallsLeaveAfterTheChildren)
{
    Scene scene;
    Recorder rec, quit;
    rec.skipAt = "b";
    rec.walk(scene.root, true);
    EXPECT_EQ(rec.visits,
              (std::vector<std::string>{"root", "a", "a1", "/a1", "a2", "/a2", "/a", "b", "/b", "/root"}));
    quit.quitAt = "a1";
    EXPECT_EQ(quit.walk(scene.root, true), Action::Quit);
    // Leave still runs on the way up, with the Quit result.
    EXPECT_EQ(quit.visits, (std::vector<std::string>{"root", "a", "a1", "/a1", "/a", "/root"}));
}

TEST(Traverse, ACalleeRemovingNodesDoesNotBreakTheWalk)
{
    Scene scene;
    struct Remover
    {
        std::vector<std::string> visits;
        Action::ResultE enter(NodePtr& node)
        {
            visits.push_back(getName(node));
            NodePtr parent = node->getParent();
            if (std::string(getName(node)) == "a1")
                parent->subChild(node); // destroys a1 while it is visited
            return Action::Continue;
        }
    } remover;
    traverse(scene.root, osgTypedMethodFunctor1ObjPtrCPtrRef<Action::ResultE, Remover, NodePtr>(
                             &remover, &Remover::enter));
    EXPECT_EQ(scene.a->getNChildren(), 1u);
    EXPECT_EQ(remover.visits.front(), "root");
    EXPECT_EQ(remover.visits.back(), "b1");
}
