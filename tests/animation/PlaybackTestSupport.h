#ifndef PLAYBACKTESTSUPPORT_H
#define PLAYBACKTESTSUPPORT_H

#include "AnimationTestSupport.h"

#include <zeAnimation/zeAnimationController.h>
#include <zeAnimation/zeAnimationCurve2D.h>
#include <zeAnimation/zeAnimationField.h>
#include <zeAnimation/zeAnimationSequence.h>
#include <zeAnimation/zeAnimationStreak.h>
#include <zeAnimation/zeAnimationStrip.h>
#include <zeAnimation/zeAnimationUnit.h>
#include <zeAnimation/zeControlPoint2D.h>

#include <OpenSG/OSGComponentTransform.h>
#include <OpenSG/OSGFieldContainerFactory.h>
#include <OpenSG/OSGNode.h>
#include <zeOpenSGUtils/zeOpenSGUtils.h>
#include <zeUtils/zeMessage.h>

#include <string>
#include <vector>

// Playback tests run against a real scene (one transform node per animation field) and a
// simulated host clock that the tests move by hand; the controller's class-wide state is brought
// back to a known point before every test and the host messages are recorded as they arrive.
class PlaybackTest : public AnimationTest
{
protected:
    // One received host message; the typed flags say whether each value had the documented type.
    struct Received
    {
        std::string name;
        float frame = 0.0f;
        int fullFrame = 0;
        int sender = -1;
        bool finished = false;
        bool typed = false;
    };

    static double& clock()
    {
        static double seconds = 0.0;
        return seconds;
    }
    static double hostTime() { return clock(); }
    // Frames are seconds x fps; setting the clock by frame keeps the tests readable.
    static void atFrame(float frame) { clock() = static_cast<double>(frame) / 25.0; }

    // The host messages recorded, each with the value types it documents: the frame (a float) and
    // the sending widget; the whole frame (an int); whether playback finished (a bool).
    static constexpr const char* kMessages[] = {"currentFrameChanged", "currentFullFrameChanged",
                                                "finishedPlayingGlobal"};

    zeAnimationController* controller = zeAnimationController::the();
    std::vector<Received> received;
    std::vector<osg::NodePtr> nodes;

    void SetUp() override
    {
        AnimationTest::SetUp();
        typedef zeAnimationController C;
        clock() = 0.0;
        C::setSimulationTimeCB(&PlaybackTest::hostTime);
        C::setFPS(25.0f);
        C::setForcePlayLoopFullFrame(false);
        clearControllerCallbacks();
        controller->setCurrentObject(0);
        controller->setCurrentCurves(std::vector<osg::UInt64>());
        controller->setEvaluateActiveUnits(false);
        // Empty the waiting list and the play queue left by an earlier test; their objects are
        // gone, so nothing is evaluated.
        controller->pause(false);
        controller->loop();
        controller->stop();
        // Brings the whole-frame tracker of global playback to 0 so that the first whole-frame
        // message of a test is predictable.
        controller->playGlobal(std::vector<osg::UInt64>(), false, false, 0.5f, 0.5f, 0.5f);
        controller->playLoop();
        controller->stopGlobal();
        C::setCurrentFrame(0.0f, C::NoWidget);

        for (const char* name : kMessages) {
            zeOpenSGUtils::registerReceiver(name, [this, name](zeMessage& message) {
                const boost::any frame = message.getValue("frame");
                const boost::any sender = message.getValue("sender");
                const boost::any finished = message.getValue("finished");
                const float* f = boost::any_cast<float>(&frame);
                const int* whole = boost::any_cast<int>(&frame);
                const C::AnimationWidget* s = boost::any_cast<C::AnimationWidget>(&sender);
                const bool* done = boost::any_cast<bool>(&finished);
                Received r;
                r.name = name;
                r.frame = f ? *f : 0.0f;
                r.fullFrame = whole ? *whole : 0;
                r.sender = s ? static_cast<int>(*s) : -1;
                r.finished = done && *done;
                r.typed = r.name == kMessages[0]   ? f && s
                          : r.name == kMessages[1] ? whole != nullptr
                                                   : done != nullptr;
                received.push_back(r);
            });
        }
    }

public:
    // Every host callback of the controller but the clock.
    static void clearControllerCallbacks()
    {
        typedef zeAnimationController C;
        C::setMainCameraCB(nullptr);
        C::setExecuteSequenceCB(nullptr);
        C::setTimeLineCurrentFrameCB(nullptr);
        C::setCurveEditorCurrentFrameCB(nullptr);
        C::setClipMakerCurrentFrameCB(nullptr);
        C::setUpdateNavigatorCB(nullptr);
        C::setEnableSimulationCB(nullptr);
        C::setIsSimulationEnableCB(nullptr);
    }

protected:
    void TearDown() override
    {
        for (const char* name : kMessages)
            zeOpenSGUtils::unregisterReceiver(name);
        controller->pause(false);
        controller->stop();
        controller->stopGlobal();
        zeAnimationController::setSimulationTimeCB(nullptr);
        AnimationTest::TearDown();
        for (osg::NodePtr& node : nodes)
            osg::subRefCP(node);
        nodes.clear();
    }

