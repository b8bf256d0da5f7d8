// Hostile sequences of calls and bad numbers must leave the pool whole. Each test here broke the
// library once.
#include "PlaybackTestSupport.h"

#include <zeAnimation/zeAnimationUtils.h>

#include <zeOpenSGExt/OSGCameraSetting.h>

#include <limits>
#include <random>
#include <utility>
#include <vector>

namespace {

typedef PlaybackTest HardeningTest;

TEST_F(HardeningTest, DestroyingANodesObjectsSurvivesACurveListedAfterItsBlock)
{
    osg::NodePtr node = osg::Node::create();
    node->setCore(osg::ComponentTransform::create());
    osg::addRefCP(node);
    zeAnimationCurve2D* c = manager->createCurve2D(node, "translationX");
    ASSERT_NE(c, nullptr);
    c->addObject(manager->createPoint2D(0.0f, 0.0f));
    zeAnimationUnit* unit = manager->createUnit(std::vector<zeAnimationCurve2D*>{}, "empty", 0, true);
    EXPECT_EQ(unit, nullptr);
    unit = manager->createUnit("holder", 0);
    unit->setParentOSGNode(node);
    zeAnimationUtils::addAnimationObject(node, unit);
    zeAnimationUtils::addAnimationObject(node, c); // listed after the block
    unit->addObject(c);
    manager->destroyNodeObjects(node, true);
    EXPECT_EQ(manager->getObjectCount(), 0u);
    osg::subRefCP(node);
}

// ---- Host callbacks that destroy what the library is working on ------------------------------
// (The soak's callbacks destroy at random, and catch most of these guards taken out; the cases
// below are those it does not reach reliably.)

// What the host callbacks below destroy: objects by identifier, or every field.
std::vector<osg::UInt64> g_victims;
bool g_dropFields = false;
// What the host camera evaluates once, meanwhile.
zeAnimationObject* g_evaluateAgain = nullptr;

void destroyVictims()
{
    zeAnimationManager* m = zeAnimationManager::the();
    for (osg::UInt64 id : g_victims) {
        if (zeAnimationObject* object = m->getObject(id))
            m->destroyObject(object);
    }
    g_victims.clear();
    if (g_dropFields)
        m->destroyAllFields();
}

TEST_F(HardeningTest, AStartTriggerMayDestroyItsOwnSource)
{
    // A block played on its own, and a track walked by its parent's frame.
    zeAnimationUnit* self = block(translation(), 0.0f, 0.0f, 10.0f, 1.0f);
    manager->createConnection(self, zeAnimationManager::TriggerStart, &destroyVictims);
    g_victims = {self->getId()};
    controller->enqueueObject(self, true);
    atFrame(2.0f);
    controller->loop();
    EXPECT_TRUE(g_victims.empty());
    controller->loop();
    EXPECT_TRUE(controller->getPlayQueue().empty());

    zeAnimationStreak* doomed = manager->createStreak(0);
    doomed->addObject(block(translation(), 0.0f, 0.0f, 10.0f, 1.0f));
    manager->createConnection(doomed, zeAnimationManager::TriggerStart, &destroyVictims);
    const osg::UInt64 doomedId = doomed->getId();
    g_victims = {doomedId};
    doomed->triggerLoop(1.0f);
    EXPECT_EQ(manager->getObject(doomedId), nullptr);
}

// The host's camera is called while the viewpoint's view is written field by field.
TEST_F(HardeningTest, TheHostCameraMayDestroyWhatIsBeingWritten)
{
    osg::CameraSettingPtr core = osg::CameraSetting::create();
    core->setIsViewpoint(true);
    osg::NodePtr viewpoint = osg::Node::create();
    viewpoint->setCore(core);
    osg::addRefCP(viewpoint);
    nodes.push_back(viewpoint);
    // A block moving the three components of the view's origin.
    const auto viewBlock = [&] {
        zeAnimationUnit* unit = manager->createUnit("view", 0);
        for (zeAnimationField* field : manager->createAnimationFields(viewpoint)) {
            if (field->name == "viewpoint" && field->attribute == "from")
                unit->addObject(curve(field, 0.0f, 0.0f, 10.0f, 10.0f + static_cast<float>(field->valuePos)));
        }
        EXPECT_EQ(unit->getCurves().size(), 3u);
        return unit;
    };
    zeAnimationManager::setFromAtUpCB(+[](int, const osg::Pnt3f&, const osg::Pnt3f&, const osg::Vec3f&) {
        if (zeAnimationObject* again = std::exchange(g_evaluateAgain, nullptr))
            zeAnimationController::the()->evaluateObject(again, 1.0f, false);
        destroyVictims();
    });

    // The block being evaluated: reported finished.
    zeAnimationUnit* unit = viewBlock();
    g_victims = {unit->getId()};
    EXPECT_TRUE(controller->evaluateObject(unit, 5.0f, false));
    EXPECT_EQ(manager->getObjectCount(), 0u);

    // Active blocks are evaluated one by one; the first one's view write destroys both.
    controller->setEvaluateActiveUnits(true);
    g_victims = {viewBlock()->getId(), viewBlock()->getId()};
    controller->evaluate(2.0f, false);
    EXPECT_TRUE(g_victims.empty());
    EXPECT_EQ(manager->getObjectCount(), 0u);
    controller->setEvaluateActiveUnits(false);

    // The block evaluated again while its own batch is being written: a plan of its own for that.
    unit = viewBlock();
    g_evaluateAgain = unit;
    EXPECT_FALSE(controller->evaluateObject(unit, 4.0f, false));
    EXPECT_EQ(g_evaluateAgain, nullptr);

    // Every field, in the middle of a batch (a block's, or a list of curves'): the rest of the
    // batch is not written.
    g_dropFields = true;
    EXPECT_FALSE(controller->evaluateObject(unit, 7.0f, false));
    EXPECT_EQ(manager->getFieldCount(), 0u);
    EXPECT_EQ(unit->getCurves().front()->getAnimationField(), nullptr);
    controller->evaluateCurves(viewBlock()->getCurves(), 3.0f, false);
    EXPECT_EQ(manager->getFieldCount(), 0u);
    g_dropFields = false;
    zeAnimationManager::setFromAtUpCB(nullptr);
}

// ---- Hierarchy: one parent per object, no cycle, bounded depth ---------------------------------

// (That a child is listed by its parent only, and once: the soak checks it after every step.)
TEST_F(HardeningTest, AChildAddedElsewhereLeavesItsPreviousParent)
{
    // Adding a child again moves it to the end of the list instead of listing it twice.
    zeAnimationUnit* unit = manager->createUnit("u", 0);
    zeAnimationCurve2D* c1 = curve(translation(), 0.0f, 0.0f, 1.0f, 1.0f);
    zeAnimationCurve2D* c2 = curve(translation(), 0.0f, 0.0f, 1.0f, 1.0f);
    unit->addObject(c1);
    unit->addObject(c2);
    unit->addObject(c1);
    EXPECT_EQ(unit->getChildIds(), zeAnimationObject::ChildList({c2->getId(), c1->getId()}));

    // A clip takes a block from the track that held it; setParent moves it out too.
    zeAnimationStrip* clip = manager->createStrip(0);
    zeAnimationStreak* holder = manager->createStreak(0);
    holder->addObject(unit);
    zeAnimationStreak* opened = static_cast<zeAnimationStreak*>(clip->addObject(unit));
    EXPECT_TRUE(holder->isEmpty());
    EXPECT_EQ(unit->getParent(), opened);
    unit->setParent(holder);
    EXPECT_TRUE(opened->isEmpty());
    EXPECT_EQ(unit->getParent(), holder);
    EXPECT_TRUE(holder->isEmpty()); // a parent link alone does not list the child
}

TEST_F(HardeningTest, HierarchiesDeeperThanTheLimitAreRefusedAndEveryLevelIsReached)
{
    // Tracks nested in tracks, a block with a curve at the bottom.
    zeAnimationField* field = translation();
    zeAnimationUnit* bottom = block(field, 0.0f, 0.0f, 10.0f, 10.0f);
    zeAnimationObject* top = bottom;
    int levels = 1;
    for (;;) {
        zeAnimationStreak* track = manager->createStreak(0);
        if (!track->addObject(top)) {
            manager->destroyObject(track);
            break;
        }
        top = track;
        ++levels;
        ASSERT_LT(levels, 100000);
    }
    // The block holds a curve with keys: three levels below the tracks.
    EXPECT_EQ(levels + 2, zeAnimationObject::MaxDepth);
    EXPECT_EQ(top->getEnd(), 10.0f);
    zeAnimationStrip* clip = manager->createStrip(0);
    EXPECT_EQ(clip->addObject(top), nullptr);
    EXPECT_EQ(clip->insertObject(top), nullptr);
    EXPECT_EQ(top->getParentId(), 0u);

    // Every edit and evaluation of the top reaches the bottom.
    top->move(5.0f, true);
    EXPECT_EQ(bottom->getBegin(), 5.0f);
    top->flip();
    top->setActive(false);
    EXPECT_FALSE(bottom->getCurves().front()->isActive());
    top->setActive(true);
    controller->evaluateObject(top, 15.0f, false);
    EXPECT_FLOAT_EQ(scene(field), 0.0f); // flipped: the curve falls from 10 to 0
    top->triggerLoop(6.0f);
    EXPECT_TRUE(bottom->isPlaying());

    const std::size_t objects = manager->getObjectCount();
    zeAnimationObject* copy = manager->duplicateObject(top);
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(manager->getObjectCount(), 2 * objects - 1); // not the clip
    manager->destroyObject(copy);
    EXPECT_EQ(manager->getObjectCount(), objects);
    manager->destroyObject(top);
    EXPECT_EQ(manager->getObjectCount(), 1u);
}

// ---- Insertion follows the overlap rule, however the children were placed ---------------------

// The literal rule: the first track in list order none of whose children collides.
zeAnimationObject* expectedTrack(zeAnimationStrip* clip, float nb, float ne)
{
    for (zeAnimationObject* track : clip->getObjects()) {
        bool collides = false;
        for (zeAnimationObject* child : track->getObjects()) {
            const float cb = child->getBegin();
            const float ce = child->getEnd();
            collides = collides || (cb < nb && nb < ce) || (cb < ne && ne < ce) || (nb <= cb && ce <= ne) ||
                       (cb <= nb && ne <= ce);
        }
        if (!collides)
            return track;
    }
    return nullptr;
}

TEST_F(HardeningTest, InsertionAgreesWithTheOverlapRuleOnRandomLayouts)
{
    std::mt19937 rng(17);
    const auto number = [&rng](int low, int high) {
        return std::uniform_int_distribution<int>(low, high)(rng);
    };
    const float nan = std::numeric_limits<float>::quiet_NaN();
    int placedOnExisting = 0;
    for (int round = 0; round < 40; ++round) {
        zeAnimationStrip* clip = manager->createStrip(0);
        std::vector<zeAnimationSequence*> placed;
        for (int step = 0; step < 150; ++step) {
            const float b = static_cast<float>(number(0, 200)) * 0.5f;
            const float e = number(0, 9) == 0 ? b : b + static_cast<float>(number(1, 40));
            zeAnimationSequence* s = sequence(number(0, 30) == 0 ? nan : b, e);
            switch (number(0, 9)) {
            case 0: // placed without the rule, overlaps and all
                if (zeAnimationStreak* track = clip->getStreak(static_cast<osg::UInt32>(number(0, 5))))
                    track->addObject(s);
                break;
            case 1: // an empty block or track, which count as children of their own kind
                clip->addObject(number(0, 1) ? static_cast<zeAnimationObject*>(manager->createUnit(0))
                                             : manager->createStreak(0));
                break;
            case 2: // children edited afterwards, directly or through the hierarchy
                if (!placed.empty()) {
                    zeAnimationSequence* moved = placed[number(0, static_cast<int>(placed.size()) - 1)];
                    if (number(0, 1))
                        moved->setEnd(moved->getEnd() + static_cast<float>(number(-5, 5)));
                    else
                        moved->move(static_cast<float>(number(-5, 5)), number(0, 1) == 0);
                }
                break;
            default: {
                zeAnimationObject* expected = expectedTrack(clip, s->getBegin(), s->getEnd());
                zeAnimationStreak* got = clip->insertObject(s);
                ASSERT_NE(got, nullptr);
                if (expected)
                    ASSERT_EQ(got, expected) << "round " << round << " step " << step;
                else
                    ASSERT_EQ(got->getChildIds().size(), 1u) << "round " << round << " step " << step;
                placedOnExisting += expected != nullptr;
                break;
            }
            }
            placed.push_back(s);
        }
        manager->destroyObject(clip);
        clearPool();
    }
    EXPECT_GT(placedOnExisting, 1000);
}

// ---- Keys -------------------------------------------------------------------------------------
// (Finite positions, keys listed once and handles owned by their key: the soak checks these after
// every step.)

TEST_F(HardeningTest, KeysMovedOntoAnotherKeysFrameReplaceIt)
{
    // A key moved onto another one's x and added again replaces that key.
    zeAnimationCurve2D* c = manager->createCurve2D();
    c->addObject(manager->createPoint2D(1.0f, 2.0f));
    zeControlPoint2D* k5 = manager->createPoint2D(5.0f, 0.0f);
    c->addObject(k5);
    k5->setX(1.0f);
    c->addObject(k5);
    EXPECT_EQ(c->getChildIds(), zeAnimationObject::ChildList({k5->getId()}));
    const std::size_t objects = manager->getObjectCount();

    // Deleting keys into a target works on live keys: a key taken from the target and moved onto
    // the frame of a pending one replaces nothing that is still to come.
    zeAnimationCurve2D* source = manager->createCurve2D();
    zeAnimationCurve2D* target = manager->createCurve2D();
    zeControlPoint2D* mine = manager->createPoint2D(3.0f, 1.0f);
    zeControlPoint2D* theirs = manager->createPoint2D(4.0f, 9.0f);
    source->addObject(mine);
    target->addObject(theirs);
    source->addObject(theirs);
    EXPECT_TRUE(target->isEmpty());
    theirs->setX(3.0f);
    EXPECT_EQ(source->deletePoints(false, target), 2u);
    EXPECT_TRUE(source->isEmpty());
    EXPECT_EQ(target->getChildIds(), zeAnimationObject::ChildList({theirs->getId()}));
    EXPECT_EQ(manager->getObjectCount(), objects + 3);
}

// ---- Values and enumerations ------------------------------------------------------------------

TEST_F(HardeningTest, NonFiniteAndHugeGlobalFramesGiveWholeFramesWithoutUndefinedCasts)
{
    zeAnimationUnit* unit = block(translation(), 0.0f, 0.0f, 10.0f, 1.0f);
    for (double seconds : {1.0e30, -1.0e30, static_cast<double>(std::numeric_limits<float>::quiet_NaN())}) {
        clock() = 0.0;
        controller->playGlobal(unit->getId(), false, false, 0.0f, 1.0e38f, 0.0f);
        clock() = seconds;
        received.clear();
        controller->playLoop();
        const std::vector<Received> whole = messagesNamed("currentFullFrameChanged");
        if (seconds > 0.0) {
            ASSERT_EQ(whole.size(), 1u);
            EXPECT_EQ(whole.front().fullFrame, std::numeric_limits<int>::max());
        } else if (seconds < 0.0) {
            ASSERT_EQ(whole.size(), 1u);
            EXPECT_EQ(whole.front().fullFrame, std::numeric_limits<int>::min());
        } else {
            EXPECT_TRUE(whole.empty()); // NaN is no frame
        }
    }
}

TEST_F(HardeningTest, EnumerationsCarryTheHostsValuesUnchanged)
{
    typedef zeAnimationManager M;
    zeAnimationSequence* source = sequence(0.0f, 1.0f);
    ASSERT_TRUE(manager->createConnection(source, static_cast<M::AnimationTrigger>(7), source,
                                          static_cast<M::AnimationAction>(9)));
    EXPECT_EQ(static_cast<osg::UInt32>(source->getTriggers().begin()->first), 7u);

    received.clear();
    zeAnimationController::setCurrentFrame(3.0f, static_cast<zeAnimationController::AnimationWidget>(77));
    ASSERT_EQ(received.size(), 1u);
    EXPECT_EQ(received.front().sender, 77);

    zeControlPoint2D* key = manager->createPoint2D(0.0f, 0.0f);
    key->setTangentType(static_cast<zeControlPoint2D::TangentMode>(200));
    EXPECT_EQ(static_cast<osg::UInt32>(key->getTangentType()), 200u);
    // Integer field values saturate.
    EXPECT_EQ(zeAnimationUtils::floatToInt(1.0e30f),
              static_cast<osg::UInt32>(std::numeric_limits<osg::Int32>::max()));
    EXPECT_EQ(zeAnimationUtils::floatToInt(-1.0e30f),
              static_cast<osg::UInt32>(std::numeric_limits<osg::Int32>::min()));
    source->updateBy(source, static_cast<zeAnimationObject::Operation>(4096), true);
}

} // namespace
