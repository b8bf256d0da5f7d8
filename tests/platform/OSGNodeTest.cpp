#include "LiveContainers.h"

#include <OpenSG/OSGAttachment.h>
#include <OpenSG/OSGComponentTransform.h>
#include <OpenSG/OSGDirectionalLight.h>
#include <OpenSG/OSGGroup.h>
#include <OpenSG/OSGNode.h>
#include <OpenSG/OSGSimpleAttachments.h>
#include <OpenSG/OSGTransform.h>

#include <gtest/gtest.h>

using namespace osg;

namespace {

NodePtr makeNode(const NodeCorePtr& core)
{
    NodePtr node = Node::create();
    node->setCore(core);
    return node;
}

bool alive(UInt32 id)
{
    return FieldContainerFactory::the()->getContainer(id) != NullFC;
}

} // namespace

TEST(Node, NewNodeIsActiveCorelessAndChildless)
{
    NodePtr node = Node::create();
    EXPECT_EQ(node->getCore(), NullFC);
    EXPECT_EQ(node->getParent(), NullFC);
    EXPECT_EQ(node->getNChildren(), 0u);
    EXPECT_TRUE(node->getActive());
    EXPECT_EQ(node->getTravMask(), 0xFFFFFFFFu);

    node->setActive(false);
    EXPECT_EQ(node->getTravMask(), 0u);
    EXPECT_FALSE(node->getActive());
    node->setTravMask(1);
    EXPECT_FALSE(node->getActive()); // only all ones counts as active
    node->setActive(true);
    EXPECT_TRUE(node->getActive());
    subRefCP(node);
}

TEST(Node, ChildrenAreReferencedAndReleased)
{
    unsigned before = liveContainers();
    NodePtr root = makeNode(Group::create());
    addRefCP(root);
    NodePtr a = makeNode(Group::create());
    NodePtr b = makeNode(Group::create());
    root->addChild(a);
    root->addChild(b);
    root->addChild(NodePtr()); // ignored

    EXPECT_EQ(root->getNChildren(), 2u);
    EXPECT_EQ(root->getChild(0), a);
    EXPECT_EQ(root->getChild(5), NullFC);
    EXPECT_EQ(a->getParent(), root);
    EXPECT_EQ(a.getRefCount(), 1);
    EXPECT_EQ(root->findChild(b), 1);
    EXPECT_EQ(root->findChild(root), -1);

    UInt32 idA = getContainerId(a);
    UInt32 coreA = getContainerId(a->getCore());
    root->subChild(a);
    EXPECT_FALSE(alive(idA));   // its only reference was the parent's
    EXPECT_FALSE(alive(coreA)); // and the node held the core's only reference
    EXPECT_EQ(root->getNChildren(), 1u);

    addRefCP(b);
    root->subChild(UInt32(0));
    EXPECT_EQ(b->getParent(), NullFC);
    EXPECT_EQ(b.getRefCount(), 1);
    subRefCP(b);

    subRefCP(root);
    EXPECT_EQ(liveContainers(), before);
}

TEST(Node, AddChildMovesANodeFromItsOldParentAndRefusesCycles)
{
    unsigned before = liveContainers();
    NodePtr p1 = makeNode(Group::create());
    NodePtr p2 = makeNode(Group::create());
    addRefCP(p1);
    addRefCP(p2);
    NodePtr child = makeNode(Group::create());
    p1->addChild(child);
    p2->addChild(child);

    EXPECT_EQ(p1->getNChildren(), 0u);
    EXPECT_EQ(p2->getNChildren(), 1u);
    EXPECT_EQ(child->getParent(), p2);
    EXPECT_EQ(child.getRefCount(), 1);

    p2->addChild(child); // re-adding to the same parent keeps one entry
    EXPECT_EQ(p2->getNChildren(), 1u);
    EXPECT_EQ(child.getRefCount(), 1);

    child->addChild(p2); // p2 is child's ancestor: refused
    child->addChild(child);
    EXPECT_EQ(child->getNChildren(), 0u);

    NodePtr other = makeNode(Group::create());
    p2->insertChild(0, other);
    EXPECT_EQ(p2->getChild(0), other);
    p2->insertChild(99, makeNode(Group::create())); // past the end: appended
    EXPECT_EQ(p2->getChild(1), child);
    EXPECT_EQ(p2->getNChildren(), 3u);

    subRefCP(p1);
    subRefCP(p2);
    EXPECT_EQ(liveContainers(), before);
}

TEST(Node, SetCoreCountsReferencesAndListsParents)
{
    unsigned before = liveContainers();
    GroupPtr shared = Group::create();
    NodePtr n1 = makeNode(shared);
    NodePtr n2 = makeNode(shared);
    EXPECT_EQ(shared.getRefCount(), 2);
    ASSERT_EQ(shared->getParents().size(), 2u);
    EXPECT_EQ(shared->getParents()[0], n1);
    EXPECT_EQ(n1.getCore(), shared.getCPtr());

    n1->setCore(shared); // same core again: nothing changes
    EXPECT_EQ(shared.getRefCount(), 2);
    EXPECT_EQ(shared->getParents().size(), 2u);

    UInt32 sharedId = getContainerId(shared);
    n1->setCore(Transform::create());
    EXPECT_EQ(shared.getRefCount(), 1);
    EXPECT_EQ(shared->getParents().size(), 1u);
    subRefCP(n2);
    EXPECT_FALSE(alive(sharedId));

    subRefCP(n1);
    EXPECT_EQ(liveContainers(), before);
}

