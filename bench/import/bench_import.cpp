// Import of an older scene holding 100,000 old keys: in one curve, and spread over 1,000 blocks
// of 100 keys on 100 nodes. The time covers the whole import (conversion, field creation,
// attachment edits and the removal of the old containers), not the building of the old scene.
#include <zeAnimation/zeAnimationCurve2D.h>
#include <zeAnimation/zeAnimationManager.h>
#include <zeAnimation/zeAnimationUnit.h>

#include <OpenSG/OSGBaseFunctions.h>
#include <OpenSG/OSGGroup.h>
#include <zeOpenSGExt/OSGAnimationAttachment.h>
#include <zeOpenSGExt/OSGAnimationBlock.h>
#include <zeOpenSGExt/OSGAnimationControlPoint.h>
#include <zeOpenSGExt/OSGAnimationCurve.h>
#include <zeOpenSGExt/OSGTransform3D.h>

#include <benchmark/benchmark.h>

namespace {

zeAnimationManager* manager()
{
    return zeAnimationManager::the();
}

const int kKeys = 100000;

// A scene of `nodes` Transform3D nodes below a group, each with `blocksPerNode` old blocks of
// one translation curve with `keysPerCurve` keys.
osg::NodePtr makeOldScene(int nodes, int blocksPerNode, int keysPerCurve)
{
    osg::NodePtr root = osg::Node::create();
    root->setCore(osg::Group::create());
    osg::addRefCP(root);
    for (int n = 0; n < nodes; ++n) {
        osg::NodePtr node = osg::Node::create();
        node->setCore(osg::Transform3D::create());
        root->addChild(node);
        osg::AnimationAttachmentPtr old = osg::AnimationAttachment::create();
        for (int b = 0; b < blocksPerNode; ++b) {
            osg::AnimationCurvePtr curve = osg::AnimationCurve::create();
            curve->setAFAppNode(node);
            curve->setAFFieldName("translationX");
            for (int k = 0; k < keysPerCurve; ++k) {
                osg::AnimationControlPointPtr point = osg::AnimationControlPoint::create();
                point->setPosition(osg::Pnt2f(static_cast<float>(k), static_cast<float>(k % 7)));
                point->setTangentType(3); // smooth: every key's handles are computed
                curve->pushToControlPoints(point);
            }
            osg::AnimationBlockPtr block = osg::AnimationBlock::create();
            block->setNode(node);
            block->pushToCurves(curve);
            old->pushToBlocks(block);
        }
        node->addAttachment(old);
    }
    return root;
}

void clearPool()
{
    // Whole trees at once; the rule of destroyAllObjects keeps one object, which goes after.
    manager()->destroyAllObjects(true);
    for (const auto& entry : manager()->getObjects()) {
        if (zeAnimationObject* object = manager()->getObject(entry.first))
            manager()->destroyObject(object);
    }
    manager()->destroyAllFields();
}

// Every old block became a block of one curve over frames 0 to keysPerCurve - 1 whose values,
// k % 7, run from 0 to 6.
bool importedWhole(int blocks, int keysPerCurve)
{
    const std::vector<zeAnimationUnit*> units = manager()->getSceneUnits();
    if (units.size() != static_cast<std::size_t>(blocks) ||
        manager()->getObjectCount() != static_cast<std::size_t>(blocks) * (2 + keysPerCurve))
        return false;
    for (const zeAnimationUnit* unit : units) {
        const std::vector<zeAnimationCurve2D*> curves = unit->getCurves();
        if (curves.size() != 1 || curves[0]->getPointCount() != static_cast<osg::UInt32>(keysPerCurve) ||
            curves[0]->getBegin() != 0.0f || curves[0]->getEnd() != keysPerCurve - 1.0f ||
            curves[0]->getMinimum() != 0.0f || curves[0]->getMaximum() != 6.0f)
            return false;
    }
    return true;
}

void runImport(benchmark::State& state, int nodes, int blocksPerNode, int keysPerCurve)
{
    for (auto _ : state) {
        state.PauseTiming();
        osg::NodePtr root = makeOldScene(nodes, blocksPerNode, keysPerCurve);
        state.ResumeTiming();
        manager()->importKORUAnimations(root, osg::NullFC, static_cast<osg::UInt32>(nodes + 1));
        state.PauseTiming();
        state.counters["objects"] = static_cast<double>(manager()->getObjectCount());
        const bool whole = importedWhole(nodes * blocksPerNode, keysPerCurve);
        osg::subRefCP(root);
        clearPool();
        if (!whole) {
            state.SkipWithError("the import did not convert every block, curve and key");
            break;
        }
        state.ResumeTiming();
    }
}

void BM_ImportOneCurve(benchmark::State& state)
{
    runImport(state, 1, 1, kKeys);
}
BENCHMARK(BM_ImportOneCurve)->Unit(benchmark::kMillisecond);

void BM_ImportManyBlocks(benchmark::State& state)
{
    runImport(state, 100, 10, kKeys / 1000);
}
BENCHMARK(BM_ImportManyBlocks)->Unit(benchmark::kMillisecond);

} // namespace
