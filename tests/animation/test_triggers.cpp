// Connections fired by playback, host sequences and the simulation switch around them.
#include "PlaybackTestSupport.h"

#include <string>
#include <vector>

namespace {

// What the host saw, in order: functions called by connections, sequences executed and the
// simulation switched.
std::vector<std::string>& hostLog()
{
    static std::vector<std::string> log;
    return log;
}
void hostFunctionA()
{
    hostLog().push_back("function A");
}
void hostFunctionB()
{
    hostLog().push_back("function B");
}
void hostStarted()
{
    hostLog().push_back("started");
}
void runSequence(const std::string& name)
{
    hostLog().push_back("sequence " + name);
}
bool simulationOn()
{
    return true;
}
bool simulationOff()
{
    return false;
}
void switchSimulation(bool on)
{
    hostLog().push_back(on ? "simulation on" : "simulation off");
}

class ConnectionTest : public PlaybackTest
{
protected:
    void SetUp() override
    {
        PlaybackTest::SetUp();
        hostLog().clear();
    }

    std::vector<osg::UInt64> keys(const zeAnimationObject* source)
    {
        std::vector<osg::UInt64> result;
        for (const auto& entry : source->getTriggers())
            result.push_back(entry.second);
        return result;
    }
};

TEST_F(ConnectionTest, ClipEndStartsObjectsAndCallsFunctionsInTheOrderConnected)
{
    zeAnimationStrip* clip = manager->createStrip("clip", 0);
    clip->addObject(block(translation(), 0.0f, 0.0f, 10.0f, 100.0f));
    zeAnimationField* aField = translation();
    zeAnimationUnit* a = block(aField, 0.0f, 0.0f, 20.0f, 100.0f, "A");
    zeAnimationUnit* b = block(translation(), 0.0f, 0.0f, 20.0f, 100.0f, "B");
    using M = zeAnimationManager;
    ASSERT_TRUE(manager->createConnection(clip, M::TriggerEnd, a, M::ActionStart));
    ASSERT_TRUE(manager->createConnection(clip, M::TriggerEnd, &hostFunctionB));
    ASSERT_TRUE(manager->createConnection(clip, M::TriggerEnd, b, M::ActionStart));
    ASSERT_TRUE(manager->createConnection(clip, M::TriggerEnd, &hostFunctionA));
    ASSERT_TRUE(manager->createConnection(clip, M::TriggerStart, &hostStarted));

    controller->enqueueObject(clip, true);
    controller->loop();
    EXPECT_EQ(hostLog(), std::vector<std::string>({"started"}));
    pass(0.5); // frame 12.5: the clip has ended
    EXPECT_EQ(hostLog(), std::vector<std::string>({"started", "function B", "function A"}));
    EXPECT_TRUE(controller->isPlaying("A"));
    EXPECT_FALSE(controller->isPlaying("clip"));
    EXPECT_EQ(scene(aField), -1.0f);
    controller->loop();
    EXPECT_FLOAT_EQ(scene(aField), at(firstCurve(a), 0.0f));
    pass(0.9); // ten frames after A started
    EXPECT_FLOAT_EQ(scene(aField), at(firstCurve(a), 10.0f));
}

TEST_F(ConnectionTest, StartSkipsAnInactiveTargetAndStopRemovesOnlyARunningOne)
{
    zeAnimationUnit* source = block(translation(), 0.0f, 0.0f, 10.0f, 100.0f);
    zeAnimationUnit* inactive = block(translation(), 0.0f, 0.0f, 10.0f, 100.0f);
    zeAnimationUnit* running = block(translation(), 0.0f, 0.0f, 10.0f, 100.0f);
    zeAnimationUnit* idle = block(translation(), 0.0f, 0.0f, 10.0f, 100.0f);
    typedef zeAnimationManager M;
    manager->createConnection(source, M::TriggerEnd, inactive, M::ActionStart);
    inactive->setActive(false);
    manager->createConnection(source, M::TriggerEnd, idle, M::ActionStop);
    controller->enqueueObject(running, true);
    manager->executeTriggers(keys(source));
    controller->loop();
    EXPECT_EQ(controller->getPlayQueue(), std::vector<osg::UInt64>({running->getId()}));

    manager->createConnection(source, M::TriggerStart, running, M::ActionStop);
    manager->executeTriggers(keys(source));
    EXPECT_FALSE(controller->isPlaying());
}

TEST_F(ConnectionTest, StopFiredDuringAPassSkipsTheStoppedObject)
{
    zeAnimationField* victimField = translation();
    zeAnimationUnit* source = block(translation(), 0.0f, 0.0f, 10.0f, 100.0f);
    zeAnimationUnit* victim = block(victimField, 0.0f, 0.0f, 10.0f, 100.0f);
    controller->enqueueObjects({source, victim}, true);
    controller->loop();
    manager->createConnection(source, zeAnimationManager::TriggerEnd, victim, zeAnimationManager::ActionStop);
    manager->createConnection(victim, zeAnimationManager::TriggerEnd, source, zeAnimationManager::ActionStop);
    pass(0.2); // frame 5
    const float held = scene(victimField);
    pass(0.5); // both end in this pass; the first visited stops the other
    EXPECT_FALSE(controller->isPlaying());
    const bool victimVisited = scene(victimField) != held;
    EXPECT_EQ(victimVisited, victim->getId() < source->getId());
}

TEST_F(ConnectionTest, UnknownKeysAndNullArgumentsChangeNothingAndKeysAreNeverLiveIdentifiers)
{
    zeAnimationUnit* source = block(translation(), 0.0f, 0.0f, 10.0f, 100.0f);
    manager->executeTriggers({1234567u, 0u});
    EXPECT_FALSE(controller->isPlaying());
    EXPECT_TRUE(hostLog().empty());
    EXPECT_FALSE(manager->createConnection(source, zeAnimationManager::TriggerEnd, nullptr,
                                           zeAnimationManager::ActionStart));
    EXPECT_FALSE(manager->createConnection(source, zeAnimationManager::TriggerEnd, nullptr));
    EXPECT_FALSE(manager->createConnection(nullptr, zeAnimationManager::TriggerEnd, &hostFunctionA));
    EXPECT_TRUE(source->getTriggers().empty());

    for (int i = 0; i < 20; ++i)
        manager->createConnection(source, zeAnimationManager::TriggerEnd, &hostFunctionA);
    for (osg::UInt64 key : keys(source)) {
        EXPECT_NE(key, 0u);
        EXPECT_EQ(manager->getObject(key), nullptr);
        EXPECT_EQ(manager->getField(key), nullptr);
    }
}

class SequenceTest : public ConnectionTest
{};

TEST_F(SequenceTest, ArmedSequenceCatchesUpOnceAfterAJumpAndAnUnarmedOneRunsInsideItsRange)
{
    zeAnimationSequence* s = sequence(10.0f, 12.0f, "door");
    zeAnimationController::initSequences({s, nullptr});
    EXPECT_TRUE(s->isDirty());
    zeAnimationController::evaluateSequences({s}, 40.0f); // without a callback: disarmed all the same
    EXPECT_FALSE(s->isDirty());
    zeAnimationController::setExecuteSequenceCB(&runSequence);
    s->setDirty(true);
    zeAnimationController::evaluateSequences({s}, 40.0f);
    zeAnimationController::evaluateSequences({s}, 41.0f);
    EXPECT_EQ(hostLog(), std::vector<std::string>({"sequence door"}));

    hostLog().clear();
    s->setEnd(20.0f);
    for (float frame : {9.0f, 10.0f, 15.0f, 20.0f, 21.0f})
        zeAnimationController::evaluateSequences({s}, frame);
    EXPECT_EQ(hostLog().size(), 3u);
    s->setActive(false);
    zeAnimationController::evaluateSequences({nullptr, s}, 15.0f);
    EXPECT_EQ(hostLog().size(), 3u);
}

TEST_F(SequenceTest, SimulationIsPausedAroundSequencesOnlyWhenItWasOn)
{
    zeAnimationController::setExecuteSequenceCB(&runSequence);
    zeAnimationController::setEnableSimulationCB(&switchSimulation);
    zeAnimationSequence* s = sequence(0.0f, 20.0f, "wave");
    zeAnimationController::evaluateSequences({s}, 5.0f);
    EXPECT_EQ(hostLog(), std::vector<std::string>({"sequence wave"}));

    hostLog().clear();
    zeAnimationController::setIsSimulationEnableCB(&simulationOff);
    zeAnimationController::evaluateSequences({s}, 5.0f);
    EXPECT_EQ(hostLog(), std::vector<std::string>({"sequence wave"}));

    hostLog().clear();
    zeAnimationController::setIsSimulationEnableCB(&simulationOn);
    zeAnimationController::evaluateSequences({s}, 5.0f);
    zeAnimationController::evaluateSequences({s}, 50.0f);
    EXPECT_EQ(hostLog(), std::vector<std::string>({"simulation off", "sequence wave", "simulation on",
                                                   "simulation off", "simulation on"}));
}

TEST_F(SequenceTest, ObjectPlaybackArmsItsSequencesWhenItStarts)
{
    zeAnimationController::setExecuteSequenceCB(&runSequence);
    zeAnimationStreak* track = manager->createStreak("track", 0);
    track->addObject(block(translation(), 0.0f, 0.0f, 50.0f, 100.0f));
    zeAnimationSequence* s = sequence(10.0f, 12.0f, "door");
    track->addObject(s);
    s->setDirty(false);
    controller->enqueueObject(track, true);
    controller->loop();
    EXPECT_TRUE(s->isDirty());
    pass(1.2); // frame 30: past the sequence, which catches up once
    pass(1.24);
    EXPECT_EQ(hostLog(), std::vector<std::string>({"sequence door"}));
}

TEST_F(SequenceTest, GlobalPlaybackRunsSequencesAtWholeFrameChanges)
{
    zeAnimationController::setExecuteSequenceCB(&runSequence);
    zeAnimationStreak* track = manager->createStreak("track", 0);
    track->addObject(block(translation(), 0.0f, 0.0f, 50.0f, 100.0f));
    track->addObject(sequence(10.0f, 11.0f, "wave"));
    controller->playGlobal(track->getId(), false, false, 0.0f, 50.0f, 0.0f);
    for (int step = 0; step <= 60; ++step) {
        clock() = step * 0.01; // quarter frames
        controller->playLoop();
    }
    // Whole frames 10 and 11 lie inside the sequence.
    EXPECT_EQ(hostLog(), std::vector<std::string>({"sequence wave", "sequence wave"}));
}

} // namespace
