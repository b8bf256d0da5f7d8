// Evaluation: which curve wins a field, at which local frame each curve is read, the whole-frame
// sequence step and the finished test, read back from the scene.
#include "PlaybackTestSupport.h"

#include <string>
#include <vector>

namespace {

class EvaluationTest : public PlaybackTest
{
protected:
    static std::vector<std::string>& executed()
    {
        static std::vector<std::string> names;
        return names;
    }
    static void recordSequence(const std::string& name) { executed().push_back(name); }

    void SetUp() override
    {
        PlaybackTest::SetUp();
        executed().clear();
    }

    // A clip whose tracks hold one object each, in the order given: the child list order then
    // differs from the begin order, so only the documented key order can explain a result.
    zeAnimationStrip* clipOf(std::initializer_list<zeAnimationObject*> objects)
    {
        zeAnimationStrip* clip = manager->createStrip("clip", 0);
        for (zeAnimationObject* object : objects) {
            zeAnimationStreak* track = manager->createStreak(0);
            track->addObject(object);
            clip->addObject(track);
        }
        return clip;
    }
};

TEST_F(EvaluationTest, ObjectThatHasNotStartedShowsItsFirstKeyNotTheValueBeforeIt)
{
    zeAnimationField* field = translation();
    zeAnimationUnit* late = block(field, 50.0f, 5.0f, 60.0f, 6.0f);
    EXPECT_FALSE(controller->evaluateObject(late, 10.0f, false));
    // Read at the curve's own begin: the first key, not the value a curve gives before its keys.
    EXPECT_NEAR(scene(field), 5.0f, 1e-4f);
}

TEST_F(EvaluationTest, RunningObjectOverridesOneThatHasNotStarted)
{
    zeAnimationField* field = translation();
    zeAnimationUnit* running = block(field, 0.0f, 1.0f, 20.0f, 2.0f);
    zeAnimationUnit* late = block(field, 50.0f, 5.0f, 60.0f, 6.0f);
    controller->evaluateObject(clipOf({running, late}), 10.0f, false);
    EXPECT_FLOAT_EQ(scene(field), at(firstCurve(running), 10.0f));
}

TEST_F(EvaluationTest, OfTwoFutureObjectsTheOneEndingFirstWins)
{
    zeAnimationField* field = translation();
    zeAnimationUnit* endsFirst = block(field, 50.0f, 5.0f, 60.0f, 6.0f);
    zeAnimationUnit* endsLast = block(field, 30.0f, 3.0f, 70.0f, 4.0f);
    controller->evaluateObject(clipOf({endsFirst, endsLast}), 10.0f, false);
    EXPECT_NEAR(scene(field), 5.0f, 1e-4f);
}

TEST_F(EvaluationTest, OfTwoFinishedObjectsTheLaterStartingWins)
{
    zeAnimationField* field = translation();
    zeAnimationUnit* laterStart = block(field, 5.0f, 3.0f, 15.0f, 4.0f);
    zeAnimationUnit* earlierStart = block(field, 0.0f, 1.0f, 10.0f, 2.0f);
    EXPECT_TRUE(controller->evaluateObject(clipOf({laterStart, earlierStart}), 20.0f, false));
    EXPECT_NEAR(scene(field), 4.0f, 1e-4f);
}

TEST_F(EvaluationTest, ActiveObjectBeatsFinishedAndFutureOnesAndLaterActiveWins)
{
    zeAnimationField* field = translation();
    zeAnimationUnit* longRun = block(field, 0.0f, 10.0f, 100.0f, 20.0f);
    zeAnimationUnit* finished = block(field, 20.0f, 1.0f, 30.0f, 2.0f);
    zeAnimationUnit* future = block(field, 60.0f, 7.0f, 70.0f, 8.0f);
    controller->evaluateObject(clipOf({longRun, finished, future}), 50.0f, false);
    EXPECT_FLOAT_EQ(scene(field), at(firstCurve(longRun), 50.0f));

    zeAnimationUnit* shortRun = block(field, 40.0f, 30.0f, 60.0f, 40.0f);
    controller->evaluateObject(clipOf({shortRun, longRun}), 50.0f, false);
    EXPECT_FLOAT_EQ(scene(field), at(firstCurve(shortRun), 50.0f));
}

TEST_F(EvaluationTest, CurveIsClampedToItsOwnKeysInsideALongerBlock)
{
    zeAnimationField* a = translation();
    zeAnimationField* b = translation();
    zeAnimationUnit* unit = block(a, 0.0f, 0.0f, 100.0f, 100.0f);
    unit->addObject(curve(b, 10.0f, 7.0f, 20.0f, 9.0f));
    controller->evaluateObject(unit, 5.0f, false);
    EXPECT_NEAR(scene(b), 7.0f, 1e-4f);
    controller->evaluateObject(unit, 50.0f, false);
    EXPECT_NEAR(scene(b), 9.0f, 1e-4f);
}

TEST_F(EvaluationTest, RepeatingObjectWrapsPastItsEndAndNeverFinishes)
{
    zeAnimationField* field = translation();
    zeAnimationUnit* unit = block(field, 10.0f, 0.0f, 20.0f, 100.0f);
    EXPECT_TRUE(controller->evaluateObject(unit, 21.0f, false));
    EXPECT_NEAR(scene(field), 100.0f, 1e-4f);

    unit->setRepeating(true);
    EXPECT_FALSE(controller->evaluateObject(unit, 21.0f, false));
    EXPECT_FLOAT_EQ(scene(field), at(firstCurve(unit), 11.0f));
    EXPECT_FALSE(controller->evaluateObject(unit, 1000.5f, false));
    EXPECT_FLOAT_EQ(scene(field), at(firstCurve(unit), 10.5f));
}

TEST_F(EvaluationTest, ReversePlayingObjectFinishesBeforeItsBegin)
{
    zeAnimationField* field = translation();
    zeAnimationUnit* unit = block(field, 10.0f, 0.0f, 20.0f, 100.0f);
    unit->setReversePlay(true);
    EXPECT_FALSE(controller->evaluateObject(unit, 30.0f, false));
    EXPECT_TRUE(controller->evaluateObject(unit, 9.0f, false));
    EXPECT_TRUE(controller->evaluateObject(nullptr, 9.0f, false));
}

TEST_F(EvaluationTest, MotionBlurOnlyReadsFlaggedCurvesOfObjectsAtTheFrame)
{
    zeAnimationField* flagged = translation();
    zeAnimationField* plain = translation();
    zeAnimationUnit* unit = block(flagged, 0.0f, 0.0f, 50.0f, 100.0f);
    unit->addObject(curve(plain, 0.0f, 0.0f, 50.0f, 100.0f));
    for (zeAnimationCurve2D* c : unit->getCurves())
        c->setMotionBlur(c->getAnimationField() == flagged);
    controller->evaluateObject(unit, 5.0f, true);
    EXPECT_FLOAT_EQ(scene(flagged), at(firstCurve(unit), 5.0f));
    EXPECT_EQ(scene(plain), -1.0f);

    zeAnimationField* later = translation();
    zeAnimationUnit* notYet = block(later, 50.0f, 5.0f, 60.0f, 6.0f);
    firstCurve(notYet)->setMotionBlur(true);
    controller->evaluateObject(notYet, 10.0f, true);
    EXPECT_EQ(scene(later), -1.0f);
}

TEST_F(EvaluationTest, SequencesRunOnceForEachNewWholeFrame)
{
    zeAnimationController::setExecuteSequenceCB(&EvaluationTest::recordSequence);
    zeAnimationField* field = translation();
    zeAnimationStreak* track = manager->createStreak(0);
    track->addObject(block(field, 0.0f, 0.0f, 50.0f, 100.0f));
    track->addObject(sequence(10.0f, 20.0f, "wave"));

    controller->evaluateObject(track, 10.2f, false);
    controller->evaluateObject(track, 10.7f, false);
    EXPECT_EQ(executed(), std::vector<std::string>({"wave"}));
    EXPECT_EQ(track->getLastFullFrame(), 10.0f);
    controller->evaluateObject(track, 11.0f, false);
    EXPECT_EQ(executed().size(), 2u);
    // Truncated toward zero: -0.5 and 0.5 are the same whole frame 0.
    controller->evaluateObject(track, -0.5f, false);
    EXPECT_EQ(track->getLastFullFrame(), 0.0f);
}

TEST_F(EvaluationTest, CurveListReadsFutureThenFinishedThenActive)
{
    zeAnimationField* field = translation();
    zeAnimationCurve2D* early = curve(field, 0.0f, 1.0f, 10.0f, 2.0f);
    zeAnimationCurve2D* late = curve(field, 20.0f, 3.0f, 30.0f, 4.0f);
    controller->evaluateCurves({late, early}, 15.0f, false);
    EXPECT_NEAR(scene(field), 2.0f, 1e-4f);
    controller->evaluateCurves({late, early}, 25.0f, false);
    EXPECT_FLOAT_EQ(scene(field), at(late, 25.0f));
    // The frame is clamped into the range given.
    controller->evaluateCurves({late, early}, 0.0f, 5.0f, 100.0f, false);
    EXPECT_FLOAT_EQ(scene(field), at(early, 5.0f));
}

TEST_F(EvaluationTest, CurveListSkipsInactiveAndUnflaggedCurves)
{
    zeAnimationField* a = translation();
    zeAnimationField* b = translation();
    zeAnimationCurve2D* inactive = curve(a, 0.0f, 0.0f, 10.0f, 10.0f);
    zeAnimationCurve2D* unflagged = curve(b, 0.0f, 0.0f, 10.0f, 10.0f);
    inactive->setActive(false);
    controller->evaluateCurves({inactive, nullptr}, 5.0f, false);
    controller->evaluateCurves({unflagged}, 5.0f, true);
    EXPECT_EQ(scene(a), -1.0f);
    EXPECT_EQ(scene(b), -1.0f);
}

TEST_F(EvaluationTest, EvaluateShowsCurrentObjectCurvesAndActiveBlocks)
{
    zeAnimationField* objectField = translation();
    zeAnimationField* curveField = translation();
    zeAnimationField* sceneField = translation();
    zeAnimationUnit* current = block(objectField, 0.0f, 0.0f, 50.0f, 100.0f);
    zeAnimationCurve2D* edited = curve(curveField, 0.0f, 0.0f, 50.0f, 100.0f);
    zeAnimationUnit* inScene = block(sceneField, 0.0f, 0.0f, 50.0f, 100.0f);
    // Inside a track the current block is no longer one of the scene's own blocks.
    manager->createStreak(0)->addObject(current);
    controller->setCurrentObject(current->getId());
    controller->setCurrentCurves({edited->getId(), 987654321u});

    controller->evaluate(20.0f, false);
    EXPECT_FLOAT_EQ(scene(objectField), at(firstCurve(current), 20.0f));
    EXPECT_FLOAT_EQ(scene(curveField), at(edited, 20.0f));
    EXPECT_EQ(scene(sceneField), -1.0f);

    controller->setEvaluateActiveUnits(true);
    controller->evaluate(30.0f, false, false, true, false);
    EXPECT_FLOAT_EQ(scene(objectField), at(firstCurve(current), 20.0f));
    EXPECT_FLOAT_EQ(scene(sceneField), at(firstCurve(inScene), 30.0f));
}

} // namespace
