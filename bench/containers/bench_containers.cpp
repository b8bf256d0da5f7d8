// Timeline containers at scale: a clip of 1,000 tracks with 10 blocks each (every block holding
// one curve of three keys, 51,001 objects) built, moved, stretched, flipped and destroyed, and
// destroyAllObjects on a pool of about 100,000 objects.
#include <zeAnimation/zeAnimationCurve2D.h>
#include <zeAnimation/zeAnimationManager.h>
#include <zeAnimation/zeAnimationStreak.h>
#include <zeAnimation/zeAnimationStrip.h>
#include <zeAnimation/zeAnimationUnit.h>
#include <zeAnimation/zeControlPoint2D.h>

#include <benchmark/benchmark.h>

#include <cmath>

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
// The clip's interval: blocks begin at b * 10 + t % 7 and last 8 frames.
const float kClipBegin = 0.0f;
const float kClipEnd = (kBlocks - 1) * 10.0f + 6.0f + 8.0f;
const std::size_t kClipObjects = 1 + kTracks + kTracks * kBlocks * 5;

// What a built clip must be: every block placed, on the track made for it, over the known interval.
bool clipIsWhole(const zeAnimationStrip* clip)
{
    return manager()->getObjectCount() == kClipObjects && clip->getChildIds().size() == kTracks &&
           clip->getUnits().size() == static_cast<std::size_t>(kTracks * kBlocks) &&
           clip->getBegin() == kClipBegin && clip->getEnd() == kClipEnd;
}

void BM_ClipBuild(benchmark::State& state)
{
    for (auto _ : state) {
        zeAnimationStrip* clip = makeClip(kTracks, kBlocks);
        state.PauseTiming();
        const bool whole = clipIsWhole(clip);
        manager()->destroyObject(clip);
        if (!whole) {
            state.SkipWithError("the clip built is not the one laid out");
            break;
        }
        state.ResumeTiming();
    }
    state.counters["objects"] = static_cast<double>(kClipObjects);
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
    // Whole-frame moves are exact: an odd number of them leaves the clip one frame later.
    const float shift = state.iterations() % 2 != 0 ? 1.0f : 0.0f;
    if (clip->getBegin() != kClipBegin + shift || clip->getEnd() != kClipEnd + shift)
        state.SkipWithError("the moved clip is not where the moves put it");
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
    // The edges land where they were sent, up to the rounding of the scaled children.
    const float out = grow ? 0.0f : 50.0f;
    if (std::fabs(clip->getBegin() - (begin - out)) > 1e-3f ||
        std::fabs(clip->getEnd() - (end + out)) > 1e-3f)
        state.SkipWithError("the stretched clip does not span the interval it was stretched to");
    manager()->destroyObject(clip);
}
BENCHMARK(BM_ClipStretch)->Unit(benchmark::kMillisecond);

void BM_ClipFlip(benchmark::State& state)
{
    zeAnimationStrip* clip = makeClip(kTracks, kBlocks);
    for (auto _ : state)
        clip->flip();
    // Track 0 spans [0, 98] in the clip's [0, 104]: each flip mirrors it to [6, 104] and back.
    const bool odd = state.iterations() % 2 != 0;
    const zeAnimationStreak* first = clip->getStreak(0);
    if (clip->isFlipped() != odd || !first || first->getBegin() != (odd ? 6.0f : 0.0f) ||
        clip->getBegin() != kClipBegin || clip->getEnd() != kClipEnd)
        state.SkipWithError("the flipped clip is not the mirror image of the one built");
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
        if (manager()->getObjectCount() != 0) {
            state.SkipWithError("destroying the clip left objects behind");
            break;
        }
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
        const bool emptied = pool == 102020 && manager()->getObjectCount() <= 1;
        // The rule keeps the last object; clear it for the next round.
        for (const auto& entry : manager()->getObjects())
            manager()->destroyObject(manager()->getObject(entry.first));
        if (!emptied) {
            state.SkipWithError("destroyAllObjects did not empty the pool of 102,020 objects");
            break;
        }
        state.ResumeTiming();
    }
    state.counters["objects"] = static_cast<double>(pool);
}
BENCHMARK(BM_DestroyAllObjects)->Unit(benchmark::kMillisecond);

} // namespace
