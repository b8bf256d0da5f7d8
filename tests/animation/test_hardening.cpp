// A host may do anything inside a callback, destroy objects included; bad numbers and hostile
// sequences of calls must leave the pool whole. Each test here broke the library once.
#include "PlaybackTestSupport.h"

#include <zeAnimation/zeAnimationUtils.h>

#include <zeOpenSGExt/OSGCameraSetting.h>
#include <zeOpenSGExt/OSGPerspectiveCamera2.h>

#include <functional>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace {

// What the host callbacks below destroy: objects by identifier, all fields, or nothing.
struct HostVictims
{
    std::vector<osg::UInt64> objects;
    bool allFields = false;
} g_victims;

void destroyVictims()
{
    zeAnimationManager* m = zeAnimationManager::the();
    for (osg::UInt64 id : g_victims.objects) {
        if (zeAnimationObject* object = m->getObject(id))
            m->destroyObject(object);
    }
    g_victims.objects.clear();
    if (g_victims.allFields)
        m->destroyAllFields();
    g_victims.allFields = false;
}

osg::Pnt3f g_from, g_at;
osg::Vec3f g_up;
osg::PerspectiveCamera2Ptr g_camera;

class HardeningTest : public PlaybackTest
{
protected:
    osg::NodePtr viewpoint;

    void SetUp() override
    {
        PlaybackTest::SetUp();
        g_victims = HostVictims();
        g_from = osg::Pnt3f(1.0f, 2.0f, 3.0f);
        g_at = osg::Pnt3f(0.0f, 0.0f, 0.0f);
        g_up = osg::Vec3f(0.0f, 1.0f, 0.0f);
        zeAnimationManager::setGetFromAtUpCB(+[](int, osg::Pnt3f& from, osg::Pnt3f& at, osg::Vec3f& up) {
            destroyVictims();
            from = g_from;
            at = g_at;
            up = g_up;
        });
        zeAnimationManager::setFromAtUpCB(
            +[](int, const osg::Pnt3f& from, const osg::Pnt3f& at, const osg::Vec3f& up) {
                destroyVictims();
                g_from = from;
                g_at = at;
                g_up = up;
            });
    }

    void TearDown() override
    {
        zeAnimationManager::setGetFromAtUpCB(nullptr);
        zeAnimationManager::setFromAtUpCB(nullptr);
        g_victims = HostVictims();
        if (viewpoint != osg::NullFC)
            osg::subRefCP(viewpoint);
        PlaybackTest::TearDown();
    }

    // A camera node that is the host's viewpoint: its view fields call the camera callbacks.
    osg::NodePtr viewpointNode()
    {
        osg::CameraSettingPtr core = osg::CameraSetting::create();
        core->setIsViewpoint(true);
        viewpoint = osg::Node::create();
        viewpoint->setCore(core);
        osg::addRefCP(viewpoint);
        return viewpoint;
    }

    zeAnimationField* viewField(const std::string& attribute, osg::UInt32 component)
    {
        for (zeAnimationField* field : manager->createAnimationFields(viewpoint)) {
            if (field->name == "viewpoint" && field->attribute == attribute && field->valuePos == component)
                return field;
        }
        return nullptr;
    }

    bool alive(osg::UInt64 id) const { return manager->getObject(id) != nullptr; }
};

// ---- Host callbacks that destroy what the library is working on ------------------------------

