// One frame of global playback over a clip of 1,000 blocks with 10 curves each (10,000 curves),
// every curve driving its own component of a material in the scene. Reports the time per frame
// and the heap allocations per frame.
#include <zeAnimation/zeAnimationController.h>
#include <zeAnimation/zeAnimationCurve2D.h>
#include <zeAnimation/zeAnimationField.h>
#include <zeAnimation/zeAnimationManager.h>
#include <zeAnimation/zeAnimationStreak.h>
#include <zeAnimation/zeAnimationStrip.h>
#include <zeAnimation/zeAnimationUnit.h>

#include <OpenSG/OSGBaseFunctions.h>
#include <OpenSG/OSGSimpleMaterial.h>

#include <benchmark/benchmark.h>

#include <atomic>
#include <cstdlib>
#include <new>
#include <vector>

namespace {

std::atomic<unsigned long long> allocations(0);

double simulatedSeconds = 0.0;
double hostTime()
{
    return simulatedSeconds;
}

// The animated components of a material: three colours and the shininess.
struct Component
{
    const char* name;
    const char* attribute;
    osg::UInt32 valuePos;
};
const Component kComponents[10] = {
    {"diffuse", "diffuseR", 0},    {"diffuse", "diffuseG", 1},   {"diffuse", "diffuseB", 2},
    {"ambient", "ambientR", 0},    {"ambient", "ambientG", 1},   {"ambient", "ambientB", 2},
    {"specular", "specularR", 0},  {"specular", "specularG", 1}, {"specular", "specularB", 2},
    {"shininess", "shininess", 0},
};

struct Scene
{
    std::vector<osg::SimpleMaterialPtr> materials;
    zeAnimationStrip* clip = nullptr;
};

// 10 tracks of 100 blocks, each block 10 frames long and animating one material; the clip spans
// 1,000 frames, so at any frame most blocks are finished or not yet started and one per track
// is running: every curve is read and written each frame.
Scene buildScene(int blocks, int curvesPerBlock)
{
    zeAnimationManager* manager = zeAnimationManager::the();
    Scene scene;
    scene.clip = manager->createStrip("clip", 0);
    const int tracks = 10;
    std::vector<zeAnimationStreak*> lanes;
    for (int t = 0; t < tracks; ++t) {
        lanes.push_back(manager->createStreak(0));
        scene.clip->addObject(lanes.back());
    }
    for (int b = 0; b < blocks; ++b) {
        osg::SimpleMaterialPtr material = osg::SimpleMaterial::create();
        osg::addRefCP(material);
        scene.materials.push_back(material);
        zeAnimationUnit* unit = manager->createUnit("block", 0);
        const float begin = static_cast<float>((b / tracks) * 10);
        for (int c = 0; c < curvesPerBlock; ++c) {
            const Component& component = kComponents[c % 10];
            zeAnimationField* field = manager->createField(0);
            field->fcID = osg::getContainerId(material);
            field->name = component.name;
            field->attribute = component.attribute;
            field->valuePos = component.valuePos;
            zeAnimationCurve2D* curve = manager->createCurve2D(field, component.attribute, 0, false);
            curve->addObject(manager->createPoint2D(begin, 0.1f, 0));
            curve->addObject(manager->createPoint2D(begin + 5.0f, 0.9f, 0));
            curve->addObject(manager->createPoint2D(begin + 10.0f, 0.3f, 0));
            unit->addObject(curve);
        }
        lanes[b % tracks]->addObject(unit);
    }
    return scene;
}

void release(Scene& scene)
{
    zeAnimationController::the()->stopGlobal();
    zeAnimationManager::the()->destroyObject(scene.clip);
    zeAnimationManager::the()->destroyAllFields();
    for (osg::SimpleMaterialPtr& material : scene.materials)
        osg::subRefCP(material);
}

void BM_GlobalPlaybackFrame(benchmark::State& state)
{
    const int blocks = static_cast<int>(state.range(0));
    Scene scene = buildScene(blocks, 10);
    zeAnimationController* controller = zeAnimationController::the();
    zeAnimationController::setSimulationTimeCB(&hostTime);
    simulatedSeconds = 0.0;
    controller->playGlobal(scene.clip->getId(), false, true, 0.0f, 1000.0f, 0.0f);
    controller->playLoop(); // warm: first use of every scratch buffer and cache

    unsigned long long frames = 0;
    const unsigned long long before = allocations.load();
    for (auto _ : state) {
        simulatedSeconds += 1.0 / 25.0 + 0.001; // a new frame, and a new whole frame, each time
        controller->playLoop();
        ++frames;
    }
    const unsigned long long allocated = allocations.load() - before;
    state.counters["curves"] = blocks * 10.0;
    state.counters["allocs/frame"] =
        frames ? static_cast<double>(allocated) / static_cast<double>(frames) : 0.0;
    state.counters["ns/curve"] =
        benchmark::Counter(static_cast<double>(frames) * blocks * 10.0,
                           benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
    release(scene);
    zeAnimationController::setSimulationTimeCB(nullptr);
}
BENCHMARK(BM_GlobalPlaybackFrame)->Arg(100)->Arg(1000)->Unit(benchmark::kMicrosecond);

} // namespace

void* operator new(std::size_t size)
{
    allocations.fetch_add(1, std::memory_order_relaxed);
    if (void* p = std::malloc(size ? size : 1))
        return p;
    std::abort();
}
void operator delete(void* p) noexcept
{
    std::free(p);
}
void operator delete(void* p, std::size_t) noexcept
{
    std::free(p);
}

int main(int argc, char** argv)
{
    osg::osgInit(0, nullptr);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    osg::osgExit();
    return 0;
}
