#include "engines/scene/module.h"

#include <algorithm>
#include <new>
#include <utility>
#include <vector>

#include "own/dlplatform.h"

namespace Zant::Engine {
namespace {

constexpr int apiVersion = 3000;

}  // namespace

Module* Module::only_ = nullptr;

Module& Module::start(const Profile& profile) {
    alignas(Module) static unsigned char storage[sizeof(Module)];
    static Module* const module = only_ = new (storage) Module(profile);
    return *module;
}

int Module::enter(const Library* host) {
    const std::lock_guard lock(mutex_);
    if (!hasHosts()) begin();
    if (surroundings_.settings.faults.initRefused) return -1;
    int place = static_cast<int>(std::find(hosts_, hosts_ + mostHosts, host) - hosts_);
    if (place == mostHosts) place = static_cast<int>(std::find(hosts_, hosts_ + mostHosts, nullptr) - hosts_);
    place = std::min(place, mostHosts - 1);
    hosts_[place] = host;
    return place;
}

void Module::exit(int place) {
    abandonScenes(place);
    std::vector<std::shared_ptr<Scene>> ended;
    std::vector<std::shared_ptr<Job>> joined;  // outside of the lock: a job waits for its threads
    const std::lock_guard lock(mutex_);
    const Library* const host = hosts_[place];
    if (!host) return misuse("exit", "the engine has exited already");
    ended = scenes_.takeIf([host](const Scene& scene) { return scene.library() == host; });
    for (const auto& scene : ended) {
        misuse("exit", "an instance is still alive");
        scene->summarise();
    }
    hosts_[place] = nullptr;
    if (hasHosts()) return;
    joined = jobs_.takeAll();
    end();
}

// Outside of the lock: their last events may ask the engine for something.
void Module::abandonScenes(int place) {
    const Library* host = nullptr;
    {
        const std::lock_guard lock(mutex_);
        host = hosts_[place];
    }
    for (const auto& scene : scenes_.all()) {
        if (scene->library() == host) scene->abandon();
    }
    surroundings_.leftThreads.join();
}

bool Module::hasHosts() const {
    return std::any_of(hosts_, hosts_ + mostHosts, [](const Library* host) { return host != nullptr; });
}

void Module::begin() {
    surroundings_.settings = readSettings(surroundings_.profile.variables, surroundings_.profile.errorPrefix);
    surroundings_.transcript.open(surroundings_.settings.transcript);
    surroundings_.summary.open(surroundings_.settings.summary);
    surroundings_.watch.open(surroundings_.settings.watch);
    if (surroundings_.watch.isOpen()) stayInMemory();
}

// The watch file stays open: it is there for calls that come too late.
void Module::end() {
    std::exchange(surroundings_.settings, Settings());  // plain assignment would keep the memory of texts
    surroundings_.transcript.close();
    surroundings_.summary.close();
    rays_.takeAll();
    mutexes_.takeAll();
    builtIn_.close();
}

// A call after the host has closed the engine's file would otherwise end in memory that is gone.
void Module::stayInMemory() {
    Platform::keepMappedAround(reinterpret_cast<const void*>(&Module::start));
}

int Module::infoInt(int id) {
    const std::lock_guard lock(mutex_);
    switch (id) {
        case 0:
            return surroundings_.settings.faults.versionZero ? 0 : apiVersion;
        case 1:
            return surroundings_.settings.doubleVertexMaps ? 1 : 0;
        case 2:
            return static_cast<int>(scenes_.size());
        case 3:
            return builtIn_.openStreams();
        case 4:
            return builtIn_.openWindows();
        case 5:
            return static_cast<int>(jobs_.size());
        case 6:
            return static_cast<int>(mutexes_.size());
        case 7:
            return static_cast<int>(rays_.size());
        default:
            return 0;
    }
}

const char* Module::infoString(int id) const {
    switch (id) {
        case 0:
            return surroundings_.profile.name;
        case 1:
            return surroundings_.profile.version;
        case 100:
            return "Error: ";
        case 101:
            return "Warning: ";
        case 102:
            return "Progress: ";
        default:
            return nullptr;
    }
}

void* Module::createInstance(Instance* instance) {
    std::unique_lock lock(mutex_);
    if (!hasHosts()) misuse("createInstance", "the engine has exited");
    const Faults& faults = surroundings_.settings.faults;
    if (faults.nullInstance) return nullptr;
    const uint64_t number = scenes_.reserve();
    const auto scene = std::make_shared<Scene>(number, instance, surroundings_);
    scenes_.add(number, scene);
    void* const handle = makeHandle(HandleTag::Instance, number);
    instance->engineInstance = static_cast<ZantLibraryInstance*>(handle);
    instance->parserContext = makeHandle(HandleTag::Parser, number);
    const bool speaks = faults.eventsAtCreation;
    lock.unlock();
    if (speaks) scene->text().say("the instance is being created");
    return handle;
}

void Module::destroyInstance(const void* handle) {
    if (!handle) return;
    const std::shared_ptr<Scene> scene = sceneOfInstance(handle, "destroyInstance");
    if (!scene) return;
    // A host may send the events back: the handle is alive until the last one.
    if (surroundings_.settings.faults.eventsAtDestruction) scene->text().say("the instance is being destroyed");
    scene->end();
    scene->summarise();
    scenes_.take(handleNumber(HandleTag::Instance, handle));
}

template <class Item>
std::shared_ptr<Item> Module::find(const Registry<Item>& registry, uint64_t number, const char* call,
                                   const char* what) {
    std::shared_ptr<Item> item = registry.find(number);
    if (!item) noteMissing(number, call, what);
    return item;
}

template <class Item>
void Module::destroy(Registry<Item>& registry, HandleTag tag, const void* handle, const char* call, const char* what) {
    const uint64_t number = handleNumber(tag, handle);
    if (handle && !registry.take(number)) noteMissing(number, call, what);
}

void Module::noteMissing(uint64_t number, const char* call, const char* what) {
    misuse(call, std::string(what) + (number ? " is no longer alive" : " does not belong to this engine"));
}

std::shared_ptr<Scene> Module::sceneOfInstance(const void* handle, const char* call) {
    return find(scenes_, handleNumber(HandleTag::Instance, handle), call, "the instance");
}

std::shared_ptr<Scene> Module::sceneOfParser(const void* handle, const char* call) {
    return find(scenes_, handleNumber(HandleTag::Parser, handle), call, "the parser context");
}

std::shared_ptr<Scene> Module::sceneOfBitmap(const void* handle, const char* call) {
    return find(scenes_, sceneOfObject(handleNumber(HandleTag::Object, handle)), call, "the instance of the bitmap");
}

void* Module::createRays(const void* instance) {
    const auto scene = sceneOfInstance(instance, "createContext");
    if (!scene) return nullptr;
    const auto rays = std::make_shared<RayContext>();
    scene->addRays(rays);
    return makeHandle(HandleTag::RayContext, rays_.add(rays));
}

void Module::destroyRays(const void* handle) {
    destroy(rays_, HandleTag::RayContext, handle, "destroyContext", "the ray context");
}

std::shared_ptr<RayContext> Module::rays(const void* handle, const char* call) {
    return find(rays_, handleNumber(HandleTag::RayContext, handle), call, "the ray context");
}

void* Module::createJob() {
    return makeHandle(HandleTag::Job, jobs_.add(std::make_shared<Job>(surroundings_.profile.errorPrefix)));
}

void Module::destroyJob(const void* handle) {
    destroy(jobs_, HandleTag::Job, handle, "destroyJob", "the job context");
}

std::shared_ptr<Job> Module::job(const void* handle, const char* call) {
    return find(jobs_, handleNumber(HandleTag::Job, handle), call, "the job context");
}

void* Module::createMutex() {
    return makeHandle(HandleTag::Mutex, mutexes_.add(std::make_shared<EngineMutex>()));
}

void Module::destroyMutex(const void* handle) {
    destroy(mutexes_, HandleTag::Mutex, handle, "destroyMutex", "the mutex");
}

std::shared_ptr<EngineMutex> Module::mutex(const void* handle, const char* call) {
    return find(mutexes_, handleNumber(HandleTag::Mutex, handle), call, "the mutex");
}

void Module::misuse(const char* call, const std::string& what) {
    surroundings_.watch.line(std::string(call) + ": " + what);
}

}  // namespace Zant::Engine
