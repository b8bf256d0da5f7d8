// Global playback as the host runs it, frame after frame: blocks of ten float curves, each block
// animating the colours and shininess of its own material in the scene, every block running over
// the whole range so that every curve is read and written each frame. The workload is the one of
// the peer benchmark (bench/peer/peerWorkload.h), played here by this library alone: 100 to
// 100,000 curves of 16 keys and 1,000 curves of 1,000 keys, in playback order (frame + 1) and in
// scrubbing order (random whole frames). Reports the CPU time per curve per frame and the heap
// allocations per warm frame; before timing, every curve must show its key's value at two key
// frames.
#include "../peer/zeWorkload.h"

#include <benchmark/benchmark.h>

#include <atomic>
#include <cmath>
#include <cstdlib>
#include <new>
#include <random>
#include <vector>

namespace {

std::atomic<unsigned long long> allocations(0);

using zePeer::kChannelsPerBlock;

// At a key's frame every curve shows that key's value.
bool showsKey(zePeer::ZeWorkload& workload, int channels, int key)
{
    workload.frame(zePeer::keyFrame(key));
    for (int channel = 0; channel < channels; ++channel) {
        if (std::fabs(workload.value(channel) - zePeer::keyValue(channel, key)) > 1e-5f)
            return false;
    }
    return true;
}

void BM_Playback(benchmark::State& state, bool scrubbing)
{
    const int channels = static_cast<int>(state.range(0));
    const int keys = static_cast<int>(state.range(1));
    zePeer::ZeWorkload workload;
    if (!workload.build(channels / kChannelsPerBlock, keys) || !showsKey(workload, channels, 5) ||
        !showsKey(workload, channels, keys - 2)) {
        state.SkipWithError("a curve does not show its key's value at the key's frame");
        return;
    }
    // Whole frames over [0, last key), the same sequence on every run.
    const int frames = static_cast<int>(zePeer::keyFrame(keys - 1));
    std::vector<double> sequence(scrubbing ? 4096 : frames);
    std::mt19937 random(7);
    std::uniform_int_distribution<int> anyFrame(0, frames - 1);
    for (std::size_t i = 0; i < sequence.size(); ++i)
        sequence[i] = scrubbing ? anyFrame(random) : static_cast<double>(i);
    workload.frame(sequence[0]); // warm

    std::size_t next = 0;
    unsigned long long frameCount = 0;
    const unsigned long long before = allocations.load();
    for (auto _ : state) {
        workload.frame(sequence[next]);
        if (++next == sequence.size())
            next = 0;
        ++frameCount;
    }
    const unsigned long long allocated = allocations.load() - before;
    state.counters["channels"] = channels;
    state.counters["keys"] = keys;
    state.counters["allocs/frame"] = frameCount ? static_cast<double>(allocated) / frameCount : 0.0;
    state.counters["per_channel"] =
        benchmark::Counter(static_cast<double>(frameCount) * channels,
                           benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

// A fixed number of frames, about a second of each case: left to find one itself, the library
// runs a case several times over, and every run builds the workload anew (seconds at 100,000
// curves). Apply cannot give each size its own count, so each size is a benchmark of its own.
void sizes(benchmark::internal::Benchmark* b, int channels, int keys)
{
    b->ArgNames({"channels", "keys"});
    b->Args({channels, keys});
    b->Iterations(50000000 / channels);
    b->Unit(benchmark::kMicrosecond);
}
const bool registered = [] {
    const int cases[][2] = {{100, 16}, {1000, 16}, {10000, 16}, {100000, 16}, {1000, 1000}};
    for (const bool scrubbing : {false, true}) {
        for (const auto& size : cases)
            sizes(benchmark::RegisterBenchmark(scrubbing ? "BM_Playback/scrubbing" : "BM_Playback/playback",
                                               BM_Playback, scrubbing),
                  size[0], size[1]);
    }
    return true;
}();

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