TEST_F(HardeningTest, AStartTriggerMayDestroyItsOwnSourceOrAnotherChild)
{
    zeAnimationStreak* track = manager->createStreak(0);
    zeAnimationUnit* first = block(translation(), 0.0f, 0.0f, 10.0f, 1.0f);
    zeAnimationUnit* second = block(translation(), 0.0f, 0.0f, 10.0f, 1.0f);
    track->addObject(first);
    track->addObject(second);
    manager->createConnection(first, zeAnimationManager::TriggerStart, &destroyVictims);
    // The first child's start destroys the second child, which the track visits next.
    g_victims.objects = {second->getId()};
    const osg::UInt64 secondId = second->getId();
    track->triggerLoop(5.0f);
    EXPECT_FALSE(alive(secondId));
    EXPECT_TRUE(first->isPlaying());
    EXPECT_EQ(track->getChildIds().size(), 1u);

    // A block whose start trigger destroys the block itself, played on its own.
    zeAnimationUnit* self = block(translation(), 0.0f, 0.0f, 10.0f, 1.0f);
    manager->createConnection(self, zeAnimationManager::TriggerStart, &destroyVictims);
    const osg::UInt64 selfId = self->getId();
    g_victims.objects = {selfId};
    controller->enqueueObject(self, true);
    atFrame(2.0f);
    controller->loop();
    EXPECT_FALSE(alive(selfId));
    controller->loop();
    EXPECT_TRUE(controller->getPlayQueue().empty());

    // A track whose own start destroys the track: its children are not visited any more.
    zeAnimationStreak* doomed = manager->createStreak(0);
    doomed->addObject(block(translation(), 0.0f, 0.0f, 10.0f, 1.0f));
    manager->createConnection(doomed, zeAnimationManager::TriggerStart, &destroyVictims);
    const osg::UInt64 doomedId = doomed->getId();
    g_victims.objects = {doomedId};
    doomed->triggerLoop(1.0f);
    EXPECT_FALSE(alive(doomedId));
}

TEST_F(HardeningTest, ASequenceCallbackMayDestroyTheObjectBeingShown)
{
    zeAnimationController::setExecuteSequenceCB(+[](const std::string&) { destroyVictims(); });
    // A clip starting at frame 5 with a sequence: showing its beginning runs the sequence, whose
    // host callback destroys the clip.
    const auto clipWithSequence = [this]() {
        zeAnimationStrip* clip = manager->createStrip("clip", 0);
        clip->addObject(sequence(5.0f, 9.0f));
        clip->addObject(block(translation(), 5.0f, 0.0f, 9.0f, 1.0f));
        g_victims.objects = {clip->getId()};
        return clip;
    };
    const std::function<void(zeAnimationStrip*)> shows[] = {
        [&](zeAnimationStrip* clip) {
            controller->enqueueObject(clip, true);
            controller->reset(clip);
        },
        [&](zeAnimationStrip* clip) { controller->gotoEnd(clip); },
        [&](zeAnimationStrip* clip) {
            controller->enqueueObject(clip, true);
            controller->playGlobal(clip->getId(), false, false, 0.0f, 0.0f, 0.0f);
        },
        [&](zeAnimationStrip* clip) { controller->gotoGlobalBegin(clip); }};
    for (const auto& show : shows) {
        zeAnimationStrip* clip = clipWithSequence();
        const osg::UInt64 id = clip->getId();
        show(clip);
        EXPECT_FALSE(alive(id));
        EXPECT_TRUE(controller->getPlayQueue().empty());
        controller->playLoop();
    }
}

TEST_F(HardeningTest, TheSimulationQueryMayDestroyTheSequencesAboutToRun)
{
    zeAnimationController::setIsSimulationEnableCB(+[] {
        destroyVictims();
        return true;
    });
    std::vector<std::string> ran;
    static std::vector<std::string>* log = nullptr;
    log = &ran;
    zeAnimationController::setExecuteSequenceCB([](const std::string& name) { log->push_back(name); });
    zeAnimationSequence* doomed = sequence(0.0f, 10.0f, "doomed");
    zeAnimationSequence* kept = sequence(0.0f, 10.0f, "kept");
    g_victims.objects = {doomed->getId()};
    zeAnimationController::evaluateSequences({doomed, kept}, 3.0f);
    EXPECT_EQ(ran, std::vector<std::string>({"kept"}));
    EXPECT_FALSE(kept->isDirty());
    log = nullptr;
}

