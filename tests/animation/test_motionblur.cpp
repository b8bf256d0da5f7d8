// Motion-blur sub-frames and the controller's own state: frame listeners, the time source and
// the current frame.
#include "PlaybackTestSupport.h"

#include <zeOpenSGExt/OSGPerspectiveCamera2.h>

#include <string>
#include <vector>

namespace {

osg::PerspectiveCamera2Ptr& renderCamera()
{
    static osg::PerspectiveCamera2Ptr camera;
    return camera;
}
osg::PerspectiveCamera2Ptr mainCamera()
{
    return renderCamera();
}
osg::PerspectiveCamera2Ptr noCamera()
{
    return osg::PerspectiveCamera2Ptr(osg::NullFC);
}
std::vector<bool>& navigatorUpdates()
{
    static std::vector<bool> updates;
    return updates;
}
void updateNavigator(bool update)
{
    navigatorUpdates().push_back(update);
}

class MotionBlurTest : public PlaybackTest
{
protected:
    zeAnimationField* blurred = nullptr;
    zeAnimationField* sharp = nullptr;
    zeAnimationUnit* unit = nullptr;

    void SetUp() override
    {
        PlaybackTest::SetUp();
        renderCamera() = osg::PerspectiveCamera2::create();
        osg::addRefCP(renderCamera());
        osg::beginEditCP(renderCamera(), osg::PerspectiveCamera2::ShutterSpeedFieldMask);
        renderCamera()->setShutterSpeed(50.0f);
        osg::endEditCP(renderCamera(), osg::PerspectiveCamera2::ShutterSpeedFieldMask);
        navigatorUpdates().clear();

        // One block with a motion-blurred curve and a plain one, both ramps over [0, 50].
        blurred = translation();
        sharp = translation();
        unit = block(blurred, 0.0f, 0.0f, 50.0f, 100.0f);
        unit->addObject(curve(sharp, 0.0f, 0.0f, 50.0f, 100.0f));
        for (zeAnimationCurve2D* c : unit->getCurves())
            c->setMotionBlur(c->getAnimationField() == blurred);
    }

    void TearDown() override
    {
        zeAnimationController::setMainCameraCB(nullptr);
        osg::subRefCP(renderCamera());
        renderCamera() = osg::PerspectiveCamera2Ptr(osg::NullFC);
        PlaybackTest::TearDown();
    }

    zeAnimationCurve2D* curveOf(const zeAnimationField* field)
    {
        for (zeAnimationCurve2D* c : unit->getCurves()) {
            if (c->getAnimationField() == field)
                return c;
        }
        return nullptr;
    }

