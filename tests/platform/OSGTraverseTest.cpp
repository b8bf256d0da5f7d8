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

    Action::ResultE walk(NodePtr& root)
    {
        return traverse(root, TraverseEnterFunctor([this](NodePtr& node) {
                            std::string name = node != NullFC ? getName(node) : "null";
                            visits.push_back(name);
                            if (name == quitAt)
                                return Action::Quit;
                            return name == skipAt ? Action::Skip : Action::Continue;
                        }));
    }
};

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

TEST(Traverse, ACalleeRemovingNodesDoesNotBreakTheWalk)
{
    Scene scene;
    std::vector<std::string> visits;
    traverse(scene.root, TraverseEnterFunctor([&visits](NodePtr& node) {
                 visits.push_back(getName(node));
                 if (std::string(getName(node)) == "a1")
                     node->getParent()->subChild(node); // destroys a1 while it is visited
                 return Action::Continue;
             }));
    EXPECT_EQ(scene.a->getNChildren(), 1u);
    EXPECT_EQ(visits.front(), "root");
    EXPECT_EQ(visits.back(), "b1");
}
