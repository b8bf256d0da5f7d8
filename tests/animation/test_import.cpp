// Copy and paste through the manager's copy buffer.
#include "AnimationTestSupport.h"

#include <zeAnimation/zeAnimationCurve2D.h>
#include <zeAnimation/zeAnimationStreak.h>
#include <zeAnimation/zeAnimationStrip.h>
#include <zeAnimation/zeAnimationUnit.h>
#include <zeAnimation/zeAnimationUtils.h>
#include <zeAnimation/zeControlPoint2D.h>

#include <OpenSG/OSGGroup.h>
#include <OpenSG/OSGPointLight.h>
#include <zeOpenSGExt/OSGAnimationAttachment.h>
#include <zeOpenSGExt/OSGAnimationBlock.h>
#include <zeOpenSGExt/OSGAnimationClip.h>
#include <zeOpenSGExt/OSGAnimationControlPoint.h>
#include <zeOpenSGExt/OSGAnimationCurve.h>
#include <zeOpenSGExt/OSGAnimationTrack.h>
#include <zeOpenSGExt/OSGCameraSetting.h>
#include <zeOpenSGExt/OSGTransform3D.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

using osg::NodePtr;
using osg::NullFC;

std::vector<bool> pasteCalls;
std::vector<unsigned> progressCalls;

class SceneTest : public AnimationTest
{
protected:
    NodePtr root, boxA, boxB, lamp, camera;

    NodePtr add(const osg::NodeCorePtr& core, const NodePtr& parent)
    {
        NodePtr node = osg::Node::create();
        if (core != NullFC)
            node->setCore(core);
        if (parent != NullFC)
            parent->addChild(node);
        return node;
    }

    void SetUp() override
    {
        AnimationTest::SetUp();
        root = add(osg::Group::create(), NullFC);
        osg::addRefCP(root);
        boxA = add(osg::Transform3D::create(), root);
        boxB = add(osg::Transform3D::create(), root);
        lamp = add(osg::PointLight::create(), root);
        camera = add(osg::CameraSetting::create(), root);
        pasteCalls.clear();
        progressCalls.clear();
        zeAnimationManager::setUpdatePasteCB([](bool available) { pasteCalls.push_back(available); });
        zeAnimationManager::setFileIOProgressCB([](unsigned progress) { progressCalls.push_back(progress); });
    }

    void TearDown() override
    {
        AnimationTest::TearDown();
        zeAnimationManager::setUpdatePasteCB(nullptr);
        zeAnimationManager::setFileIOProgressCB(nullptr);
        osg::subRefCP(root);
    }

    // A block on the node with one curve of two keys, listed on the node.
    zeAnimationUnit* slide(const NodePtr& node, const std::string& attribute = "translationX")
    {
        zeAnimationCurve2D* curve = manager->createCurve2D(node, attribute);
        curve->addObject(manager->createPoint2D(0.0f, 0.0f));
        curve->addObject(manager->createPoint2D(10.0f, 5.0f));
        return manager->createUnit(std::vector<zeAnimationCurve2D*>{curve}, "slide", 0, true);
    }

    static std::vector<osg::UInt64> listed(const NodePtr& node)
    {
        osg::AnimAttachmentPtr attachment = zeAnimationUtils::getAnimationAttachment(node);
        if (attachment == NullFC)
            return {};
        return std::vector<osg::UInt64>(attachment->getObjectIds().begin(), attachment->getObjectIds().end());
    }

    std::vector<zeAnimationObject*> listedObjects(const NodePtr& node)
    {
        return zeAnimationUtils::getAnimationObjects(node);
    }
};

// ---- Copy and paste -----------------------------------------------------------------------------

typedef SceneTest CopyPasteTest;

TEST_F(CopyPasteTest, CopyFillsTheBufferAndReportsEveryChange)
{
    zeAnimationUnit* block = slide(boxA);
    EXPECT_FALSE(manager->copy(static_cast<zeAnimationObject*>(nullptr)));
    EXPECT_TRUE(pasteCalls.empty());

    ASSERT_TRUE(manager->copy(block));
    ASSERT_EQ(manager->getCopyBuffer().size(), 1u);
    zeAnimationObject* duplicate = manager->getCopyBuffer()[0];
    EXPECT_NE(duplicate->getId(), block->getId());
    EXPECT_EQ(duplicate->getName(), "slide");
    EXPECT_EQ(duplicate->getCurves().size(), 1u);
    EXPECT_EQ(listed(boxA), std::vector<osg::UInt64>{block->getId()}); // the copy belongs to no node
    const osg::UInt64 firstCopy = duplicate->getId();

    // A full buffer is emptied (destroying its objects) before it is filled again.
    ASSERT_TRUE(manager->copy(boxA));
    EXPECT_EQ(manager->getObject(firstCopy), nullptr);
    EXPECT_EQ(pasteCalls, (std::vector<bool>{true, false, true}));

    // Nothing to copy: the old contents still go.
    EXPECT_FALSE(manager->copy(sequence(0, 10)));
    EXPECT_TRUE(manager->getCopyBuffer().empty());
    EXPECT_FALSE(manager->copy(std::vector<zeAnimationObject*>{nullptr, nullptr}));
    EXPECT_FALSE(manager->copy(boxB)); // a node without objects
    EXPECT_FALSE(manager->copy(NodePtr()));
    EXPECT_EQ(pasteCalls, (std::vector<bool>{true, false, true, false}));

    // Clearing without destroying leaves the copy registered; an empty buffer reports nothing.
    manager->copy(block);
    const osg::UInt64 kept = manager->getCopyBuffer()[0]->getId();
    manager->clearCopyBuffer(false);
    EXPECT_NE(manager->getObject(kept), nullptr);
    manager->clearCopyBuffer(true);
    manager->terminate();
    EXPECT_EQ(pasteCalls, (std::vector<bool>{true, false, true, false, true, false}));

    // terminate empties a full buffer and destroys what it held.
    manager->copy(block);
    const osg::UInt64 dropped = manager->getCopyBuffer()[0]->getId();
    manager->terminate();
    EXPECT_EQ(manager->getObject(dropped), nullptr);
    EXPECT_EQ(pasteCalls.size(), 8u);
    EXPECT_FALSE(pasteCalls.back());
}

