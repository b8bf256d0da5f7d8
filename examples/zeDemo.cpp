// zeDemo: the animation library driving a small scene, frame by frame.
//
// The scene: a camera, a sun light, and a box with a red material under a transform. A per-object
// "lights up" block brightens the sun; its end trigger calls a host function that starts the
// clip "showcase" on the global timeline. The clip moves and turns the box, zooms the camera,
// repaints the box, dims the sun, and holds a host sequence "fireworks". A simulated clock runs at
// 25 frames per second; every frame the host calls loop() and playLoop() as its render loop
// would, then the demo reads the values back from the scene graph and prints them together with
// the messages the host received.

#include "zeExampleScene.h"

#include <zeAnimation/zeAnimationController.h>
#include <zeAnimation/zeAnimationCurve2D.h>
#include <zeAnimation/zeAnimationManager.h>
#include <zeAnimation/zeAnimationObject.h>
#include <zeAnimation/zeAnimationSequence.h>
#include <zeAnimation/zeAnimationStreak.h>
#include <zeAnimation/zeAnimationStrip.h>
#include <zeAnimation/zeAnimationUnit.h>

#include <OpenSG/OSGBaseFunctions.h>
#include <OpenSG/OSGDirectionalLight.h>
#include <OpenSG/OSGGeometry.h>
#include <OpenSG/OSGGroup.h>
#include <OpenSG/OSGMaterialGroup.h>
#include <OpenSG/OSGNode.h>
#include <OpenSG/OSGSimpleAttachments.h>
#include <OpenSG/OSGSimpleMaterial.h>
#include <zeOpenSGExt/OSGCameraSetting.h>
#include <zeOpenSGExt/OSGTransform3D.h>
#include <zeOpenSGExt/OSGTransformAttachment.h>
#include <zeOpenSGUtils/zeNodeUtils.h>
#include <zeOpenSGUtils/zeOpenSGUtils.h>
#include <zeUtils/zeMessage.h>

#include <cstdio>
#include <initializer_list>
#include <string>
#include <utility>

using namespace osg;

namespace {

typedef zeAnimationController Controller;

double simulatedSeconds = 0.0; // the host's clock, advanced by the frame loop below
bool clipRequested = false;    // set by the trigger connection, acted on by the host
std::string notes;             // what the host heard during the current frame

double hostTime()
{
    return simulatedSeconds;
}

void note(const std::string& text)
{
    notes += "\n        " + text;
}

void runHostSequence(const std::string& name)
{
    note("host runs sequence \"" + name + "\"");
}

void lightsAreUp()
{
    note("trigger: \"lights up\" ended -> host function starts the clip");
    clipRequested = true;
}

using zeExample::block;
using zeExample::curve;
using zeExample::makeNode;

} // namespace

