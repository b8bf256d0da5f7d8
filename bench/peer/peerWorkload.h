// The workload both systems animate in the peer benchmark, and the C interface of the osgAnimation
// side. That side lives in a shared object of its own, loaded with dlopen: both scene layers use
// namespace osg and would otherwise resolve each other's symbols.
#pragma once

#include <cstdint>

namespace zePeer {

// Every block animates one material through these ten float components, in this order: channel
// c of block b is channel b × kChannelsPerBlock + c.
constexpr int kChannelsPerBlock = 10;
struct Component
{
    const char* field;     // the material's colour or value
    const char* attribute; // the component's name
    int index;             // the component's index in the colour
};
inline const Component kComponents[kChannelsPerBlock] = {
    {"diffuse", "diffuseR", 0},    {"diffuse", "diffuseG", 1},   {"diffuse", "diffuseB", 2},
    {"ambient", "ambientR", 0},    {"ambient", "ambientG", 1},   {"ambient", "ambientB", 2},
    {"specular", "specularR", 0},  {"specular", "specularG", 1}, {"specular", "specularB", 2},
    {"shininess", "shininess", 0},
};
constexpr float kKeySpacing = 10.0f; // frames between two keys of a channel

inline float keyFrame(int key)
{
    return kKeySpacing * static_cast<float>(key);
}

// A value in [0.1, 0.9], different from channel to channel and key to key.
inline float keyValue(int channel, int key)
{
    std::uint32_t h =
        static_cast<std::uint32_t>(channel) * 2654435761u ^ static_cast<std::uint32_t>(key) * 40503u;
    h ^= h >> 15;
    h *= 2246822519u;
    h ^= h >> 13;
    return 0.1f + 0.8f * static_cast<float>(h % 1024u) / 1023.0f;
}

} // namespace zePeer

extern "C" {
// blocks × kChannelsPerBlock channels of `keys` keys each; frames are played at `fps`.
typedef void* (*zePeerCreateFn)(int blocks, int keys, double fps);
// Updates every channel at `frame` and applies the values to the materials.
typedef void (*zePeerFrameFn)(void* workload, double frame);
// The value the material of channel `channel` shows.
typedef float (*zePeerValueFn)(void* workload, int channel);
typedef void (*zePeerDestroyFn)(void* workload);
}
