// A host of the installed library: builds a small scene, animates one of its values with a curve,
// checks that the value arrives in the scene, and saves and loads the animation file.

#include <zeAnimation/zeAnimationController.h>
#include <zeAnimation/zeAnimationCurve2D.h>
#include <zeAnimation/zeAnimationManager.h>

#include <OpenSG/OSGBaseFunctions.h>
#include <OpenSG/OSGNode.h>
#include <zeOpenSGExt/OSGTransform3D.h>

#include <QString>
#include <QTemporaryDir>

#include <cmath>
#include <cstdio>

namespace {

int failures = 0;

void expectNear(const char* what, float actual, float expected)
{
    if (std::fabs(actual - expected) > 1e-4f) {
        std::printf("consumer: %s is %g, expected %g\n", what, actual, expected);
        ++failures;
    }
}

} // namespace

int main(int argc, char** argv)
{
    osg::osgInit(argc, argv);

    osg::Transform3DPtr move = osg::Transform3D::create();
    osg::NodePtr node = osg::Node::create();
    osg::beginEditCP(node, osg::Node::CoreFieldMask);
    node->setCore(move);
    osg::endEditCP(node, osg::Node::CoreFieldMask);
    osg::addRefCP(node);

    zeAnimationManager* manager = zeAnimationManager::the();
    manager->init(nullptr);
    zeAnimationManager::setSceneRootNode(node);

    zeAnimationCurve2D* curve = manager->createCurve2D(node, "translationX");
    if (!curve) {
        std::printf("consumer: no curve on translationX\n");
        return 1;
    }
    curve->addObject(manager->createPoint2D(0.0f, 0.0f));
    curve->addObject(manager->createPoint2D(10.0f, 5.0f));

    // The keys themselves are met exactly; between them the value rises.
    float value = -1.0f;
    if (!zeAnimationController::computeCurveValue(curve, 10.0f, value))
        ++failures;
    expectNear("the value at the last key", value, 5.0f);
    float middle = -1.0f;
    if (!zeAnimationController::computeCurveValue(curve, 5.0f, middle) || !(middle > 0.0f && middle < 5.0f)) {
        std::printf("consumer: the value between the keys is %g\n", middle);
        ++failures;
    }

    // Evaluating the curve writes into the scene graph.
    zeAnimationController::the()->evaluateObject(curve, 10.0f, false);
    expectNear("the node's x translation", move->getTranslation()[0], 5.0f);

    // The pool survives a round trip through a file: the curve comes back under its identifier,
    // with its keys, and drives the node again.
    const osg::UInt64 curveId = curve->getId();
    QTemporaryDir directory;
    const QString path = directory.filePath("pool.xml");
    if (!directory.isValid() || !manager->saveAnimations(path.toLocal8Bit().constData())) {
        std::printf("consumer: saving %s failed\n", qPrintable(path));
        ++failures;
    }
    // The curve goes with its keys (destroyAllObjects would keep the last object standing).
    manager->destroyObject(curve);
    manager->destroyAllFields();
    if (manager->getObjectCount() != 0) {
        std::printf("consumer: %zu objects outlived their curve\n", manager->getObjectCount());
        ++failures;
    }
    if (!manager->loadAnimations(path, true))
        std::printf("consumer: loading failed: %s\n", qPrintable(manager->getLastFileError()));
    zeAnimationCurve2D* loaded = manager->getCurve2D(curveId);
    float again = -1.0f;
    if (!loaded || !zeAnimationController::computeCurveValue(loaded, 5.0f, again)) {
        std::printf("consumer: the curve did not come back from the file\n");
        ++failures;
    } else {
        expectNear("the loaded curve between the keys", again, middle);
        osg::beginEditCP(move, osg::Transform3D::TranslationFieldMask);
        move->setTranslation(osg::Vec3f(0.0f, 0.0f, 0.0f));
        osg::endEditCP(move, osg::Transform3D::TranslationFieldMask);
        zeAnimationController::the()->evaluateObject(loaded, 10.0f, false);
        expectNear("the node's x translation from the loaded curve", move->getTranslation()[0], 5.0f);
    }

    manager->destroyObject(loaded);
    manager->destroyAllFields();
    osg::subRefCP(node);
    osg::osgExit();

    if (failures == 0)
        std::printf("consumer: ok\n");
    return failures == 0 ? 0 : 1;
}
