// Copy and paste through the manager's copy buffer, the import of the animation containers of
// older scenes, and curves from the interchange importer.
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
#include <cmath>
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
        boxB = add(osg::Transform3D::create(), boxA); // one level deeper: the scene walks reach every depth
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
    zeAnimationUnit* slide(const NodePtr& node)
    {
        zeAnimationCurve2D* curve = manager->createCurve2D(node, "translationX");
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
    EXPECT_EQ(listed(boxB), std::vector<osg::UInt64>{copy->getId()});
    const std::vector<zeAnimationUnit*> sceneUnits = manager->getSceneUnits();
    EXPECT_NE(std::find(sceneUnits.begin(), sceneUnits.end(), copy), sceneUnits.end());
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

// ---- Import of older scenes ---------------------------------------------------------------------

class ImportTest : public SceneTest
{
protected:
    osg::AnimationControlPointPtr oldPoint(float x, float y, osg::UInt32 tangentType = 2)
    {
        osg::AnimationControlPointPtr point = osg::AnimationControlPoint::create();
        point->setPosition(osg::Pnt2f(x, y));
        point->setTangentType(tangentType);
        return point;
    }

    osg::AnimationCurvePtr oldCurve(const NodePtr& node, const std::string& fieldName,
                                    std::initializer_list<osg::AnimationControlPointPtr> points = {})
    {
        osg::AnimationCurvePtr curve = osg::AnimationCurve::create();
        curve->setAFAppNode(node);
        curve->setAFFieldName(fieldName);
        for (const osg::AnimationControlPointPtr& point : points)
            curve->pushToControlPoints(point);
        return curve;
    }

    osg::AnimationBlockPtr oldBlock(const std::string& name, const NodePtr& node,
                                    std::initializer_list<osg::AnimationCurvePtr> curves)
    {
        osg::AnimationBlockPtr block = osg::AnimationBlock::create();
        block->setName(name);
        block->setNode(node);
        for (const osg::AnimationCurvePtr& curve : curves)
            block->pushToCurves(curve);
        return block;
    }

    static osg::AnimationClipPtr oldClip(const std::string& name)
    {
        osg::AnimationClipPtr clip = osg::AnimationClip::create();
        clip->setName(name);
        return clip;
    }

    osg::AnimationAttachmentPtr oldAttachment(const NodePtr& node)
    {
        osg::AnimationAttachmentPtr old = osg::AnimationAttachment::create();
        node->addAttachment(old);
        return old;
    }

    template <class T>
    T* named(const std::string& name, osg::UInt32 typeId)
    {
        zeAnimationObject* object = manager->getObject(name);
        return object && object->getTypeID() == typeId ? static_cast<T*>(object) : nullptr;
    }

    bool anyOldAttachment()
    {
        for (const NodePtr& node : {root, boxA, boxB, lamp, camera}) {
            if (zeAnimationUtils::getOldAnimationAttachment(node) != NullFC)
                return true;
        }
        return false;
    }

    static osg::UInt64 fieldOf(const zeAnimationUnit* block, std::size_t curve = 0)
    {
        return block->getCurves().at(curve)->getAnimationFieldId();
    }
};

TEST_F(ImportTest, EveryOldContainerBecomesAnObjectBoundToItsNode)
{
    // The root: a clip of a block, a nested clip and a track (block and sequence entry), and a
    // block that animates the camera.
    osg::AnimationClipPtr intro = oldClip("intro");
    intro->setFlipped(true);
    intro->setRepeating(true);
    intro->setMotionBlur(true);
    intro->pushToBlocks(
        oldBlock("lift", boxA, {oldCurve(boxA, "translationY", {oldPoint(0, 0), oldPoint(5, 1)})}));
    intro->pushToClips(oldClip("inner"));
    osg::AnimationTrackPtr track = osg::AnimationTrack::create();
    track->pushToBlocks(
        oldBlock("grow", boxB, {oldCurve(boxB, "scaleX", {oldPoint(20, 1), oldPoint(30, 2)})}));
    osg::AnimationBlockPtr countdown = oldBlock("countdown", NodePtr(), {});
    countdown->setStart(5.0f);
    countdown->setEnd(15.0f);
    track->pushToSequences(countdown);
    intro->pushToTracks(track);
    osg::AnimationAttachmentPtr rootOld = oldAttachment(root);
    rootOld->pushToClips(intro);
    rootOld->pushToBlocks(oldBlock("dolly", NodePtr(), {oldCurve(NodePtr(), "fromZ", {oldPoint(0, 10)})}));

    // A node's own blocks and clips; the first key carries its handles, the second has none.
    osg::AnimationControlPointPtr free = oldPoint(0, 0, 6);
    free->setHasTangents(true);
    free->setInTangent(osg::Pnt2f(-1, 0));
    free->setOutTangent(osg::Pnt2f(2, 1));
    osg::AnimationBlockPtr walk =
        oldBlock("walk", boxA, {oldCurve(boxA, "translationX", {free, oldPoint(10, 5, 3)})});
    walk->setRepeating(true);
    walk->setFlipped(true);
    oldAttachment(boxA)->pushToBlocks(walk);
    oldAttachment(lamp)->pushToClips(oldClip("glow"));

    manager->importKORUAnimations(root, camera, 5);

    zeAnimationStrip* clip = named<zeAnimationStrip>("intro", 5);
    ASSERT_NE(clip, nullptr);
    EXPECT_TRUE(clip->isFlipped());
    EXPECT_TRUE(clip->getMotionBlur());
    EXPECT_EQ(clip->getStreakAmount(), 3u); // one track each for the block and the nested clip
    zeAnimationUnit* lift = named<zeAnimationUnit>("lift", 3);
    ASSERT_NE(lift, nullptr);
    EXPECT_EQ(fieldOf(lift), manager->getField(boxA, "translationY")->getId());
    EXPECT_TRUE(lift->isRepeating()); // the clip's flags reach down
    zeAnimationStreak* oldTrack = clip->getStreak(2);
    ASSERT_NE(oldTrack, nullptr);
    EXPECT_EQ(oldTrack->getName(), "Track");
    ASSERT_EQ(oldTrack->getUnits().size(), 1u);
    EXPECT_EQ(fieldOf(oldTrack->getUnits()[0]), manager->getField(boxB, "scaleX")->getId());
    ASSERT_EQ(oldTrack->getSequences().size(), 1u);
    zeAnimationSequence* sequence = oldTrack->getSequences()[0];
    EXPECT_EQ(sequence->getName(), "countdown");
    EXPECT_EQ(sequence->getBegin(), 5.0f);
    EXPECT_EQ(sequence->getEnd(), 15.0f);
    EXPECT_EQ(clip->getSequenceIds().count(sequence->getId()), 1u);

    zeAnimationUnit* dolly = named<zeAnimationUnit>("dolly", 3);
    ASSERT_NE(dolly, nullptr);
    EXPECT_EQ(listed(camera), std::vector<osg::UInt64>{dolly->getId()});
    EXPECT_EQ(fieldOf(dolly), manager->getField(camera, "fromZ")->getId());

    zeAnimationUnit* walked = named<zeAnimationUnit>("walk", 3);
    ASSERT_NE(walked, nullptr);
    EXPECT_EQ(listed(boxA), std::vector<osg::UInt64>{walked->getId()});
    EXPECT_TRUE(walked->isRepeating());
    const zeAnimationCurve2D::PointMap keys = walked->getCurves()[0]->getPoints();
    ASSERT_EQ(keys.size(), 2u);
    zeControlPoint2D* first = keys.begin()->second;
    EXPECT_EQ(first->getTangentType(), zeControlPoint2D::TangentFree);
    EXPECT_EQ(first->getInTangent(), osg::Vec2f(-1, 0));
    EXPECT_EQ(first->getOutTangent(), osg::Vec2f(2, 1));
    zeControlPoint2D* last = keys.rbegin()->second;
    EXPECT_EQ(last->getPosition(), osg::Pnt2f(10, 5));
    EXPECT_EQ(last->getTangentType(), zeControlPoint2D::TangentSmooth);
    EXPECT_NE(last->getInTangent(), osg::Vec2f(10, 5)); // placed by its rule

    zeAnimationStrip* lampClip = named<zeAnimationStrip>("glow", 5);
    ASSERT_NE(lampClip, nullptr);
    EXPECT_EQ(listed(lamp), std::vector<osg::UInt64>{lampClip->getId()});
    EXPECT_TRUE(listed(root).empty()); // the root's clips stand on their own

    EXPECT_FALSE(anyOldAttachment());
    EXPECT_EQ(progressCalls, (std::vector<unsigned>{20, 40, 60, 80, 100}));
}

TEST_F(ImportTest, WithoutARootAttachmentOrACameraTheRestIsStillImported)
{
    oldAttachment(boxA)->pushToBlocks(
        oldBlock("walk", boxA, {oldCurve(boxA, "translationX", {oldPoint(0, 0)})}));
    testing::internal::CaptureStdout();
    manager->importKORUAnimations(root, NodePtr(), 10);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_NE(named<zeAnimationUnit>("walk", 3), nullptr);
    EXPECT_EQ(progressCalls, (std::vector<unsigned>{10, 20, 30, 40, 50}));

    // Without a camera the root's blocks are skipped, with one message.
    osg::AnimationAttachmentPtr rootOld = oldAttachment(root);
    rootOld->pushToBlocks(oldBlock("dolly", NodePtr(), {oldCurve(NodePtr(), "fromZ", {oldPoint(0, 10)})}));
    rootOld->pushToBlocks(oldBlock("pan", NodePtr(), {}));
    rootOld->pushToClips(oldClip("intro"));
    oldAttachment(boxB)->pushToBlocks(oldBlock("grow", boxB, {oldCurve(boxB, "scaleX", {oldPoint(0, 1)})}));
    progressCalls.clear();
    testing::internal::CaptureStdout();
    manager->importKORUAnimations(root, NodePtr(), 0);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "Error importing old camera animations! No perspective camera found!\n");
    EXPECT_EQ(manager->getObject("dolly"), nullptr);
    EXPECT_NE(named<zeAnimationStrip>("intro", 5), nullptr);
    EXPECT_NE(named<zeAnimationUnit>("grow", 3), nullptr);
    EXPECT_FALSE(anyOldAttachment());
    // With no expected node count every node reports that the work is done.
    EXPECT_EQ(progressCalls, std::vector<unsigned>(5, 100));

    manager->importKORUAnimations(NodePtr(), camera, 1);
    EXPECT_EQ(progressCalls.size(), 5u);
}