TEST(AttachmentContainer, FindsAttachmentsByGroupAndBinding)
{
    unsigned before = liveContainers();
    NodePtr node = Node::create();
    addRefCP(node);
    NamePtr n0 = Name::create();
    NamePtr n1 = Name::create();
    n0->getField().setValue("zero");
    n1->getField().setValue("one");
    node->addAttachment(n0);
    node->addAttachment(n1, 1);

    EXPECT_EQ(node->findAttachment(Name::getClassType().getGroupId()), n0);
    EXPECT_EQ(node->findAttachment(Name::getClassType(), 1), n1);
    EXPECT_EQ(node->findAttachment(Name::getClassType(), 2), NullFC);
    EXPECT_EQ(node->findAttachment(Attachment::getClassGroupId()), NullFC);
    EXPECT_EQ(n0.getRefCount(), 1);
    ASSERT_EQ(n0->getParents().size(), 1u);
    EXPECT_EQ(n0->getParents()[0], node);
    EXPECT_EQ(node->getSFAttachments()->getValue().size(), 2u);

    // A second attachment of the same group and binding replaces (and releases) the first.
    UInt32 id0 = getContainerId(n0);
    NamePtr replacement = Name::create();
    node->addAttachment(replacement);
    EXPECT_FALSE(alive(id0));
    EXPECT_EQ(node->findAttachment(Name::getClassType()), replacement);

    node->subAttachment(n1, 1);
    EXPECT_EQ(node->findAttachment(Name::getClassType(), 1), NullFC);

    // A plain Attachment lives in its own group, next to the name.
    AttachmentPtr plain = Attachment::create();
    node->addAttachment(plain);
    EXPECT_EQ(node->findAttachment(Attachment::getClassGroupId()), plain);
    EXPECT_EQ(node->findAttachment(Name::getClassType()), replacement);

    subRefCP(node); // releases the remaining attachments too
    EXPECT_EQ(liveContainers(), before);
}

TEST(AttachmentContainer, AnAttachmentSharedByTwoContainersLivesUntilBothRelease)
{
    unsigned before = liveContainers();
    NodePtr a = Node::create();
    NodePtr b = Node::create();
    AttachmentPtr att = Attachment::create();
    a->addAttachment(att);
    b->addAttachment(att);
    EXPECT_EQ(att.getRefCount(), 2);
    EXPECT_EQ(att->getParents().size(), 2u);

    UInt32 id = getContainerId(att);
    subRefCP(a);
    EXPECT_TRUE(alive(id));
    EXPECT_EQ(att->getParents().size(), 1u);
    subRefCP(b);
    EXPECT_FALSE(alive(id));
    EXPECT_EQ(liveContainers(), before);
}

TEST(Name, GetAndSetNameThroughTheNameAttachment)
{
    unsigned before = liveContainers();
    NodePtr node = Node::create();
    EXPECT_EQ(getName(node), nullptr);
    EXPECT_EQ(getName(NodePtr()), nullptr);

    setName(node, std::string("camera"));
    ASSERT_NE(getName(node), nullptr);
    EXPECT_STREQ(getName(node), "camera");
    setName(node, "beacon");
    EXPECT_STREQ(getName(node), "beacon");
    EXPECT_EQ(node->getSFAttachments()->getValue().size(), 1u);
    EXPECT_NE(NamePtr::dcast(node->findAttachment(Name::getClassGroupId())), NullFC);

    setName(node, static_cast<const Char8*>(nullptr));
    EXPECT_EQ(getName(node), nullptr);
    setName(NodePtr(), "ignored");

    subRefCP(node);
    EXPECT_EQ(liveContainers(), before);
}

TEST(Light, DefaultsAndReferencedBeacon)
{
    unsigned before = liveContainers();
    DirectionalLightPtr light = DirectionalLight::create();
    EXPECT_EQ(light->getAmbient(), Color4f(0, 0, 0, 1));
    EXPECT_EQ(light->getDiffuse(), Color4f(1, 1, 1, 1));
    EXPECT_EQ(light->getDirection(), Vec3f(0, 0, 1));
    EXPECT_TRUE(light->getOn());
    EXPECT_EQ(DirectionalLight::DirectionFieldId, 13u);
    light->setDiffuse(0.5f, 0.25f, 0.f, 1.f);
    EXPECT_FLOAT_EQ(light->getDiffuse()[1], 0.25f);

    NodePtr beacon = Node::create();
    light->setBeacon(beacon);
    EXPECT_EQ(beacon.getRefCount(), 1);
    subRefCP(light);
    EXPECT_EQ(liveContainers(), before); // the beacon went with the light's reference
}
