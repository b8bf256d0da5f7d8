// The same animation played by zeAnimation and by osgAnimation, in one process: blocks of ten float
// channels (16 keys each, or 1,000), one material per block, every channel written into its
// material each frame. Measures one frame in playback order (frame + 1) and in scrubbing order
// (random frames), for 100 to 100,000 channels, and reports the cost per channel per frame.
// The osgAnimation side is a shared object of its own (osgAnimationPeer.cpp), opened with dlopen.
#include "peerWorkload.h"
#include "zeWorkload.h"

#include <OpenSG/OSGBaseFunctions.h>

#include <benchmark/benchmark.h>

#include <dlfcn.h>

#include <cmath>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

namespace {

using zePeer::kChannelsPerBlock;

// One system's workload, built once per size and kept while benchmarks of that size run.
class System
{
public:
    virtual ~System() = default;
    virtual const char* name() const = 0;
    virtual bool build(int blocks, int keys) = 0;
    virtual void release() = 0;
    virtual void frame(double frame) = 0;
    virtual float value(int channel) const = 0;

    bool prepare(int blocks, int keys)
    {
        if (blocks == builtBlocks && keys == builtKeys)
            return true;
        release();
        builtBlocks = builtKeys = 0;
        if (!build(blocks, keys))
            return false;
        builtBlocks = blocks;
        builtKeys = keys;
        return true;
    }

private:
    int builtBlocks = 0;
    int builtKeys = 0;
};

class ZeSystem : public System
{
public:
    const char* name() const override { return "zeAnimation"; }
    bool build(int blocks, int keys) override { return workload.build(blocks, keys); }
    void release() override { workload.release(); }
    void frame(double frame) override { workload.frame(frame); }
    float value(int channel) const override { return workload.value(channel); }

private:
    zePeer::ZeWorkload workload;
};

class OsgSystem : public System
{
public:
    explicit OsgSystem(void* library)
        : create(reinterpret_cast<zePeerCreateFn>(dlsym(library, "zePeerCreate"))),
          step(reinterpret_cast<zePeerFrameFn>(dlsym(library, "zePeerFrame"))),
          read(reinterpret_cast<zePeerValueFn>(dlsym(library, "zePeerValue"))),
          destroy(reinterpret_cast<zePeerDestroyFn>(dlsym(library, "zePeerDestroy")))
    {}
    ~OsgSystem() override { release(); }
    bool usable() const { return create && step && read && destroy; }
    const char* name() const override { return "osgAnimation"; }

    bool build(int blocks, int keys) override
    {
        workload = create(blocks, keys, zeAnimationController::getFPS());
        return workload != nullptr;
    }
    void release() override
    {
        if (workload)
            destroy(workload);
        workload = nullptr;
    }
    void frame(double frame) override { step(workload, frame); }
    float value(int channel) const override { return read(workload, channel); }

private:
    zePeerCreateFn create;
    zePeerFrameFn step;
    zePeerValueFn read;
    zePeerDestroyFn destroy;
    void* workload = nullptr;
};

enum class Order
{
    playback,
    scrubbing
};

// At a key's frame every channel shows that key's value.
bool showsKey(System& system, int channels, int key)
{
    system.frame(zePeer::keyFrame(key));
    for (int channel = 0; channel < channels; ++channel) {
        if (std::fabs(system.value(channel) - zePeer::keyValue(channel, key)) > 1e-5f)
            return false;
    }
    return true;
}

void BM_Frame(benchmark::State& state, System* system, Order order)
{
    const int channels = static_cast<int>(state.range(0));
    const int keys = static_cast<int>(state.range(1));
    if (!system->prepare(channels / kChannelsPerBlock, keys)) {
        state.SkipWithError("the workload could not be built");
        return;
    }
    if (!showsKey(*system, channels, 5) || !showsKey(*system, channels, keys - 2)) {
        state.SkipWithError("a channel does not show its key's value at the key's frame");
        return;
    }
    // Whole frames over [0, last key): the same sequence for both systems.
    const int frames = static_cast<int>(zePeer::keyFrame(keys - 1));
    std::vector<double> sequence(order == Order::scrubbing ? 4096 : frames);
    std::mt19937 random(7);
    std::uniform_int_distribution<int> anyFrame(0, frames - 1);
    for (std::size_t i = 0; i < sequence.size(); ++i)
        sequence[i] = order == Order::scrubbing ? anyFrame(random) : static_cast<double>(i);

    std::size_t next = 0;
    for (auto _ : state) {
        system->frame(sequence[next]);
        if (++next == sequence.size())
            next = 0;
    }
    state.counters["channels"] = channels;
    state.counters["keys"] = keys;
    state.counters["per_channel"] =
        benchmark::Counter(static_cast<double>(state.iterations()) * channels,
                           benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

} // namespace

int main(int argc, char** argv)
{
    osg::osgInit(0, nullptr);
    benchmark::Initialize(&argc, argv);

    // Deep binding makes the peer resolve its own osg symbols before the process's ones.
    void* library = dlopen(ZE_PEER_LIBRARY, RTLD_NOW | RTLD_LOCAL | RTLD_DEEPBIND);
    if (!library) {
        std::fprintf(stderr, "cannot open %s: %s\n", ZE_PEER_LIBRARY, dlerror());
        return 1;
    }
    {
        ZeSystem ze;
        OsgSystem peer(library);
        if (!peer.usable()) {
            std::fprintf(stderr, "%s lacks the peer interface\n", ZE_PEER_LIBRARY);
            return 1;
        }
        const std::vector<std::pair<int, int>> sizes = {
            {100, 16}, {1000, 16}, {10000, 16}, {100000, 16}, {1000, 1000}};
        for (const auto& size : sizes) {
            for (System* system : {static_cast<System*>(&ze), static_cast<System*>(&peer)}) {
                for (Order order : {Order::playback, Order::scrubbing}) {
                    const std::string name =
                        std::string(system->name()) + (order == Order::playback ? "/playback" : "/scrubbing");
                    benchmark::RegisterBenchmark(name.c_str(), BM_Frame, system, order)
                        ->Args({size.first, size.second})
                        ->ArgNames({"channels", "keys"})
                        ->Unit(benchmark::kMicrosecond);
                }
            }
        }
        benchmark::RunSpecifiedBenchmarks();
        benchmark::Shutdown();
    }
    dlclose(library);
    osg::osgExit();
    return 0;
}
