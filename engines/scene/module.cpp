#include "engines/scene/module.h"

#include <dlfcn.h>

#include <algorithm>
#include <new>
#include <utility>

#include "engines/scene/handles.h"

namespace Zant::Engine {
namespace {

constexpr int apiVersion = 3000;

template <class Map, class Key>
typename Map::mapped_type take(Map& map, const Key& key) {
    const auto found = map.find(key);
    if (found == map.end()) return {};
    typename Map::mapped_type value = std::move(found->second);
    map.erase(found);
    return value;
}

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
    std::map<uint64_t, std::shared_ptr<Scene>> ended;
    std::map<void*, std::shared_ptr<Job>> joined;  // outside of the lock: a job waits for its threads
    const std::lock_guard lock(mutex_);
    const Library* const host = hosts_[place];
    if (!host) return misuse("exit", "the engine has exited already");
    reportSurvivors(host);
    for (auto scene = scenes_.begin(); scene != scenes_.end();) {
        const bool isOfHost = scene->second->library() == host;
        if (isOfHost) scene->second->summarise(), ended.insert(*scene);
        scene = isOfHost ? scenes_.erase(scene) : std::next(scene);
    }
    hosts_[place] = nullptr;
    if (hasHosts()) return;
    joined.swap(jobs_);
    end();
}

bool Module::hasHosts() const {
    return std::any_of(hosts_, hosts_ + mostHosts, [](const Library* host) { return host != nullptr; });
}

void Module::begin() {
    surroundings_.settings = surroundings_.profile.readSettings();
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
    rays_.clear();
    mutexes_.clear();
    options_.clear();
}

void Module::reportSurvivors(const Library* host) {
    for (const auto& [number, scene] : scenes_) {
        if (scene->library() == host) misuse("exit", "an instance is still alive");
    }
}

// A call after the host has closed the engine's file would otherwise end in memory that is gone.
void Module::stayInMemory() {
    Dl_info self;
    if (!dladdr(reinterpret_cast<const void*>(&Module::start), &self)) return;
    dlopen(self.dli_fname, RTLD_LAZY | RTLD_NOLOAD | RTLD_NODELETE);
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

void Module::setOption(const char* name, const char* value) {
    const std::lock_guard lock(mutex_);
    options_[name] = value ? value : "";
}

void* Module::createInstance(Instance* instance) {
    std::unique_lock lock(mutex_);
    if (!hasHosts()) misuse("createInstance", "the engine has exited");
    const Faults& faults = surroundings_.settings.faults;
    if (faults.nullInstance) return nullptr;
    const uint64_t number = ++lastNumber_;
    const auto scene = std::make_shared<Scene>(number, instance, surroundings_);
    scenes_.emplace(number, scene);
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
    scene->text().close();
    scene->summarise();
    const std::lock_guard lock(mutex_);
    scenes_.erase(handleNumber(HandleTag::Instance, handle));
}

std::shared_ptr<Scene> Module::scene(uint64_t number, const char* call, const char* what) {
    const std::lock_guard lock(mutex_);
    const auto found = scenes_.find(number);
    if (found != scenes_.end()) return found->second;
    misuse(call, std::string(what) + (number ? " is no longer alive" : " does not belong to this engine"));
    return nullptr;
}

std::shared_ptr<Scene> Module::sceneOfInstance(const void* handle, const char* call) {
    return scene(handleNumber(HandleTag::Instance, handle), call, "the instance");
}

std::shared_ptr<Scene> Module::sceneOfParser(const void* handle, const char* call) {
    return scene(handleNumber(HandleTag::Parser, handle), call, "the parser context");
}

std::shared_ptr<Scene> Module::sceneOfBitmap(const void* handle, const char* call) {
    return scene(sceneOfObject(handleNumber(HandleTag::Object, handle)), call, "the instance of the bitmap");
}

void* Module::createRays(const void* instance) {
    if (!sceneOfInstance(instance, "createContext")) return nullptr;
    const std::lock_guard lock(mutex_);
    const uint64_t number = ++lastNumber_;
    rays_.emplace(number, surroundings_.profile.createRays());
    return makeHandle(HandleTag::RayContext, number);
}

void Module::destroyRays(const void* handle) {
    const std::lock_guard lock(mutex_);
    if (handle && !take(rays_, handleNumber(HandleTag::RayContext, handle))) {
        misuse("destroyContext", "the ray context is not alive");
    }
}

std::shared_ptr<RayContext> Module::rays(const void* handle, const char* call) {
    const std::lock_guard lock(mutex_);
    const auto found = rays_.find(handleNumber(HandleTag::RayContext, handle));
    if (found != rays_.end()) return found->second;
    misuse(call, "the ray context is not alive");
    return nullptr;
}

void* Module::createJob() {
    const auto job = std::make_shared<Job>(surroundings_.profile.errorPrefix);
    const std::lock_guard lock(mutex_);
    jobs_.emplace(job.get(), job);
    return job.get();
}

void Module::destroyJob(void* job) {
    std::shared_ptr<Job> ended;  // its threads end outside of the lock
    const std::lock_guard lock(mutex_);
    ended = take(jobs_, job);
    if (!ended) misuse("destroyJob", "the job context is not alive");
}

std::shared_ptr<Job> Module::job(void* job, const char* call) {
    const std::lock_guard lock(mutex_);
    const auto found = jobs_.find(job);
    if (found != jobs_.end()) return found->second;
    misuse(call, "the job context is not alive");
    return nullptr;
}

void* Module::createMutex() {
    auto mutex = std::make_unique<EngineMutex>();
    void* const handle = mutex.get();
    const std::lock_guard lock(mutex_);
    mutexes_.emplace(handle, std::move(mutex));
    return handle;
}

void Module::destroyMutex(void* mutex) {
    const std::lock_guard lock(mutex_);
    if (mutex && !take(mutexes_, mutex)) misuse("destroyMutex", "the mutex is not alive");
}

EngineMutex* Module::mutex(void* mutex) {
    const std::lock_guard lock(mutex_);
    const auto found = mutexes_.find(mutex);
    if (found != mutexes_.end()) return found->second.get();
    misuse("mutexOp", "the mutex is not alive");
    return nullptr;
}

void Module::misuse(const char* call, const std::string& what) {
    surroundings_.watch.line(std::string(call) + ": " + what);
}

}  // namespace Zant::Engine
