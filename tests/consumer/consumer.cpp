// A host of the installed library: builds a small scene, animates one of its values with a curve
// and checks that the value arrives in the scene.

#include <zeAnimation/zeAnimationController.h>
#include <zeAnimation/zeAnimationCurve2D.h>
#include <zeAnimation/zeAnimationManager.h>

#include <OpenSG/OSGBaseFunctions.h>
#include <OpenSG/OSGNode.h>
#include <zeOpenSGExt/OSGTransform3D.h>

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

    manager->destroyAllObjects(true);
    manager->destroyAllFields();
    osg::subRefCP(node);
    osg::osgExit();

    if (failures == 0)
        std::printf("consumer: ok\n");
    return failures == 0 ? 0 : 1;
}