    // A new transform node in the scene (translation -1, -1, -1) and an animation field on one
    // component of its translation.
    zeAnimationField* translation(osg::UInt32 component = 0)
    {
        osg::ComponentTransformPtr core = osg::ComponentTransform::create();
        osg::beginEditCP(core, osg::ComponentTransform::TranslationFieldMask);
        core->setTranslation(osg::Vec3f(-1.0f, -1.0f, -1.0f));
        osg::endEditCP(core, osg::ComponentTransform::TranslationFieldMask);
        osg::NodePtr node = osg::Node::create();
        osg::beginEditCP(node, osg::Node::CoreFieldMask);
        node->setCore(core);
        osg::endEditCP(node, osg::Node::CoreFieldMask);
        osg::addRefCP(node);
        nodes.push_back(node);
        zeAnimationField* field = manager->createField(0);
        field->fcID = osg::getContainerId(core);
        field->nodeID = osg::getContainerId(node);
        field->name = "translation";
        field->attribute = component == 0 ? "translationX" : component == 1 ? "translationY" : "translationZ";
        field->valuePos = component;
        field->value = -1.0f;
        return field;
    }

    // What the scene holds for the field, read through the scene graph itself.
    static float scene(const zeAnimationField* field)
    {
        osg::ComponentTransformPtr core = osg::ComponentTransformPtr::dcast(
            osg::FieldContainerFactory::the()->getContainer(static_cast<osg::UInt32>(field->fcID)));
        return core->getTranslation()[field->valuePos];
    }

    // A curve on the field through (x0, y0) and (x1, y1).
    zeAnimationCurve2D* curve(zeAnimationField* field, float x0, float y0, float x1, float y1)
    {
        zeAnimationCurve2D* c = manager->createCurve2D(field, "curve", 0, false);
        c->addObject(manager->createPoint2D(x0, y0, 0));
        c->addObject(manager->createPoint2D(x1, y1, 0));
        return c;
    }

    // A block holding one such curve, so that its interval is [x0, x1].
    zeAnimationUnit* block(zeAnimationField* field, float x0, float y0, float x1, float y1,
                           const std::string& name = "block")
    {
        zeAnimationUnit* b = manager->createUnit(name, 0);
        b->addObject(curve(field, x0, y0, x1, y1));
        return b;
    }

    static zeAnimationCurve2D* firstCurve(const zeAnimationObject* object)
    {
        return object->getCurves().front();
    }

    // The curve's own value at a frame: the tests compare the scene with it to see at which
    // frame playback read the curve.
    static float at(zeAnimationCurve2D* c, float frame)
    {
        float value = 0.0f;
        EXPECT_TRUE(zeAnimationController::computeCurveValue(c, frame, value));
        return value;
    }

    // Moves the host clock to the time given and runs one pass of per-object (or global) playback.
    void pass(double seconds)
    {
        clock() = seconds;
        controller->loop();
    }
    void globalPass(double seconds)
    {
        clock() = seconds;
        controller->playLoop();
    }

    std::vector<Received> messagesNamed(const std::string& name) const
    {
        std::vector<Received> result;
        for (const Received& r : received) {
            if (r.name == name)
                result.push_back(r);
        }
        return result;
    }
};

#endif // PLAYBACKTESTSUPPORT_H
