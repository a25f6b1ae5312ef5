#ifndef ZANT_ENGINES_SCENE_HANDLES_H
#define ZANT_ENGINES_SCENE_HANDLES_H

#include <cstdint>

namespace Zant::Engine {

/// The handles that the host holds are numbers in the shape of pointers, never addresses and never used twice: a handle
/// that is no longer alive is recognised without touching memory that is gone. The low three bits tell what it is a
/// handle of; an address of the engine's memory, such as that of a vertex map, has them all clear.
enum class HandleTag : uint64_t { Instance = 1, Parser = 3, Object = 5, RayContext = 7 };

inline void* makeHandle(HandleTag tag, uint64_t number) {
    return reinterpret_cast<void*>(number << 3 | static_cast<uint64_t>(tag));
}

/// The number behind a handle of the given kind, 0 for any other pointer.
inline uint64_t handleNumber(HandleTag tag, const void* handle) {
    const auto word = reinterpret_cast<uint64_t>(handle);
    return (word & 7) == static_cast<uint64_t>(tag) ? word >> 3 : 0;
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
