// Editing at scale, done the way an editor or an importer does it: keys made one at a time and
// added at once, rows appended to a clip, thousands of sequences laid out on one track or
// stacked into a clip, and a selection of thousands of keys dragged. Each of these has to stay
// near-linear in the size of what is edited.
#include <zeAnimation/zeAnimationCurve2D.h>
#include <zeAnimation/zeAnimationManager.h>
#include <zeAnimation/zeAnimationSequence.h>
#include <zeAnimation/zeAnimationStreak.h>
#include <zeAnimation/zeAnimationStrip.h>
#include <zeAnimation/zeAnimationUnit.h>
#include <zeAnimation/zeControlPoint2D.h>

#include <OpenSG/OSGBaseFunctions.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

namespace {

zeAnimationManager* manager()
{
    return zeAnimationManager::the();
}

// Each key is made just before it is added, as a key-frame editor or an importer does.
void BM_AddKeysAsMade(benchmark::State& state)
{
    const int count = static_cast<int>(state.range(0));
    for (auto _ : state) {
        zeAnimationCurve2D* curve = manager()->createCurve2D();
        for (int i = 0; i < count; ++i)
            curve->addObject(manager()->createPoint2D(static_cast<float>(i), std::sin(i * 0.1f)));
        state.PauseTiming();
        const bool whole = curve->getPointCount() == static_cast<osg::UInt32>(count) &&
                           curve->getBegin() == 0.0f && curve->getEnd() == static_cast<float>(count - 1);
        manager()->destroyCurve2D(curve);
        if (!whole) {
            state.SkipWithError("the curve does not hold every key added");
            break;
        }
        state.ResumeTiming();
    }
}
BENCHMARK(BM_AddKeysAsMade)
    ->Arg(10000)
    ->Arg(20000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);

// A selection of every key of a long curve dragged by a few frames.
void BM_MoveSelectedKeys(benchmark::State& state)
{
    const int count = static_cast<int>(state.range(0));
    zeAnimationCurve2D* curve = manager()->createCurve2D();
    for (int i = 0; i < count; ++i)
        curve->addObject(manager()->createPoint2D(i * 10.0f, std::sin(i * 0.1f)));
    curve->setSelected(true);
    float delta = 2.0f;
    for (auto _ : state) {
        curve->moveSelectedPoints(osg::Vec2f(delta, 0.0f), false, false, false, false);
        delta = -delta;
    }
    // Every key moved with the selection: an odd number of drags leaves them 2 frames later.
    const float shift = state.iterations() % 2 != 0 ? 2.0f : 0.0f;
    if (curve->getPointCount() != static_cast<osg::UInt32>(count) || curve->getBegin() != shift ||
        curve->getEnd() != (count - 1) * 10.0f + shift)
        state.SkipWithError("the dragged keys are not where the drags put them");
    manager()->destroyCurve2D(curve);
}
BENCHMARK(BM_MoveSelectedKeys)->Arg(20000)->Arg(40000)->Unit(benchmark::kMillisecond)->Iterations(1);

// An object moved to a row far below the clip's last one: the rows in between are appended.
void BM_MoveToFarRow(benchmark::State& state)
{
    const osg::UInt32 row = static_cast<osg::UInt32>(state.range(0));
    for (auto _ : state) {
        zeAnimationStrip* clip = manager()->createStrip(0);
        zeAnimationSequence* sequence = manager()->createSequence("s", 0);
        sequence->setBegin(0.0f);
        sequence->setEnd(10.0f);
        clip->insertObject(sequence);
        const bool moved = manager()->moveObjectToStreak(sequence, clip, row);
        state.PauseTiming();
        const zeAnimationStreak* track = clip->getStreak(row);
        const bool placed = moved && clip->getChildIds().size() == row + 1 && track &&
                            sequence->getParentId() == track->getId();
        manager()->destroyObject(clip);
        if (!placed) {
            state.SkipWithError("the object is not on the row it was moved to");
            break;
        }
        state.ResumeTiming();
    }
}
BENCHMARK(BM_MoveToFarRow)->Arg(40000)->Arg(80000)->Unit(benchmark::kMillisecond)->Iterations(1);

zeAnimationSequence* makeSequence(float begin, float end)
{
    zeAnimationSequence* sequence = manager()->createSequence("s", 0);
    sequence->setBegin(begin);
    sequence->setEnd(end);
    return sequence;
}

// Sequences laid out one after the other on one track.
void BM_SequencesOnOneTrack(benchmark::State& state)
{
    const int count = static_cast<int>(state.range(0));
    for (auto _ : state) {
        zeAnimationStreak* track = manager()->createStreak(0);
        for (int i = 0; i < count; ++i)
            track->insertObject(makeSequence(i * 10.0f, i * 10.0f + 8.0f));
        state.PauseTiming();
        const bool laidOut = track->getChildIds().size() == static_cast<std::size_t>(count) &&
                             track->getEnd() == (count - 1) * 10.0f + 8.0f;
        manager()->destroyObject(track);
        if (!laidOut) {
            state.SkipWithError("the track refused sequences that do not overlap");
            break;
        }
        state.ResumeTiming();
    }
}
BENCHMARK(BM_SequencesOnOneTrack)->Arg(20000)->Arg(40000)->Unit(benchmark::kMillisecond)->Iterations(1);

// Sequences that all overlap inserted into a clip: each one opens a row of its own.
void BM_OverlappingSequencesIntoClip(benchmark::State& state)
{
    const int count = static_cast<int>(state.range(0));
    for (auto _ : state) {
        zeAnimationStrip* clip = manager()->createStrip(0);
        for (int i = 0; i < count; ++i)
            clip->insertObject(makeSequence(i * 0.001f, 100.0f + i * 0.001f));
        state.PauseTiming();
        const bool stacked = clip->getChildIds().size() == static_cast<std::size_t>(count) &&
                             clip->getSequences().size() == static_cast<std::size_t>(count);
        manager()->destroyObject(clip);
        if (!stacked) {
            state.SkipWithError("overlapping sequences did not each get a row of their own");
            break;
        }
        state.ResumeTiming();
    }
}
BENCHMARK(BM_OverlappingSequencesIntoClip)
    ->Arg(20000)
    ->Arg(40000)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);

