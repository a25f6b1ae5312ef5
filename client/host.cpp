#include "client/host.h"

#include <algorithm>
#include <atomic>
#include <memory>
#include <utility>
#include <vector>

#include "client/commands/utf8.h"
#include "own/dl.h"

namespace Zant {

struct HeldInstance {
    Instance* instance;                 // null once it has ended
    std::vector<RaytraceAccess*> rays;  // that are open on it
    std::atomic<int> holders{1};        // its handles, on any thread, and its session

    explicit HeldInstance(Instance* held) : instance(held) {}
    void end();
};

struct HeldList {
    std::vector<HeldInstance*> items;
};

void HeldInstance::end() {
    if (!instance) return;
    for (const RaytraceAccess* access : rays)
        delete access;
    // Empty before the engine is called: its events may come back to the handle.
    Instance* const ended = std::exchange(instance, nullptr);
    ended->library->releaseInstance(ended);
}

namespace {

HeldInstance* share(HeldInstance* held) {
    held->holders.fetch_add(1, std::memory_order_relaxed);
    return held;
}

void letGo(HeldInstance* held) {
    if (held && held->holders.fetch_sub(1, std::memory_order_acq_rel) == 1) delete held;
}

/// Lets those go that only the session holds.
void prune(std::vector<HeldInstance*>& items) {
    size_t kept = 0;
    for (HeldInstance* held : items) {
        if (held->holders.load(std::memory_order_acquire) > 1)
            items[kept++] = held;
        else
            letGo(held);
    }
    items.resize(kept);
}

}  // namespace

// ---- Handles --------------------------------------------------------------------------------------------------------

UniqueInstance::UniqueInstance(Instance* instance) {
    const auto release = [](Instance* owned) { owned->library->releaseInstance(owned); };
    std::unique_ptr<Instance, decltype(release)> taken(instance, release);
    if (!taken) return;
    held_ = new HeldInstance(instance);
    static_cast<void>(taken.release());
}

UniqueInstance& UniqueInstance::operator=(UniqueInstance&& other) noexcept {
    UniqueInstance taken(std::move(other));
    std::swap(held_, taken.held_);
    return *this;
}

void UniqueInstance::reset() {
    HeldInstance* const ended = std::exchange(held_, nullptr);
    if (ended) ended->end();
    letGo(ended);
}

Instance* UniqueInstance::get() const {
    return held_ ? held_->instance : nullptr;
}

UniqueRaytraceAccess::UniqueRaytraceAccess(const UniqueInstance& instance) {
    if (!instance) return;
    auto& rays = instance.held_->rays;
    rays.reserve(rays.size() + 1);
    access_ = instance->createRaytraceAccess();
    rays.push_back(access_);
    held_ = share(instance.held_);
}

UniqueRaytraceAccess& UniqueRaytraceAccess::operator=(UniqueRaytraceAccess&& other) noexcept {
    UniqueRaytraceAccess taken(std::move(other));
    std::swap(held_, taken.held_);
    std::swap(access_, taken.access_);
    return *this;
}

void UniqueRaytraceAccess::reset() {
    RaytraceAccess* const ended = get();
    HeldInstance* const owner = std::exchange(held_, nullptr);
    if (ended) {
        owner->rays.erase(std::find(owner->rays.begin(), owner->rays.end(), ended));
        delete ended;
    }
    letGo(owner);
}

RaytraceAccess* UniqueRaytraceAccess::get() const {
    return held_ && held_->instance ? access_ : nullptr;
}

// ---- The session ----------------------------------------------------------------------------------------------------

namespace {

/// Sessions of this module that have the engine.
size_t sessions = 0;

}  // namespace

Session::Session(const char* directory) : engine_(getLibrary(nullptr)), loaded_(engine_->loadExplicitly(directory)) {
    if (!loaded_) return;
    instances_ = new HeldList;
    engine_->setupInstanceMutex();
    ++sessions;
}

UniqueInstance Session::createInstance() {
    return hold(loaded_ ? engine_->createInstance() : nullptr);
}

UniqueInstance Session::createInstance(EventListener& listener) {
    return hold(loaded_ ? engine_->createInstanceWithListner(&listener) : nullptr);
}

UniqueInstance Session::hold(Instance* instance) {
    UniqueInstance handle(instance);
    if (!handle) return handle;
    auto& items = instances_->items;
    if (items.size() == items.capacity()) prune(items);
    items.push_back(handle.held_);
    share(handle.held_);
    return handle;
}

void Session::end() {
    if (!std::exchange(loaded_, false)) return;
    for (; !instances_->items.empty(); instances_->items.pop_back()) {
        HeldInstance* const held = instances_->items.back();
        held->end();
        letGo(held);
    }
    delete std::exchange(instances_, nullptr);
    if (--sessions == 0) engine_->unloadExplicitly();
}

// ---- Helpers --------------------------------------------------------------------------------------------------------

std::string moduleDirectory(const void* address) {
    const std::string file = DllFileOf(address);
    return file.substr(0, file.find_last_of("/\\") + 1);
}

std::string withSeparator(const std::string& directory) {
    const bool hasOne = directory.empty() || directory.back() == '/' || directory.back() == '\\';
    return hasOne ? directory : directory + '/';
}

std::string utf8(const char16_t* text) {
    const UTF8EncoderBuffer<char16_t> converted(text);
    return converted.data ? converted.data : std::string();
}

bool keepEngineFile(const Library& library) {
    return DllKeepMapped(library.moduleHandle);
}

}  // namespace Zant
