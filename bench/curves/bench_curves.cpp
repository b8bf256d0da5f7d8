// Curve evaluation and curve editing costs: the library against the straightforward evaluation
// (ReferenceCurveEvaluation.h) and against the bare closed-form solve of one segment.

#include "ReferenceCurveEvaluation.h"

#include <zeAnimation/zeAnimationController.h>
#include <zeAnimation/zeAnimationCurve2D.h>
#include <zeAnimation/zeAnimationManager.h>
#include <zeAnimation/zeControlPoint2D.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <new>
#include <random>
#include <vector>

// ---- Allocation counting ----------------------------------------------------------------------

namespace {
unsigned long long g_allocations = 0;
}

void* operator new(std::size_t size)
{
    ++g_allocations;
    if (void* p = std::malloc(size ? size : 1))
        return p;
    std::abort(); // out of memory: nothing sensible left to measure
}

void operator delete(void* p) noexcept
{
    std::free(p);
}

void operator delete(void* p, std::size_t) noexcept
{
    std::free(p);
}

namespace {

zeAnimationManager* manager()
{
    return zeAnimationManager::the();
}

// Keys every 10 frames with smooth tangents, as a recorded animation has them.
zeAnimationCurve2D* makeCurve(int keys)
{
    zeAnimationCurve2D* curve = manager()->createCurve2D();
    std::mt19937 rng(7);
    std::uniform_real_distribution<float> value(-10.0f, 10.0f);
    for (int i = 0; i < keys; ++i)
        curve->addObject(manager()->createPoint2D(i * 10.0f, value(rng)));
    return curve;
}

std::vector<float> randomFrames(int keys)
{
    std::mt19937 rng(11);
    std::uniform_real_distribution<float> frame(0.0f, (keys - 1) * 10.0f);
    std::vector<float> frames(4096);
    for (float& f : frames)
        f = frame(rng);
    return frames;
}

enum Impl
{
    Library,
    Straightforward
};
enum Order
{
    Playback,
    Random
};

template <Impl impl, Order order>
void BM_Evaluate(benchmark::State& state)
{
    const int keys = static_cast<int>(state.range(0));
    zeAnimationCurve2D* curve = makeCurve(keys);
    const std::vector<float> frames = randomFrames(keys);
    const float last = (keys - 1) * 10.0f;
    float frame = 0.0f;
    std::size_t next = 0;
    float value = 0.0f;
    // One evaluation outside the count, so that the cache is built.
    zeAnimationController::computeCurveValue(curve, 0.0f, value);
    const unsigned long long before = g_allocations;
    for (auto _ : state) {
        float f;
        if (order == Playback) {
            // 25 frames per second of a 30 fps recording: every evaluation moves on a little.
            frame += 1.2f;
            if (frame >= last)
                frame = 0.0f;
            f = frame;
        } else {
            f = frames[next];
            next = (next + 1) & 4095;
        }
        const bool ok = impl == Library ? zeAnimationController::computeCurveValue(curve, f, value)
                                        : reference::computeCurveValue(curve, f, value);
        benchmark::DoNotOptimize(ok);
        benchmark::DoNotOptimize(value);
    }
    state.counters["allocs_per_eval"] = benchmark::Counter(static_cast<double>(g_allocations - before) /
                                                           static_cast<double>(state.iterations()));
    manager()->destroyCurve2D(curve);
}

// The closed-form solve of one segment and nothing else: the floor of any evaluation.
void BM_BareSolve(benchmark::State& state)
{
    const double x0 = 0.0, y0 = 1.0, x1 = 10.0, y1 = 4.0;
    const double h0x = 3.0, h0y = 2.0, h1x = 6.5, h1y = 5.0;
    double u = 0.0;
    for (auto _ : state) {
        u += 0.0123;
        if (u >= 1.0)
            u -= 1.0;
        benchmark::DoNotOptimize(u);
        const double dx = x1 - x0;
        const double a = (h0x - x0) / dx;
        const double b = (h1x - x0) / dx;
        const double A = 1.0 - 3.0 * b + 3.0 * a;
        const double B = 3.0 * b - 6.0 * a;
        const double C = 3.0 * a;
        const double p = (3.0 * A * C - B * B) / (3.0 * A * A);
        const double q = 2.0 * B * B * B / (27.0 * A * A * A) - B * C / (3.0 * A * A) - u / A;
        const double s = B / (3.0 * A);
        const double D = std::pow(p / 3.0, 3.0) + std::pow(q / 2.0, 2.0);
        double t = 0.0;
        if (D >= 1e-6) {
            const double v1 = -q / 2.0 + std::sqrt(D);
            const double v2 = -q / 2.0 - std::sqrt(D);
            t = (v1 >= 0.0 ? std::pow(v1, 1.0 / 3.0) : -std::pow(-v1, 1.0 / 3.0)) +
                (v2 >= 0.0 ? std::pow(v2, 1.0 / 3.0) : -std::pow(-v2, 1.0 / 3.0)) - s;
        } else if (D <= -1e-6) {
            const double pi = 3.14159265358;
            const double phi = std::acos(q / (-2.0 * std::sqrt(std::pow(-p / 3.0, 3.0))));
            const double theta = phi * 180.0 / pi / 3.0;
            const double r = 2.0 * std::sqrt(-p / 3.0);
            for (int k = 0; k < 3; ++k) {
                t = r * std::cos((theta + 120.0 * k) * pi / 180.0) - s;
                if (t <= 1.0 && t + 1e-6 >= 0.0)
                    break;
            }
        }
        const double tt = t * t;
        const double t3 = std::pow(t, 3.0);
        const double y = (1.0 - 3.0 * t + 3.0 * tt - t3) * y0 + (3.0 * t - 6.0 * tt + 3.0 * t3) * h0y +
                         (3.0 * tt - 3.0 * t3) * h1y + t3 * y1;
        float value = static_cast<float>(y);
        benchmark::DoNotOptimize(value);
    }
}

// ---- Editing ----------------------------------------------------------------------------------

std::vector<zeControlPoint2D*> makeKeys(int count, bool shuffled)
{
    std::vector<float> xs(count);
    for (int i = 0; i < count; ++i)
        xs[i] = static_cast<float>(i);
    if (shuffled)
        std::shuffle(xs.begin(), xs.end(), std::mt19937(3));
    std::vector<zeControlPoint2D*> keys;
    keys.reserve(count);
    for (float x : xs)
        keys.push_back(manager()->createPoint2D(x, std::sin(x * 0.1f)));
    return keys;
}

void BM_SetPoints(benchmark::State& state)
{
    const int count = static_cast<int>(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        zeAnimationCurve2D* curve = manager()->createCurve2D();
        const std::vector<zeControlPoint2D*> keys = makeKeys(count, true);
        state.ResumeTiming();
        curve->setPoints(keys);
        float value = 0.0f;
        // The first evaluation after the load pays for the cache.
        zeAnimationController::computeCurveValue(curve, 10.5f, value);
        benchmark::DoNotOptimize(value);
        state.PauseTiming();
        manager()->destroyCurve2D(curve);
        state.ResumeTiming();
    }
}

template <bool shuffled>
void BM_AddObjectOneByOne(benchmark::State& state)
{
    const int count = static_cast<int>(state.range(0));
    for (auto _ : state) {
        state.PauseTiming();
        zeAnimationCurve2D* curve = manager()->createCurve2D();
        const std::vector<zeControlPoint2D*> keys = makeKeys(count, shuffled);
        state.ResumeTiming();
        for (zeControlPoint2D* key : keys)
            curve->addObject(key);
        state.PauseTiming();
        manager()->destroyCurve2D(curve);
        state.ResumeTiming();
    }
}

} // namespace

BENCHMARK_TEMPLATE(BM_Evaluate, Library, Playback)->Arg(2)->Arg(10)->Arg(100)->Arg(10000);
BENCHMARK_TEMPLATE(BM_Evaluate, Library, Random)->Arg(2)->Arg(10)->Arg(100)->Arg(10000);
BENCHMARK_TEMPLATE(BM_Evaluate, Straightforward, Playback)->Arg(2)->Arg(10)->Arg(100)->Arg(10000);
BENCHMARK_TEMPLATE(BM_Evaluate, Straightforward, Random)->Arg(2)->Arg(10)->Arg(100)->Arg(10000);
BENCHMARK(BM_BareSolve);
BENCHMARK(BM_SetPoints)->Arg(100000)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK_TEMPLATE(BM_AddObjectOneByOne, false)->Arg(10000)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK_TEMPLATE(BM_AddObjectOneByOne, true)->Arg(10000)->Unit(benchmark::kMillisecond)->Iterations(3);