// The keys of a long curve, held by a block, destroyed one by one through the manager as an
// editor deletes them: in order of x or shuffled (second argument 1), on a wave or on a rising
// curve (third argument 1), where each key destroyed in order holds the curve's minimum. Halfway,
// the curve's interval and value range must be those of the keys left.
void BM_DestroyKeysOneByOne(benchmark::State& state)
{
    const int count = static_cast<int>(state.range(0));
    const bool shuffled = state.range(1) != 0;
    const bool rising = state.range(2) != 0;
    std::mt19937 random(7);
    for (auto _ : state) {
        state.PauseTiming();
        zeAnimationUnit* block = manager()->createUnit(0);
        zeAnimationCurve2D* curve = manager()->createCurve2D();
        block->addObject(curve);
        const std::size_t pool = manager()->getObjectCount();
        std::vector<zeControlPoint2D*> keys;
        keys.reserve(count);
        for (int i = 0; i < count; ++i)
            keys.push_back(
                manager()->createPoint2D(static_cast<float>(i), rising ? i * 0.5f : std::sin(i * 0.1f)));
        curve->setPoints(keys);
        if (shuffled)
            std::shuffle(keys.begin(), keys.end(), random);
        const std::size_t half = keys.size() / 2;
        state.ResumeTiming();
        for (std::size_t i = 0; i < half; ++i)
            manager()->destroyObject(keys[i]);
        state.PauseTiming();
        float low = 1e30f, high = -1e30f, first = 1e30f, last = -1e30f;
        for (std::size_t i = half; i < keys.size(); ++i) {
            low = std::min(low, keys[i]->getY());
            high = std::max(high, keys[i]->getY());
            first = std::min(first, keys[i]->getX());
            last = std::max(last, keys[i]->getX());
        }
        const bool halfway = curve->getMinimum() == low && curve->getMaximum() == high &&
                             curve->getBegin() == first && curve->getEnd() == last;
        state.ResumeTiming();
        for (std::size_t i = half; i < keys.size(); ++i)
            manager()->destroyObject(keys[i]);
        state.PauseTiming();
        const bool emptied =
            curve->getPointCount() == 0 && curve->isEmpty() && manager()->getObjectCount() == pool;
        manager()->destroyObject(block);
        state.ResumeTiming();
        if (!halfway || !emptied) {
            state.SkipWithError("the curve does not hold what the keys left make");
            break;
        }
    }
}
BENCHMARK(BM_DestroyKeysOneByOne)
    ->Args({10000, 0, 0})
    ->Args({10000, 1, 0})
    ->Args({100000, 0, 0})
    ->Args({100000, 1, 0})
    ->Args({100000, 0, 1})
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);

} // namespace