TEST_F(ImportTest, APartlyConvertibleSceneImportsAsFarAsPossible)
{
    NodePtr coreless = add(NullFC, root);
    // Curves naming no field of their node are dropped, with their block kept; a curve finds its
    // node through the appropriate node or its block, and its field through the attribute or the
    // scene field's name and component.
    osg::AnimationCurvePtr byAppropriate = oldCurve(NodePtr(), "scaleZ", {oldPoint(0, 1)});
    byAppropriate->setAFAppropriateNode(boxB);
    osg::AnimationCurvePtr byAttribute = oldCurve(NodePtr(), "", {oldPoint(0, 2)});
    byAttribute->setAFAttribute("scaleY");
    osg::AnimationCurvePtr bySceneField =
        oldCurve(NodePtr(), "translation", {oldPoint(0, 3), oldPoint(std::nanf(""), 1), oldPoint(5, 4)});
    bySceneField->setAFValuePosition(2);
    osg::AnimationBlockPtr mixed = oldBlock("mixed", boxA,
                                            {oldCurve(boxA, "wobble", {oldPoint(0, 0)}), byAppropriate,
                                             byAttribute, bySceneField, oldCurve(lamp, "scaleX")});
    mixed->getCurves().push_back(osg::AnimationCurvePtr()); // a missing child
    osg::AnimationAttachmentPtr boxOld = oldAttachment(boxA);
    boxOld->pushToBlocks(mixed);
    boxOld->pushToBlocks(oldBlock("lost", NodePtr(), {oldCurve(NodePtr(), "translationX")}));
    boxOld->getClips().push_back(osg::AnimationClipPtr());
    oldAttachment(coreless)->pushToBlocks(oldBlock("blink", coreless, {oldCurve(coreless, "visible")}));

    // A clip that contains itself, and a block listed twice.
    osg::AnimationClipPtr loop = oldClip("loop");
    loop->pushToClips(loop);
    osg::AnimationTrackPtr track = osg::AnimationTrack::create();
    osg::AnimationBlockPtr twice = oldBlock("twice", boxB, {oldCurve(boxB, "translationZ")});
    track->pushToBlocks(twice);
    track->pushToBlocks(twice);
    loop->pushToTracks(track);
    oldAttachment(boxB)->pushToClips(loop);
    osg::addRefCP(loop);

    manager->importKORUAnimations(root, camera, 6);
    loop->removeFromClips(loop);
    osg::subRefCP(loop);

    zeAnimationUnit* block = named<zeAnimationUnit>("mixed", 3);
    ASSERT_NE(block, nullptr);
    ASSERT_EQ(block->getCurves().size(), 3u);
    std::vector<osg::UInt64> fields;
    for (zeAnimationCurve2D* curve : block->getCurves())
        fields.push_back(curve->getAnimationFieldId());
    std::sort(fields.begin(), fields.end());
    std::vector<osg::UInt64> expected{manager->getField(boxB, "scaleZ")->getId(),
                                      manager->getField(boxA, "scaleY")->getId(),
                                      manager->getField(boxA, "translationZ")->getId()};
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(fields, expected);
    for (zeAnimationCurve2D* curve : block->getCurves()) {
        if (curve->getAnimationFieldId() == manager->getField(boxA, "translationZ")->getId()) {
            EXPECT_EQ(curve->getPoints().size(), 2u); // the key at no finite frame is dropped
        }
    }
    zeAnimationUnit* lost = named<zeAnimationUnit>("lost", 3);
    ASSERT_NE(lost, nullptr);
    EXPECT_TRUE(lost->isEmpty());
    zeAnimationUnit* blink = named<zeAnimationUnit>("blink", 3);
    ASSERT_NE(blink, nullptr);
    EXPECT_EQ(blink->getParentOSGNode(), coreless);
    EXPECT_EQ(blink->getCurves().size(), 1u);

    zeAnimationStrip* clip = named<zeAnimationStrip>("loop", 5);
    ASSERT_NE(clip, nullptr);
    EXPECT_EQ(clip->getStreakAmount(), 1u);
    EXPECT_EQ(clip->getUnits().size(), 1u);
    EXPECT_EQ(listed(boxB), std::vector<osg::UInt64>{clip->getId()});
    EXPECT_FALSE(anyOldAttachment());
    EXPECT_EQ(zeAnimationUtils::getOldAnimationAttachment(coreless), NullFC);
}

