// Transport driven by a simulated host clock: global playback (messages, ranges, reverse, repeat,
// whole frames, pause) and per-object playback (queue, play ranges, pause, stop, reset), read
// back from the scene and from the host messages.
#include "PlaybackTestSupport.h"

#include <zeAnimation/zeAnimationUtils.h>

#include <vector>

namespace {

// Most tests play one block holding a ramp from (0, 0) to (50, 100) on a field of its own.
class TransportTest : public PlaybackTest
{
protected:
    zeAnimationField* field = nullptr;
    zeAnimationUnit* unit = nullptr;
    zeAnimationCurve2D* c = nullptr;

    static std::vector<float>& cursor()
    {
        static std::vector<float> frames;
        return frames;
    }
    static void moveCursor(float frame) { cursor().push_back(frame); }

    void SetUp() override
    {
        PlaybackTest::SetUp();
        cursor().clear();
        field = translation();
        unit = block(field, 0.0f, 0.0f, 50.0f, 100.0f, "door");
        c = firstCurve(unit);
    }
};
typedef TransportTest GlobalPlaybackTest;
typedef TransportTest ObjectPlaybackTest;

TEST_F(GlobalPlaybackTest, PlaysForwardSendingFramesAndFinishesPastTheEnd)
{
    controller->playGlobal(unit->getId(), false, false, 0.0f, 50.0f, 0.0f);
    globalPass(0.0);
    EXPECT_FALSE(controller->isPlaying()); // global playback is not per-object playback
    EXPECT_FLOAT_EQ(scene(field), at(c, 0.0f));
    ASSERT_EQ(received.size(), 1u);
    EXPECT_EQ(received[0].name, "currentFrameChanged");
    EXPECT_TRUE(received[0].typed);
    EXPECT_EQ(received[0].frame, 0.0f);
    EXPECT_EQ(received[0].sender, 3);

    globalPass(0.5);
    EXPECT_FLOAT_EQ(scene(field), at(c, 12.5f));
    ASSERT_EQ(received.size(), 3u);
    EXPECT_EQ(received[1].frame, 12.5f);
    EXPECT_EQ(received[2].name, "currentFullFrameChanged");
    EXPECT_TRUE(received[2].typed);
    EXPECT_EQ(received[2].fullFrame, 12);

    globalPass(0.51); // frame 12.75: same whole frame, no whole-frame message
    EXPECT_EQ(messagesNamed("currentFullFrameChanged").size(), 1u);
    globalPass(2.0); // exactly the end: still playing
    EXPECT_TRUE(zeAnimationController::isPlayingGlobal());
    EXPECT_TRUE(messagesNamed("finishedPlayingGlobal").empty());

    globalPass(2.25);
    EXPECT_FALSE(zeAnimationController::isPlayingGlobal());
    ASSERT_EQ(messagesNamed("finishedPlayingGlobal").size(), 1u);
    EXPECT_TRUE(received.back().typed);
    EXPECT_TRUE(received.back().finished);
    EXPECT_FLOAT_EQ(scene(field), at(c, 50.0f));
    const std::size_t before = received.size();
    globalPass(3.0);
    EXPECT_EQ(received.size(), before);
}

TEST_F(GlobalPlaybackTest, ReverseRunsDownFromTheStartAndRepeatWrapsInsideTheRange)
{
    controller->playGlobal(unit->getId(), true, false, 0.0f, 50.0f, 50.0f);
    globalPass(0.0);
    globalPass(1.0);
    EXPECT_FLOAT_EQ(scene(field), at(c, 25.0f));
    globalPass(2.25);
    EXPECT_FALSE(zeAnimationController::isPlayingGlobal());
    const std::vector<Received> whole = messagesNamed("currentFullFrameChanged");
    ASSERT_FALSE(whole.empty());
    EXPECT_EQ(whole.back().fullFrame, -7); // floor of -6.25
    EXPECT_EQ(messagesNamed("finishedPlayingGlobal").size(), 1u);

    clock() = 0.0;
    controller->playGlobal(unit->getId(), false, true, 0.0f, 20.0f, 0.0f);
    for (int step = 0; step <= 400; ++step) {
        globalPass(step * 0.03125);
        ASSERT_GE(zeAnimationController::getCurrentFrame(), 0.0f);
        ASSERT_LT(zeAnimationController::getCurrentFrame(), 20.0f);
    }
    EXPECT_TRUE(zeAnimationController::isPlayingGlobal());
    globalPass(1.0); // frame 25 wraps to 5
    EXPECT_FLOAT_EQ(scene(field), at(c, 5.0f));
    EXPECT_EQ(messagesNamed("finishedPlayingGlobal").size(), 1u);
}

TEST_F(GlobalPlaybackTest, ZeroRangeTakesTheUnionAndStartsAtTheCurrentFrame)
{
    zeAnimationField* b = translation();
    zeAnimationUnit* first = block(field, 5.0f, 0.0f, 15.0f, 100.0f);
    zeAnimationUnit* second = block(b, 30.0f, 7.0f, 40.0f, 9.0f);
    zeAnimationController::setCurrentFrame(12.0f, zeAnimationController::TimeLine);
    received.clear();
    controller->playGlobal({first->getId(), second->getId()}, false, false, 0.0f, 0.0f, 0.0f);
    EXPECT_EQ(zeAnimationController::getGlobalBegin(), 5.0f);
    EXPECT_EQ(zeAnimationController::getGlobalEnd(), 40.0f);
    controller->playLoop();
    ASSERT_FALSE(received.empty());
    EXPECT_EQ(received[0].frame, 12.0f);
    EXPECT_FLOAT_EQ(scene(field), at(firstCurve(first), 12.0f));
    EXPECT_NEAR(scene(b), 7.0f, 1e-4f);

    // Over nothing resolvable the range is empty and playback ends at the first step.
    controller->playGlobal({424242u, 434343u}, false, false, 0.0f, 0.0f, 0.0f);
    EXPECT_EQ(zeAnimationController::getGlobalBegin(), 1.0e23f);
    EXPECT_EQ(zeAnimationController::getGlobalEnd(), -1.0e23f);
    controller->playLoop();
    EXPECT_FALSE(zeAnimationController::isPlayingGlobal());
    ASSERT_EQ(messagesNamed("finishedPlayingGlobal").size(), 1u);
    EXPECT_TRUE(received.back().finished);
}

TEST_F(GlobalPlaybackTest, ForcedWholeFramesRoundHalvesAwayFromZero)
{
    unit->move(-10.0f, true);
    zeAnimationController::setFPS(10.0f);
    zeAnimationController::setForcePlayLoopFullFrame(true);
    controller->playGlobal(unit->getId(), false, false, -10.0f, 40.0f, 0.0f);
    globalPass(0.25); // 2.5 frames
    EXPECT_EQ(zeAnimationController::getCurrentFrame(), 3.0f);
    EXPECT_FLOAT_EQ(scene(field), at(c, 3.0f));

    clock() = 0.0;
    controller->playGlobal(unit->getId(), true, false, -10.0f, 40.0f, 0.0f);
    globalPass(0.25);
    EXPECT_EQ(zeAnimationController::getCurrentFrame(), -3.0f);
    EXPECT_EQ(messagesNamed("currentFullFrameChanged").back().fullFrame, -3);
}

TEST_F(GlobalPlaybackTest, PauseHoldsResumeJumpsToTheClockAndStopEndsSilently)
{
    controller->playGlobal(unit->getId(), false, false, 0.0f, 50.0f, 0.0f);
    controller->playLoop();
    clock() = 0.5;
    controller->pause(true);
    EXPECT_TRUE(zeAnimationController::isPausing());
    const std::size_t before = received.size();
    globalPass(1.0);
    EXPECT_EQ(received.size(), before);
    EXPECT_FLOAT_EQ(scene(field), at(c, 0.0f));
    clock() = 1.5;
    controller->pause(false);
    controller->playLoop();
    EXPECT_EQ(zeAnimationController::getCurrentFrame(), 37.5f);

    // Stopping ends playback without a finished message.
    controller->stopGlobal();
    const std::size_t stopped = received.size();
    globalPass(5.0);
    EXPECT_EQ(received.size(), stopped);
    EXPECT_TRUE(messagesNamed("finishedPlayingGlobal").empty());
}

TEST_F(GlobalPlaybackTest, PlayGlobalStopsAndRewindsPerObjectPlayback)
{
    controller->enqueueObject(unit, true);
    pass(0.0);
    pass(1.0);
    controller->playGlobal(std::vector<osg::UInt64>(), false, false, 0.0f, 10.0f, 0.0f);
    EXPECT_FALSE(controller->isPlaying());
    EXPECT_FALSE(unit->isPlaying());
    EXPECT_FLOAT_EQ(scene(field), at(c, 0.0f));
}

TEST_F(GlobalPlaybackTest, GoToGlobalBeginAndEndStopAndShowTheObjectOrCurves)
{
    zeAnimationController::setTimeLineCurrentFrameCB(&GlobalPlaybackTest::moveCursor);
    zeAnimationController::setCurveEditorCurrentFrameCB(&GlobalPlaybackTest::moveCursor);
    zeAnimationController::setClipMakerCurrentFrameCB(&GlobalPlaybackTest::moveCursor);
    zeAnimationUnit* later = block(field, 10.0f, 1.0f, 30.0f, 3.0f);
    controller->playGlobal(later->getId(), false, false, 10.0f, 30.0f, 10.0f);
    controller->gotoGlobalEnd(later);
    EXPECT_FALSE(zeAnimationController::isPlayingGlobal());
    EXPECT_NEAR(scene(field), 3.0f, 1e-4f);
    controller->gotoGlobalBegin(later);
    EXPECT_NEAR(scene(field), 1.0f, 1e-4f);
    EXPECT_EQ(cursor(), std::vector<float>({30.0f, 30.0f, 30.0f, 10.0f, 10.0f, 10.0f}));

    // Over a curve list the search for the begin starts at zero.
    cursor().clear();
    zeAnimationController::setCurveEditorCurrentFrameCB(nullptr);
    zeAnimationController::setClipMakerCurrentFrameCB(nullptr);
    zeAnimationCurve2D* laterCurve = firstCurve(later);
    controller->gotoGlobalEnd(std::vector<zeAnimationCurve2D*>{laterCurve});
    controller->gotoGlobalBegin(std::vector<zeAnimationCurve2D*>{laterCurve});
    EXPECT_NEAR(scene(field), 1.0f, 1e-4f);
    zeAnimationCurve2D* negative = curve(translation(), -30.0f, 1.0f, -10.0f, 3.0f);
    controller->gotoGlobalEnd(std::vector<zeAnimationCurve2D*>{negative});
    EXPECT_EQ(cursor(), std::vector<float>({30.0f, 0.0f, 0.0f}));
}

TEST_F(ObjectPlaybackTest, ObjectPlaysOnItsOwnTakingItsStartAtTheFirstPassAndLeavesTheQueueWhenFinished)
{
    EXPECT_TRUE(controller->enqueueObject(unit, true));
    pass(1.0);
    EXPECT_FLOAT_EQ(scene(field), at(c, 0.0f));
    EXPECT_EQ(unit->getStartTime(), 1.0f);
    EXPECT_EQ(unit->getStopTime(), 3.0f);
    pass(2.0);
    EXPECT_FLOAT_EQ(scene(field), at(c, 25.0f));

    // Queued to wait: it joins at the end of the next pass and is read from the pass after.
    zeAnimationField* waitingField = translation();
    zeAnimationUnit* waiting = block(waitingField, 0.0f, 0.0f, 50.0f, 100.0f);
    EXPECT_TRUE(controller->enqueueObject(waiting, false));
    EXPECT_EQ(controller->getPlayQueue(), std::vector<osg::UInt64>({unit->getId()}));
    pass(2.0);
    EXPECT_EQ(scene(waitingField), -1.0f);
    pass(2.0);
    EXPECT_FLOAT_EQ(scene(waitingField), at(firstCurve(waiting), 0.0f));

    pass(3.25);
    EXPECT_NEAR(scene(field), 100.0f, 1e-4f);
    EXPECT_EQ(controller->getPlayQueue(), std::vector<osg::UInt64>({waiting->getId()}));
    pass(4.25);
    EXPECT_FALSE(controller->isPlaying());
    // Per-object playback leaves the host's messages to global playback.
    EXPECT_TRUE(received.empty());
}

TEST_F(ObjectPlaybackTest, PlayRangeStartsAtTheStartFrameAndIsDroppedAtTheEndInEitherDirection)
{
    unit->setUsePlayRange(true);
    unit->setStartPlayRange(10.0f);
    unit->setEndPlayRange(20.0f);
    unit->setStartPlay(12.0f);
    controller->enqueueObject(unit, true);
    pass(0.0);
    EXPECT_FLOAT_EQ(scene(field), at(c, 12.0f));
    EXPECT_FLOAT_EQ(unit->getStopTime(), 0.4f);
    pass(0.25); // frame 18.25
    pass(0.5);  // frame 24.5, past the range
    EXPECT_FALSE(controller->isPlaying());
    EXPECT_FALSE(unit->usesPlayRange());
    // The curve itself runs on: the scene shows it at the frame reached.
    EXPECT_FLOAT_EQ(scene(field), at(c, 24.5f));

    // In reverse it runs down from the start frame.
    unit->setReversePlay(true);
    unit->setUsePlayRange(true);
    unit->setStartPlayRange(0.0f);
    unit->setEndPlayRange(50.0f);
    unit->setStartPlay(50.0f);
    clock() = 0.0;
    controller->enqueueObject(unit, true);
    pass(0.0);
    pass(1.0);
    EXPECT_FLOAT_EQ(scene(field), at(c, 25.0f));
    pass(2.25);
    EXPECT_FALSE(controller->isPlaying());
}

TEST_F(ObjectPlaybackTest, RepeatingObjectWrapsThenRestartsAfterPassingItsEnd)
{
    zeAnimationUnit* loop = block(field, 0.0f, 0.0f, 20.0f, 100.0f);
    c = firstCurve(loop);
    loop->setRepeating(true);
    controller->enqueueObject(loop, true);
    pass(0.0);
    pass(1.0); // frame 25 is read at 5 and does not finish the object
    EXPECT_FLOAT_EQ(scene(field), at(c, 5.0f));
    EXPECT_TRUE(controller->isPlaying());
    // Passing the end fired the end trigger and cleared the playing flag, so the next pass
    // takes a new start time: the object plays again from its begin.
    EXPECT_FALSE(loop->isPlaying());
    pass(1.2);
    EXPECT_FLOAT_EQ(scene(field), at(c, 0.0f));
    pass(1.6);
    EXPECT_FLOAT_EQ(scene(field), at(c, 10.0f));
    for (int step = 0; step <= 100; ++step)
        pass(2.0 + step * 0.1);
    EXPECT_TRUE(controller->isPlaying());
}

TEST_F(ObjectPlaybackTest, QueueRefusesNullAndInactiveAndKeepsOneEntryPerObject)
{
    zeAnimationUnit* inactive = block(translation(), 0.0f, 0.0f, 50.0f, 100.0f);
    inactive->setActive(false);
    EXPECT_FALSE(controller->enqueueObject(inactive, true));
    EXPECT_FALSE(controller->enqueueObject(inactive, false));
    EXPECT_FALSE(controller->enqueueObject(nullptr, true));
    controller->loop();

    controller->enqueueObjects({unit, nullptr, inactive, unit}, true);
    EXPECT_EQ(controller->getPlayQueue(), std::vector<osg::UInt64>({unit->getId()}));
    EXPECT_FALSE(controller->dequeueObject(nullptr));
    EXPECT_FALSE(controller->dequeueObject(inactive));
    EXPECT_TRUE(controller->dequeueObject(unit));
    EXPECT_FALSE(controller->isPlaying());
}

// Pausing twice keeps the first pause time, resuming without a pause changes nothing, and an
// object paused on its own is skipped and resumes where it was.
TEST_F(ObjectPlaybackTest, PauseHoldsTheObjectsWhereTheyWere)
{
    controller->enqueueObject(unit, true);
    pass(0.0);
    clock() = 0.5;
    controller->pause(false);
    EXPECT_EQ(unit->getStartTime(), 0.0f);
    clock() = 1.0;
    controller->pause(true);
    clock() = 2.0;
    controller->pause(true);
    controller->loop();
    EXPECT_FLOAT_EQ(scene(field), at(c, 0.0f));
    clock() = 3.0;
    controller->pause(false);
    EXPECT_EQ(unit->getStartTime(), 2.0f);
    controller->loop();
    EXPECT_FLOAT_EQ(scene(field), at(c, 25.0f));

    EXPECT_TRUE(controller->isPlaying("door"));
    EXPECT_FALSE(controller->isPlaying("Door"));
    controller->pause(unit, true);
    EXPECT_FALSE(controller->isPlaying("door"));
    EXPECT_TRUE(controller->isPlaying());
    pass(4.0);
    EXPECT_FLOAT_EQ(scene(field), at(c, 25.0f));
    clock() = 5.0;
    controller->pause(unit, false);
    pass(5.4);
    EXPECT_FLOAT_EQ(scene(field), at(c, 35.0f));
    controller->pause(nullptr, true);
}

TEST_F(ObjectPlaybackTest, StopKeepsValuesResetRewindsGotoEndShowsTheEnd)
{
    zeAnimationField* a = translation();
    zeAnimationField* b = translation();
    zeAnimationUnit* first = block(a, 0.0f, 0.0f, 100.0f, 100.0f);
    zeAnimationUnit* second = block(b, 0.0f, 0.0f, 100.0f, 100.0f);
    controller->enqueueObjects({first, second}, true);
    controller->loop();
    pass(1.0);
    controller->stop();
    EXPECT_FALSE(controller->isPlaying());
    EXPECT_FLOAT_EQ(scene(a), at(firstCurve(first), 25.0f));

    controller->enqueueObjects({first, second}, true);
    controller->loop();
    controller->reset();
    EXPECT_NEAR(scene(a), 0.0f, 1e-4f);
    EXPECT_NEAR(scene(b), 0.0f, 1e-4f);

    controller->enqueueObjects({first, second}, true);
    controller->loop();
    controller->gotoEnd(first);
    EXPECT_NEAR(scene(a), 100.0f, 1e-4f);
    EXPECT_TRUE(first->isPlaying());
    EXPECT_EQ(controller->getPlayQueue(), std::vector<osg::UInt64>({second->getId()}));

    second->setUsePlayRange(true);
    second->setStartPlayRange(20.0f);
    second->setEndPlayRange(40.0f);
    controller->reset(second);
    EXPECT_FLOAT_EQ(scene(b), at(firstCurve(second), 20.0f));
    EXPECT_FALSE(controller->isPlaying());
    controller->gotoEnd(second);
    EXPECT_FLOAT_EQ(scene(b), at(firstCurve(second), 40.0f));
    controller->reset(nullptr);
    controller->gotoEnd(nullptr);
}

class PlaybackLifetimeTest : public PlaybackTest
{
protected:
    static zeAnimationObject*& doomed()
    {
        static zeAnimationObject* object = nullptr;
        return object;
    }
    // A host sequence that deletes the animation it belongs to.
    static void destroyDoomed(const std::string&)
    {
        if (doomed())
            zeAnimationManager::the()->destroyObject(doomed());
        doomed() = nullptr;
    }
};

TEST_F(PlaybackLifetimeTest, ObjectsDestroyedWhileQueuedWaitingOrAsConnectionTargetsAreDropped)
{
    zeAnimationUnit* unit = block(translation(), 0.0f, 0.0f, 50.0f, 100.0f);
    zeAnimationUnit* waiting = block(translation(), 0.0f, 0.0f, 50.0f, 100.0f, "waiting");
    zeAnimationUnit* source = block(translation(), 0.0f, 0.0f, 50.0f, 100.0f);
    zeAnimationUnit* target = block(translation(), 0.0f, 0.0f, 10.0f, 100.0f);
    zeAnimationUnit* stopped = block(translation(), 0.0f, 0.0f, 10.0f, 100.0f);
    ASSERT_TRUE(manager->createConnection(source, zeAnimationManager::TriggerStart, target,
                                          zeAnimationManager::ActionStart));
    ASSERT_TRUE(manager->createConnection(source, zeAnimationManager::TriggerStart, stopped,
                                          zeAnimationManager::ActionStop));
    controller->enqueueObjects({unit, source}, true);
    controller->enqueueObject(waiting, false);
    manager->destroyObject(waiting);
    manager->destroyObject(target);
    manager->destroyObject(stopped);
    controller->loop();
    manager->destroyObject(unit);
    pass(1.0);
    EXPECT_EQ(controller->getPlayQueue(), std::vector<osg::UInt64>({source->getId()}));
    EXPECT_FALSE(controller->isPlaying("waiting"));
    controller->pause(true);
    controller->pause(false);
    controller->reset();
    EXPECT_FALSE(controller->isPlaying());
}

TEST_F(PlaybackLifetimeTest, ObjectDestroyedDuringGlobalPlaybackIsSkipped)
{
    zeAnimationField* field = translation();
    zeAnimationUnit* unit = block(field, 0.0f, 0.0f, 50.0f, 100.0f);
    controller->playGlobal(unit->getId(), false, false, 0.0f, 50.0f, 0.0f);
    controller->playLoop();
    manager->destroyObject(unit);
    globalPass(1.0);
    EXPECT_EQ(zeAnimationController::getCurrentFrame(), 25.0f);
    controller->gotoGlobalBegin(nullptr);
    EXPECT_FALSE(zeAnimationController::isPlayingGlobal());
}

TEST_F(PlaybackLifetimeTest, HostSequenceMayDestroyThePlayingObject)
{
    zeAnimationController::setExecuteSequenceCB(&PlaybackLifetimeTest::destroyDoomed);
    zeAnimationStreak* track = manager->createStreak(0);
    track->addObject(block(translation(), 0.0f, 0.0f, 50.0f, 100.0f));
    for (const char* name : {"first", "second"})
        track->addObject(sequence(0.0f, 50.0f, name));
    doomed() = track;
    controller->enqueueObject(track, true);
    controller->loop();
    pass(1.0);
    controller->loop();
    EXPECT_FALSE(controller->isPlaying());
    EXPECT_EQ(manager->getObjectCount(), 0u);
}

TEST_F(PlaybackLifetimeTest, FieldWritesFollowRetargetingAndStopAtReleasedContainers)
{
    zeAnimationField* field = translation(0);
    zeAnimationField* other = translation(0);
    const osg::UInt64 first = field->fcID;
    field->value = 5.0f;
    EXPECT_TRUE(zeAnimationUtils::setOSGFieldValue(field));
    field->valuePos = 1;
    field->value = 6.0f;
    EXPECT_TRUE(zeAnimationUtils::setOSGFieldValue(field));
    osg::ComponentTransformPtr core = osg::ComponentTransformPtr::dcast(
        osg::FieldContainerFactory::the()->getContainer(static_cast<osg::UInt32>(first)));
    EXPECT_EQ(core->getTranslation(), osg::Vec3f(5.0f, 6.0f, -1.0f));

    field->fcID = other->fcID;
    field->valuePos = 0;
    field->value = 7.0f;
    EXPECT_TRUE(zeAnimationUtils::setOSGFieldValue(field));
    EXPECT_EQ(scene(other), 7.0f);
    field->name = "scale";
    field->value = 2.0f;
    EXPECT_TRUE(zeAnimationUtils::setOSGFieldValue(field));
    EXPECT_EQ(scene(other), 7.0f);
    osg::ComponentTransformPtr otherCore = osg::ComponentTransformPtr::dcast(
        osg::FieldContainerFactory::the()->getContainer(static_cast<osg::UInt32>(other->fcID)));
    EXPECT_EQ(otherCore->getScale()[0], 2.0f);

    // The node goes, and its core with it: the field no longer finds a target.
    osg::subRefCP(nodes.back());
    nodes.pop_back();
    field->value = 3.0f;
    EXPECT_FALSE(zeAnimationUtils::setOSGFieldValue(field));
}

} // namespace
