// The entry point most benchmarks share: the scene graph is set up around the run, and the
// identifier generator starts from a fixed seed, so that every run builds the same pools.

#include <zeAnimation/zeAnimationManager.h>

#include <OpenSG/OSGBaseFunctions.h>

#include <benchmark/benchmark.h>

int main(int argc, char** argv)
{
    osg::osgInit(0, nullptr);
    zeAnimationManager::the()->random(12345);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    osg::osgExit();
    return 0;
}
