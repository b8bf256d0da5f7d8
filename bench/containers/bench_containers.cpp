// Timeline containers at scale: a clip of 1,000 tracks with 10 blocks each (every block holding
// one curve of three keys, 51,001 objects) built, moved, stretched, flipped and destroyed, and
// destroyAllObjects on a pool of about 100,000 objects.
#include <zeAnimation/zeAnimationCurve2D.h>
#include <zeAnimation/zeAnimationManager.h>
#include <zeAnimation/zeAnimationStreak.h>
#include <zeAnimation/zeAnimationStrip.h>
#include <zeAnimation/zeAnimationUnit.h>
#include <zeAnimation/zeControlPoint2D.h>

#include <OpenSG/OSGBaseFunctions.h>

#include <benchmark/benchmark.h>

namespace {

zeAnimationManager* manager()
{
    return zeAnimationManager::the();
}

// One block on [begin, begin + 8] holding a curve with keys at begin, begin + 4 and begin + 8.
zeAnimationUnit* makeBlock(float begin)
{
    zeAnimationManager* m = manager();
    zeAnimationCurve2D* curve = m->createCurve2D(0);
    curve->addObject(m->createPoint2D(begin, 0.0f, 0));
    curve->addObject(m->createPoint2D(begin + 4.0f, 1.0f, 0));
    curve->addObject(m->createPoint2D(begin + 8.0f, 0.5f, 0));
    zeAnimationUnit* block = m->createUnit(0);
    block->addObject(curve);
    return block;
}

// Built the way an editor builds it: each track goes into the clip first, then its blocks are
// laid out on it one by one with the overlap test, every insertion updating the whole chain.
zeAnimationStrip* makeClip(int tracks, int blocksPerTrack)
{
    zeAnimationManager* m = manager();
    zeAnimationStrip* clip = m->createStrip(0);
    for (int t = 0; t < tracks; ++t) {
        zeAnimationStreak* track = m->createStreak(0);
        clip->addObject(track);
        for (int b = 0; b < blocksPerTrack; ++b)
            track->insertObject(makeBlock(static_cast<float>(b * 10 + t % 7)));
    }
    return clip;
}

const int kTracks = 1000;
const int kBlocks = 10;

void BM_ClipBuild(benchmark::State& state)
{
    for (auto _ : state) {
        zeAnimationStrip* clip = makeClip(kTracks, kBlocks);
        state.PauseTiming();
        manager()->destroyObject(clip);
        state.ResumeTiming();
    }
    state.counters["objects"] = static_cast<double>(1 + kTracks + kTracks * kBlocks * 5);
}
BENCHMARK(BM_ClipBuild)->Unit(benchmark::kMillisecond);

void BM_ClipMove(benchmark::State& state)
{
    zeAnimationStrip* clip = makeClip(kTracks, kBlocks);
    float delta = 1.0f;
    for (auto _ : state) {
        clip->move(delta, true);
        delta = -delta;
    }
    benchmark::DoNotOptimize(clip->getBegin());
    manager()->destroyObject(clip);
}
BENCHMARK(BM_ClipMove)->Unit(benchmark::kMillisecond);

void BM_ClipStretch(benchmark::State& state)
{
    zeAnimationStrip* clip = makeClip(kTracks, kBlocks);
    const float begin = clip->getBegin();
    const float end = clip->getEnd();
    bool grow = true;
    for (auto _ : state) {
        // Stretch both edges out, then back: a moveBegin and a moveEnd per iteration.
        clip->moveEnd(grow ? end + 50.0f : end, true);
        clip->moveBegin(grow ? begin - 50.0f : begin, true);
        grow = !grow;
    }
    benchmark::DoNotOptimize(clip->getEnd());
    manager()->destroyObject(clip);
}
BENCHMARK(BM_ClipStretch)->Unit(benchmark::kMillisecond);

void BM_ClipFlip(benchmark::State& state)
{
    zeAnimationStrip* clip = makeClip(kTracks, kBlocks);
    for (auto _ : state)
        clip->flip();
    benchmark::DoNotOptimize(clip->isFlipped());
    manager()->destroyObject(clip);
}
BENCHMARK(BM_ClipFlip)->Unit(benchmark::kMillisecond);

void BM_ClipDestroy(benchmark::State& state)
{
    for (auto _ : state) {
        state.PauseTiming();
        zeAnimationStrip* clip = makeClip(kTracks, kBlocks);
        state.ResumeTiming();
        manager()->destroyObject(clip);
    }
}
BENCHMARK(BM_ClipDestroy)->Unit(benchmark::kMillisecond);

// 20 clips of 100 tracks of 10 blocks: 20 + 2,000 + 20,000 * 5 = 102,020 objects.
void BM_DestroyAllObjects(benchmark::State& state)
{
    std::size_t pool = 0;
    for (auto _ : state) {
        state.PauseTiming();
        for (int c = 0; c < 20; ++c)
            makeClip(100, 10);
        pool = manager()->getObjectCount();
        state.ResumeTiming();
        manager()->destroyAllObjects(true);
        state.PauseTiming();
        // The rule keeps the last object; clear it for the next round.
        for (const auto& entry : manager()->getObjects())
            manager()->destroyObject(manager()->getObject(entry.first));
        state.ResumeTiming();
    }
    state.counters["objects"] = static_cast<double>(pool);
}
BENCHMARK(BM_DestroyAllObjects)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    osg::osgInit(0, nullptr);
    manager()->random(12345);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    osg::osgExit();
    return 0;
}