TEST_F(ImportTest, NestingDeeperThanAHierarchyMayBeIsCutOff)
{
    osg::AnimationClipPtr top = oldClip("top");
    osg::AnimationClipPtr current = top;
    for (int i = 0; i < zeAnimationObject::MaxDepth + 50; ++i) {
        current->pushToClips(oldClip("nested"));
        current = current->getClips(0);
    }
    oldAttachment(boxA)->pushToClips(top);
    manager->importKORUAnimations(root, camera, 5);
    // What fits hangs below the top clip; nothing is left over beside it.
    const std::vector<zeAnimationStrip*> strips = manager->getSceneStrips();
    ASSERT_EQ(strips.size(), 1u);
    EXPECT_EQ(strips[0]->getName(), "top");
    std::size_t nested = 0;
    for (const auto& entry : manager->getObjects())
        nested += entry.second->getName() == "nested" ? 1 : 0;
    EXPECT_GT(nested, 10u);
    EXPECT_LT(nested, static_cast<std::size_t>(zeAnimationObject::MaxDepth));
    EXPECT_EQ(zeAnimationUtils::getOldAnimationAttachment(boxA), NullFC);
}

// ---- Interchange curves -------------------------------------------------------------------------

TEST_F(ImportTest, InterchangeCurvesMatchTheirChannelNamesExactly)
{
    const char* const channels[][2] = {
        {"TransformTX", "translationX"}, {"TransformRY", "rotationY"}, {"TransformSZ", "scaleZ"}};
    for (const auto& channel : channels) {
        zeAnimationCurve2D* curve = manager->createCurve2D(boxA, channel[0], {}, 0, false);
        ASSERT_NE(curve, nullptr) << channel[0];
        EXPECT_EQ(curve->getAnimationFieldId(), manager->getField(boxA, channel[1])->getId());
    }
    std::vector<zeControlPoint2D*> points{manager->createPoint2D(10, 3), manager->createPoint2D(0, 1)};
    zeAnimationCurve2D* fov = manager->createCurve2D(camera, "Fov", points, 0, true);
    ASSERT_NE(fov, nullptr);
    EXPECT_EQ(fov->getAnimationFieldId(), manager->getField(camera, "fieldOfView")->getId());
    EXPECT_EQ(fov->getPoints().size(), 2u);
    EXPECT_EQ(fov->getBegin(), 0.0f);
    EXPECT_EQ(listed(camera), std::vector<osg::UInt64>{fov->getId()});

    for (const char* wrong : {"fov", "Fov ", "TransformT", "TransformTXY", "transformTX"}) {
        testing::internal::CaptureStdout();
        EXPECT_EQ(manager->createCurve2D(boxA, wrong, {}, 0, false), nullptr);
        EXPECT_EQ(testing::internal::GetCapturedStdout(),
                  std::string("zeAnimationManager::importKWXCurve failed! Could not recognize attribute ") +
                      wrong + "!\n");
    }
    EXPECT_EQ(manager->createCurve2D(lamp, "Fov", {}, 0, false), nullptr); // no such field
    EXPECT_EQ(manager->createCurve2D(NodePtr(), "Fov", {}, 0, false), nullptr);
    // An identifier that is free is used, one in use is not.
    EXPECT_EQ(manager->createCurve2D(boxB, "TransformSX", {}, 4242, false)->getId(), 4242u);
    zeAnimationCurve2D* second = manager->createCurve2D(boxB, "TransformSY", {}, 4242, false);
    EXPECT_NE(second->getId(), 4242u);
    EXPECT_EQ(manager->getObject(second->getId()), second);
}

} // namespace