    // Puts a marker into the plain curve's scene field, so that any write to it shows.
    void markSharp()
    {
        osg::ComponentTransformPtr core = osg::ComponentTransformPtr::dcast(
            osg::FieldContainerFactory::the()->getContainer(static_cast<osg::UInt32>(sharp->fcID)));
        osg::beginEditCP(core, osg::ComponentTransform::TranslationFieldMask);
        core->getTranslation()[0] = 99.0f;
        osg::endEditCP(core, osg::ComponentTransform::TranslationFieldMask);
    }
};

TEST_F(MotionBlurTest, EachFormMovesOnlyFlaggedCurvesToAFractionOfTheExposureAfterTheFrame)
{
    zeAnimationController::setMainCameraCB(&mainCamera);
    zeAnimationController::setUpdateNavigatorCB(&updateNavigator);
    controller->setCurrentObject(unit->getId());
    controller->setCurrentCurves({curveOf(blurred)->getId(), curveOf(sharp)->getId()});
    zeAnimationController::setCurrentFrame(10.0f, zeAnimationController::TimeLine);
    markSharp();
    controller->executeMotionBlur(0.5f);
    EXPECT_FLOAT_EQ(scene(blurred), at(curveOf(blurred), 10.25f));
    EXPECT_EQ(navigatorUpdates(), std::vector<bool>({false}));
    controller->resetMotionBlur();
    EXPECT_FLOAT_EQ(scene(blurred), at(curveOf(blurred), 10.0f));

    zeAnimationController::setCurrentFrame(20.0f, zeAnimationController::TimeLine);
    controller->executeMotionBlur(1.0f, unit);
    EXPECT_FLOAT_EQ(scene(blurred), at(curveOf(blurred), 20.5f));
    controller->executeMotionBlurOnActiveUnits(-1.0f);
    EXPECT_FLOAT_EQ(scene(blurred), at(curveOf(blurred), 19.5f));
    EXPECT_EQ(scene(sharp), 99.0f);
    // Past the curves' keys nothing is moved.
    zeAnimationController::setCurrentFrame(80.0f, zeAnimationController::TimeLine);
    controller->executeMotionBlur(0.5f, unit);
    controller->executeMotionBlurOnActiveUnits(0.5f);
    EXPECT_FLOAT_EQ(scene(blurred), at(curveOf(blurred), 19.5f));
    controller->executeMotionBlur(0.5f, nullptr);
}

TEST_F(MotionBlurTest, WithoutACameraEachFormPrintsItsErrorAndChangesNothing)
{
    controller->setCurrentObject(unit->getId());
    controller->setEvaluateActiveUnits(true);
    zeAnimationController::setUpdateNavigatorCB(&updateNavigator);
    const std::string blurError =
        "ERROR: zeAnimationController::executeMotionBlur: Can't get active camera!\n";
    for (zeAnimationController::MainCameraCB cb : {zeAnimationController::MainCameraCB(nullptr), &noCamera}) {
        zeAnimationController::setMainCameraCB(cb);
        testing::internal::CaptureStdout();
        controller->executeMotionBlur(0.5f);
        EXPECT_EQ(testing::internal::GetCapturedStdout(), blurError);
        testing::internal::CaptureStdout();
        controller->executeMotionBlur(0.5f, unit);
        EXPECT_EQ(testing::internal::GetCapturedStdout(), blurError);
        testing::internal::CaptureStdout();
        controller->executeMotionBlurOnActiveUnits(0.5f);
        EXPECT_EQ(testing::internal::GetCapturedStdout(),
                  "ERROR: zeAnimationController::executeMotionBlurOnActiveUnits: Can't get active camera!\n");
    }
    EXPECT_EQ(scene(blurred), -1.0f);
    EXPECT_EQ(scene(sharp), -1.0f);
    EXPECT_TRUE(navigatorUpdates().empty());
}

class ControllerStateTest : public PlaybackTest
{
protected:
    static int& calls()
    {
        static int n = 0;
        return n;
    }
    static void listener() { ++calls(); }
    static void otherListener() { calls() += 100; }
};

TEST_F(ControllerStateTest, FrameListenersAreCalledPerEntryAndRemovedTogether)
{
    calls() = 0;
    zeAnimationController::addFrameListenerCB(nullptr);
    zeAnimationController::addFrameListenerCB(&listener);
    zeAnimationController::addFrameListenerCB(&otherListener);
    zeAnimationController::addFrameListenerCB(&listener);
    zeAnimationController::callFrameListeners();
    EXPECT_EQ(calls(), 102);
    zeAnimationController::subFrameListenerCB(&listener);
    zeAnimationController::subFrameListenerCB(nullptr);
    zeAnimationController::callFrameListeners();
    EXPECT_EQ(calls(), 202);
    zeAnimationController::subFrameListenerCB(&otherListener);
    zeAnimationController::callFrameListeners();
    EXPECT_EQ(calls(), 202);
}

TEST_F(ControllerStateTest, OwnClockNeverGoesBackwardAndTheCurrentFrameIsStoredWithOrWithoutAListener)
{
    clock() = 2.5;
    EXPECT_EQ(zeAnimationController::getSimulationTime(), 2.5f);
    zeAnimationController::setSimulationTimeCB(nullptr);
    const float first = zeAnimationController::getSimulationTime();
    EXPECT_GE(first, 0.0f);
    EXPECT_GE(zeAnimationController::getSimulationTime(), first);

    zeAnimationController::setCurrentFrame(7.5f, zeAnimationController::CurveEditor);
    EXPECT_EQ(zeAnimationController::getCurrentFrame(), 7.5f);
    ASSERT_EQ(received.size(), 1u);
    EXPECT_TRUE(received[0].typed);
    EXPECT_EQ(received[0].frame, 7.5f);
    EXPECT_EQ(received[0].sender, static_cast<int>(zeAnimationController::CurveEditor));
    zeOpenSGUtils::unregisterReceiver("currentFrameChanged");
    zeAnimationController::setCurrentFrame(-3.0f, zeAnimationController::TimeLine);
    EXPECT_EQ(zeAnimationController::getCurrentFrame(), -3.0f);
    EXPECT_EQ(received.size(), 1u);
}

TEST_F(ControllerStateTest, ForwardersReachTheirCallbacksOnlyWhenSet)
{
    static std::vector<std::string> seen;
    seen.clear();
    EXPECT_FALSE(zeAnimationController::isSimulationEnable());
    zeAnimationController::executeSequence("none");
    zeAnimationController::setTimeLineCurrentFrame(1.0f);
    zeAnimationController::enableSimulation(true);
    zeAnimationController::updateNavigator(true);
    zeAnimationController::setTimeLineCurrentFrameCB(
        [](float f) { seen.push_back("time line " + std::to_string(f)); });
    zeAnimationController::setCurveEditorCurrentFrameCB([](float) { seen.push_back("curve editor"); });
    zeAnimationController::setClipMakerCurrentFrameCB([](float) { seen.push_back("clip maker"); });
    zeAnimationController::setExecuteSequenceCB(
        [](const std::string& n) { seen.push_back("sequence " + n); });
    zeAnimationController::setIsSimulationEnableCB([] { return true; });
    zeAnimationController::setTimeLineCurrentFrame(2.0f);
    zeAnimationController::setCurveEditorCurrentFrame(2.0f);
    zeAnimationController::setClipMakerCurrentFrame(2.0f);
    zeAnimationController::executeSequence("door");
    EXPECT_TRUE(zeAnimationController::isSimulationEnable());
    EXPECT_EQ(seen, std::vector<std::string>(
                        {"time line 2.000000", "curve editor", "clip maker", "sequence door"}));
}

} // namespace