TEST_F(CopyPasteTest, PasteRebindsTheCopiesToTheTargetNodeOnce)
{
    zeAnimationUnit* block = slide(boxA);
    zeAnimationStrip* clip = manager->createStrip("shot", 0);
    clip->addObject(block); // its copy remembers the source's track, which does not list it
    ASSERT_TRUE(manager->copy(block));
    zeAnimationUnit* copy = static_cast<zeAnimationUnit*>(manager->getCopyBuffer()[0]);

    EXPECT_FALSE(manager->paste(NodePtr(), false));
    EXPECT_FALSE(manager->paste(lamp, false)); // a light has no translation
    EXPECT_EQ(manager->getCopyBuffer().size(), 1u);

    ASSERT_TRUE(manager->paste(boxB, false));
    EXPECT_EQ(copy->getCurves()[0]->getAnimationFieldId(), manager->getField(boxB, "translationX")->getId());
    EXPECT_EQ(copy->getParentOSGNode(), boxB);
    EXPECT_EQ(listed(boxB), std::vector<osg::UInt64>{copy->getId()});
    const std::vector<zeAnimationUnit*> sceneUnits = manager->getSceneUnits();
    EXPECT_NE(std::find(sceneUnits.begin(), sceneUnits.end(), copy), sceneUnits.end());
    EXPECT_EQ(block->getCurves()[0]->getAnimationFieldId(), manager->getField(boxA, "translationX")->getId());
    EXPECT_EQ(pasteCalls, (std::vector<bool>{true, false}));

    // The buffer is empty now: pasting again adds nothing and reports nothing.
    EXPECT_TRUE(manager->paste(boxB, false));
    EXPECT_EQ(listed(boxB).size(), 1u);
    EXPECT_EQ(pasteCalls.size(), 2u);

    // force skips the check.
    manager->copy(block);
    EXPECT_TRUE(manager->paste(lamp, true));
    EXPECT_EQ(listed(lamp).size(), 1u);
}

// Run under the sanitizers: buffered objects destroyed by other means are never touched again.
TEST_F(CopyPasteTest, DestroyedCopiesDropOutOfTheBuffer)
{
    zeAnimationUnit* block = slide(boxA);
    manager->copy(block);
    manager->destroyObject(manager->getCopyBuffer()[0]);
    EXPECT_TRUE(manager->getCopyBuffer().empty());
    EXPECT_TRUE(manager->paste(boxB, false)); // the host still learns that the buffer is empty
    EXPECT_TRUE(listed(boxB).empty());
    EXPECT_EQ(pasteCalls, (std::vector<bool>{true, false}));

    manager->copy(std::vector<zeAnimationObject*>{block, block->getCurves()[0]});
    manager->destroyAllObjects(true);
    manager->terminate();
    manager->clearCopyBuffer(true);
    EXPECT_EQ(pasteCalls, (std::vector<bool>{true, false, true, false}));

    // An identifier given to another object later does not bring the copy back.
    block = slide(boxA);
    manager->copy(block);
    const osg::UInt64 id = manager->getCopyBuffer()[0]->getId();
    manager->destroyObject(manager->getCopyBuffer()[0]);
    zeAnimationUnit* stranger = manager->createUnit("stranger", id);
    EXPECT_TRUE(manager->getCopyBuffer().empty());
    manager->clearCopyBuffer(true);
    EXPECT_EQ(manager->getObject(id), stranger);

    // Copying what is in the buffer copies it before the buffer is emptied.
    manager->copy(block);
    zeAnimationObject* buffered = manager->getCopyBuffer()[0];
    const osg::UInt64 bufferedId = buffered->getId();
    ASSERT_TRUE(manager->copy(buffered));
    EXPECT_EQ(manager->getObject(bufferedId), nullptr);
    ASSERT_EQ(manager->getCopyBuffer().size(), 1u);
    EXPECT_EQ(manager->getCopyBuffer()[0]->getCurves().size(), 1u);
}

} // namespace