TEST_F(HardeningTest, TheViewpointCallbacksMayDestroyThePlayingBlockOrEveryField)
{
    viewpointNode();
    zeAnimationField* fromX = viewField("from", 0);
    zeAnimationField* fromY = viewField("from", 1);
    ASSERT_NE(fromX, nullptr);
    ASSERT_NE(fromY, nullptr);
    zeAnimationUnit* unit = manager->createUnit("view", 0);
    zeAnimationCurve2D* x = curve(fromX, 0.0f, 0.0f, 10.0f, 10.0f);
    zeAnimationCurve2D* y = curve(fromY, 0.0f, 0.0f, 10.0f, 20.0f);
    unit->addObject(x);
    unit->addObject(y);

    // Writing the first view component destroys the playing block.
    const osg::UInt64 unitId = unit->getId();
    g_victims.objects = {unitId};
    controller->enqueueObject(unit, true);
    atFrame(4.0f);
    controller->loop();
    EXPECT_FALSE(alive(unitId));
    controller->loop();

    // Writing the first view component drops every field while the batch is being written.
    zeAnimationUnit* again = manager->createUnit("again", 0);
    again->addObject(curve(viewField("from", 0), 0.0f, 0.0f, 10.0f, 10.0f));
    again->addObject(curve(viewField("from", 1), 0.0f, 0.0f, 10.0f, 20.0f));
    g_victims.allFields = true;
    EXPECT_FALSE(controller->evaluateObject(again, 5.0f, false));
    EXPECT_EQ(manager->getFieldCount(), 0u);
    EXPECT_EQ(again->getCurves().front()->getAnimationField(), nullptr);

    // Reading the view while the node's fields are made drops the fields as they are made.
    osg::subRefCP(viewpoint);
    viewpointNode();
    g_victims.allFields = true;
    const std::vector<zeAnimationField*> made = manager->createAnimationFields(viewpoint);
    for (zeAnimationField* field : made)
        EXPECT_EQ(manager->getField(field->getId()), field);
    g_victims.allFields = true;
    zeAnimationField* from = manager->getField(viewpoint, "from");
    EXPECT_TRUE(from == nullptr || manager->getField(from->getId()) == from);
}

TEST_F(HardeningTest, PauseAndMotionBlurCallbacksMayDestroyTheirObject)
{
    zeAnimationController::setSimulationTimeCB(+[] {
        destroyVictims();
        return 1.0;
    });
    zeAnimationUnit* paused = block(translation(), 0.0f, 0.0f, 10.0f, 1.0f);
    const osg::UInt64 pausedId = paused->getId();
    g_victims.objects = {pausedId};
    controller->pause(paused, true);
    EXPECT_FALSE(alive(pausedId));

    g_camera = osg::PerspectiveCamera2::create();
    g_camera->setShutterSpeed(50.0f);
    zeAnimationController::setMainCameraCB(+[] {
        destroyVictims();
        return g_camera;
    });
    zeAnimationUnit* blurred = block(translation(), 0.0f, 0.0f, 10.0f, 1.0f);
    blurred->setMotionBlur(true);
    const osg::UInt64 blurredId = blurred->getId();
    g_victims.objects = {blurredId};
    controller->executeMotionBlur(0.5f, blurred);
    EXPECT_FALSE(alive(blurredId));

    // Active scene blocks are evaluated one by one; the first one's view write destroys both.
    zeAnimationController::setSimulationTimeCB(&PlaybackTest::hostTime);
    controller->setEvaluateActiveUnits(true);
    viewpointNode();
    zeAnimationUnit* firstUnit = manager->createUnit("first", 0);
    firstUnit->addObject(curve(viewField("from", 0), 0.0f, 10.0f, 10.0f, 20.0f));
    zeAnimationUnit* secondUnit = manager->createUnit("second", 0);
    secondUnit->addObject(curve(viewField("from", 1), 0.0f, 10.0f, 10.0f, 20.0f));
    g_victims.objects = {firstUnit->getId(), secondUnit->getId()};
    controller->evaluate(2.0f, false);
    EXPECT_TRUE(g_victims.objects.empty());
    EXPECT_EQ(manager->getObjectCount(), 0u);
    osg::subRefCP(g_camera);
    g_camera = osg::NullFC;
}

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

