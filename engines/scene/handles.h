#ifndef ZANT_ENGINES_SCENE_HANDLES_H
#define ZANT_ENGINES_SCENE_HANDLES_H

#include <cstdint>

namespace Zant::Engine {

/// The handles that the host holds are numbers in the shape of pointers, never addresses and never used twice: a handle
/// that is no longer alive is recognised without touching memory that is gone. The low four bits tell what it is a
/// handle of; the address of a vertex map's record, the one exception, has them all clear.
enum class HandleTag : uint64_t {
    Instance = 1,
    Parser = 2,
    Object = 3,
    RayContext = 4,
    Job = 5,
    Mutex = 6,
    TextStream = 7,
    Window = 8
};

constexpr int handleTagBits = 4;

inline void* makeHandle(HandleTag tag, uint64_t number) {
    return reinterpret_cast<void*>(number << handleTagBits | static_cast<uint64_t>(tag));
}

/// The number in a handle of the given kind, 0 for any other pointer.
inline uint64_t handleNumber(HandleTag tag, const void* handle) {
    constexpr uint64_t tagMask = (uint64_t{1} << handleTagBits) - 1;
    const auto word = reinterpret_cast<uint64_t>(handle);
    return (word & tagMask) == static_cast<uint64_t>(tag) ? word >> handleTagBits : 0;
}

/// An object is numbered within its instance.
inline uint64_t objectNumber(uint64_t scene, uint32_t object) {
    return scene << 32 | object;
}
inline uint64_t sceneOfObject(uint64_t number) {
    return number >> 32;
}
inline uint32_t objectInScene(uint64_t number) {
    return static_cast<uint32_t>(number);
}

}  // namespace Zant::Engine

#endif
