#include "client/host.h"

#include <algorithm>
#include <utility>

#include "client/commands/utf8.h"
#include "own/dl.h"

namespace Zant {

struct HeldInstance {
    Instance* instance;                 // null once it has ended
    std::vector<RaytraceAccess*> rays;  // that are open on it

    explicit HeldInstance(Instance* held) : instance(held) {}
    HeldInstance(const HeldInstance&) = delete;
    HeldInstance& operator=(const HeldInstance&) = delete;
    ~HeldInstance() { end(); }

    void end();
};

void HeldInstance::end() {
    if (!instance) return;
    for (const RaytraceAccess* access : rays)
        delete access;
    // Empty before the engine is called: its events may come back to the handle.
    Instance* const ended = std::exchange(instance, nullptr);
    ended->library->releaseInstance(ended);
}

// ---- Handles --------------------------------------------------------------------------------------------------------

UniqueInstance::UniqueInstance(Instance* instance) {
    const auto release = [](Instance* owned) { owned->library->releaseInstance(owned); };
    std::unique_ptr<Instance, decltype(release)> taken(instance, release);
    if (!taken) return;
    auto holding = std::make_unique<HeldInstance>(instance);
    taken.release();
    held = std::move(holding);
}

UniqueInstance& UniqueInstance::operator=(UniqueInstance&& other) {
    UniqueInstance taken(std::move(other));
    held.swap(taken.held);
    return *this;
}

void UniqueInstance::reset() {
    if (const auto ended = std::exchange(held, nullptr)) ended->end();
}

Instance* UniqueInstance::get() const {
    return held ? held->instance : nullptr;
}

UniqueRaytraceAccess::UniqueRaytraceAccess(const UniqueInstance& instance) {
    if (!instance) return;
    auto& rays = instance.held->rays;
    rays.reserve(rays.size() + 1);
    access = instance->createRaytraceAccess();
    rays.push_back(access);
    held = instance.held;
}

UniqueRaytraceAccess& UniqueRaytraceAccess::operator=(UniqueRaytraceAccess&& other) {
    UniqueRaytraceAccess taken(std::move(other));
    held.swap(taken.held);
    std::swap(access, taken.access);
    return *this;
}

void UniqueRaytraceAccess::reset() {
    RaytraceAccess* const ended = get();
    const auto owner = std::exchange(held, nullptr);
    if (!ended) return;
    owner->rays.erase(std::find(owner->rays.begin(), owner->rays.end(), ended));
    delete ended;
}

RaytraceAccess* UniqueRaytraceAccess::get() const {
    return held && held->instance ? access : nullptr;
}

// ---- The session ----------------------------------------------------------------------------------------------------

namespace {

/// Sessions of this module that have the engine.
size_t sessions = 0;

}  // namespace

Session::Session(const char* directory) : engine(getLibrary(nullptr)), loaded(engine->loadExplicitly(directory)) {
    if (!loaded) return;
    engine->setupInstanceMutex();
    ++sessions;
}

UniqueInstance Session::createInstance() {
    return hold(loaded ? engine->createInstance() : nullptr);
}

UniqueInstance Session::createInstance(EventListener& listener) {
    return hold(loaded ? engine->createInstanceWithListner(&listener) : nullptr);
}

UniqueInstance Session::hold(Instance* instance) {
    UniqueInstance handle(instance);
    if (!handle) return handle;
    if (instances.size() == instances.capacity()) {
        // Before it grows: what has been released in the meantime needs no place.
        const auto gone = [](const std::weak_ptr<HeldInstance>& entry) { return entry.expired(); };
        instances.erase(std::remove_if(instances.begin(), instances.end(), gone), instances.end());
    }
    instances.push_back(handle.held);
    return handle;
}

void Session::end() {
    if (!std::exchange(loaded, false)) return;
    for (; !instances.empty(); instances.pop_back()) {
        if (const auto held = instances.back().lock()) held->end();
    }
    if (--sessions == 0) engine->unloadExplicitly();
}

// ---- Helpers --------------------------------------------------------------------------------------------------------

std::string moduleDirectory(const void* address) {
    const std::string file = DllFileOf(address);
    return file.substr(0, file.rfind('/') + 1);
}

std::string utf8(const char16_t* text) {
    const UTF8EncoderBuffer<char16_t> converted(text);
    return converted.data ? converted.data : std::string();
}

bool keepEngineFile(const Library& library) {
    return DllKeepMapped(library.moduleHandle);
}

}  // namespace Zant