int main(int argc, char** argv)
{
    osgInit(argc, argv);

    // ---- The scene ----------------------------------------------------------------------------
    SimpleMaterialPtr paint = SimpleMaterial::create();
    beginEditCP(paint, SimpleMaterial::DiffuseFieldMask);
    paint->setDiffuse(Color3f(0.8f, 0.1f, 0.1f));
    endEditCP(paint, SimpleMaterial::DiffuseFieldMask);
    MaterialGroupPtr paintGroup = MaterialGroup::create();
    paintGroup->setMaterial(paint);
    Transform3DPtr move = Transform3D::create();
    CameraSettingPtr camera = CameraSetting::create();
    DirectionalLightPtr sun = DirectionalLight::create();

    NodePtr root = makeNode(Group::create(), "root");
    NodePtr cameraNode = makeNode(camera, "camera");
    NodePtr sunNode = makeNode(sun, "sun");
    NodePtr paintNode = makeNode(paintGroup, "paint");
    NodePtr boxNode = makeNode(move, "box transform");
    addRefCP(root);
    root->addChild(cameraNode);
    root->addChild(sunNode);
    sunNode->addChild(paintNode);
    paintNode->addChild(boxNode);
    boxNode->addChild(makeNode(Geometry::create(), "box"));
    beginEditCP(camera, CameraSetting::FocalLengthFieldMask);
    camera->setFocalLength(35.0f);
    endEditCP(camera, CameraSetting::FocalLengthFieldMask);

    zeAnimationManager* manager = zeAnimationManager::the();
    manager->init(nullptr);
    zeAnimationManager::setSceneRootNode(root);
    Controller* controller = Controller::the();
    Controller::setSimulationTimeCB(&hostTime);
    Controller::setExecuteSequenceCB(&runHostSequence);

    // ---- The animation ------------------------------------------------------------------------
    // Per-object playback, frames 0 to 10: the sun comes up.
    zeAnimationUnit* lightsUp = block("lights up", {curve(sunNode, "diffuseR", {{0, 0.1f}, {10, 1.0f}}),
                                                    curve(sunNode, "diffuseG", {{0, 0.1f}, {10, 0.9f}}),
                                                    curve(sunNode, "diffuseB", {{0, 0.1f}, {10, 0.7f}})});
    manager->createConnection(lightsUp, zeAnimationManager::TriggerEnd, &lightsAreUp);

    // The clip, frames 0 to 40 on the global timeline, one track per block.
    zeAnimationStrip* clip = zeExample::showcaseClip(boxNode, cameraNode, paintNode, sunNode);

    // ---- What the host hears ------------------------------------------------------------------
    // The two frame messages arrive every frame and are shown as columns; the rest as notes.
    float clipFrame = 0.0f;
    int wholeFrame = 0;
    bool frameSent = false;
    bool wholeSent = false;
    zeOpenSGUtils::registerReceiver("currentFrameChanged", [&](zeMessage& m) {
        const boost::any frame = m.getValue("frame");
        const boost::any sender = m.getValue("sender");
        const float* f = boost::any_cast<float>(&frame);
        const Controller::AnimationWidget* w = boost::any_cast<Controller::AnimationWidget>(&sender);
        frameSent = f && w && *w == Controller::PlayGlobal;
        clipFrame = f ? *f : 0.0f;
    });
    zeOpenSGUtils::registerReceiver("currentFullFrameChanged", [&](zeMessage& m) {
        const boost::any frame = m.getValue("frame");
        const int* f = boost::any_cast<int>(&frame);
        wholeSent = f != nullptr;
        wholeFrame = f ? *f : 0;
    });
    zeOpenSGUtils::registerReceiver("finishedPlayingGlobal", [](zeMessage&) {
        note("message finishedPlayingGlobal: the clip has ended");
    });

    std::printf(
        "zeDemo: \"lights up\" plays on its own; its end trigger starts the clip \"showcase\" on the\n"
        "global timeline. One line per host frame at 25 fps. \"clip\" and \"whole\" are the frames\n"
        "received in the messages currentFrameChanged and currentFullFrameChanged; the other columns\n"
        "are read back from the scene graph. The host reads its clock half a millisecond after each\n"
        "tick, hence the clip's extra hundredth of a frame.\n\n");
    std::printf("host   clip whole |  box x  box rotY | focal |  paint r,g,b   |   sun r,g,b\n");

    controller->enqueueObject(lightsUp, true);
    const float fps = Controller::getFPS();
    for (int frame = 0; frame <= 60; ++frame) {
        simulatedSeconds = frame / static_cast<double>(fps); // the frame's tick
        frameSent = false;
        wholeSent = false;
        controller->loop(); // per-object playback; may fire the trigger
        if (clipRequested) {
            clipRequested = false;
            Controller::initSequences(clip->getSequencesRecursive());
            controller->playGlobal(clip->getId(), false, false, 0.0f, 40.0f, 0.0f);
        }
        // The global step reads the clock a moment after the tick, as a render loop would; frames
        // are float seconds times fps, so a reading exactly on a tick may land a hair below it.
        simulatedSeconds += 0.0005;
        controller->playLoop();

        TransformAttachmentPtr turn = zeNodeUtils::getTransformAttachment(boxNode);
        const float rotY = turn != NullFC ? turn->getRotationAngles()[1] : 0.0f;
        const Color3f& p = paint->getDiffuse();
        const Color4f& s = sun->getDiffuse();
        char clipText[16] = "     -";
        char wholeText[16] = "    -";
        if (frameSent)
            std::snprintf(clipText, sizeof(clipText), "%6.2f", clipFrame);
        if (wholeSent)
            std::snprintf(wholeText, sizeof(wholeText), "%5d", wholeFrame);
        std::printf("%4d %s %s | %6.2f  %7.1f | %5.1f | %4.2f %4.2f %4.2f | %4.2f %4.2f %4.2f%s\n", frame,
                    clipText, wholeText, move->getTranslation()[0], rotY, camera->getFocalLength(), p[0],
                    p[1], p[2], s[0], s[1], s[2], notes.c_str());
        notes.clear();
        if (!Controller::isPlayingGlobal() && !controller->isPlaying() && frame > 10)
            break;
    }

    zeOpenSGUtils::unregisterReceiver("currentFrameChanged");
    zeOpenSGUtils::unregisterReceiver("currentFullFrameChanged");
    zeOpenSGUtils::unregisterReceiver("finishedPlayingGlobal");
    zeExample::releaseScene(root);
    osgExit();
    return 0;
}