// ---- Hierarchy: one parent per object, no cycle, bounded depth ---------------------------------

TEST_F(HardeningTest, AChildAddedElsewhereLeavesItsPreviousParent)
{
    zeAnimationStreak* a = manager->createStreak(0);
    zeAnimationStreak* b = manager->createStreak(0);
    zeAnimationStreak* x = manager->createStreak(0);
    a->addObject(b);
    x->addObject(b);
    EXPECT_TRUE(a->isEmpty());
    EXPECT_EQ(b->getParent(), x);
    // Without the move, a and b would now list each other.
    EXPECT_EQ(b->addObject(a), a);
    EXPECT_EQ(b->getChildIds(), zeAnimationObject::ChildList({a->getId()}));
    zeAnimationObject* copy = manager->duplicateObject(x);
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(manager->getObjectCount(), 6u);

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

// ---- Keys and handles -------------------------------------------------------------------------

TEST_F(HardeningTest, KeysAreListedOnceAtFinitePositionsAndOwnTheirHandles)
{
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float inf = std::numeric_limits<float>::infinity();
    EXPECT_EQ(manager->createPoint2D(nan, 0.0f), nullptr);
    EXPECT_EQ(manager->createPoint2D(0.0f, -inf), nullptr);
    const std::size_t objects = manager->getObjectCount();

    zeAnimationCurve2D* c = manager->createCurve2D();
    zeControlPoint2D* k = manager->createPoint2D(1.0f, 2.0f);
    k->setX(nan);
    k->setY(inf);
    k->setPosition(osg::Pnt2f(nan, 1.0f));
    EXPECT_EQ(k->getPosition(), osg::Pnt2f(1.0f, 2.0f));
    c->addObject(k);
    c->addObject(k);
    EXPECT_EQ(c->getChildIds().size(), 1u);
    c->setPoints({k, k});
    EXPECT_EQ(c->getChildIds().size(), 1u);
    EXPECT_EQ(manager->getObjectCount(), objects + 2);

    // A key moved onto another one's x and added again replaces that key.
    zeControlPoint2D* k5 = manager->createPoint2D(5.0f, 0.0f);
    c->addObject(k5);
    k5->setX(1.0f);
    c->addObject(k5);
    EXPECT_EQ(c->getChildIds(), zeAnimationObject::ChildList({k5->getId()}));

    // A key's handles belong to the key, not to the manager.
    zeControlPoint2D* in = k5->getInTangentPoint();
    manager->destroyObject(in);
    manager->destroyPoint2D(k5->getOutTangentPoint());
    EXPECT_EQ(k5->getInTangentPoint(), in);
    EXPECT_EQ(in->getParentId(), k5->getId());

    EXPECT_EQ(c->deletePoints(true), 1u);
    EXPECT_EQ(manager->getObjectCount(), objects + 1);
    EXPECT_TRUE(c->isEmpty());

    // Deleting keys into a target works on live keys.
    zeAnimationCurve2D* source = manager->createCurve2D();
    zeAnimationCurve2D* target = manager->createCurve2D();
    zeControlPoint2D* mine = manager->createPoint2D(3.0f, 1.0f);
    zeControlPoint2D* theirs = manager->createPoint2D(4.0f, 9.0f);
    source->addObject(mine);
    target->addObject(theirs);
    source->addObject(theirs); // takes it out of the target
    EXPECT_TRUE(target->isEmpty());
    // Both keys at one x: moving the first into the target replaces nothing that is pending.
    theirs->setX(3.0f);
    EXPECT_EQ(source->deletePoints(false, target), 2u);
    EXPECT_TRUE(source->isEmpty());
    EXPECT_EQ(target->getChildIds(), zeAnimationObject::ChildList({theirs->getId()}));
    EXPECT_EQ(manager->getObjectCount(), objects + 4);
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
    source->updateBy(source, static_cast<zeAnimationObject::Operation>(4096), true);
}

} // namespace
