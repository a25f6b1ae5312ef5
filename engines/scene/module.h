#ifndef ZANT_ENGINES_SCENE_MODULE_H
#define ZANT_ENGINES_SCENE_MODULE_H

#include <memory>
#include <mutex>
#include <string>

#include "client/engine/library.h"
#include "engines/scene/builtin.h"
#include "engines/scene/handles.h"
#include "engines/scene/jobs.h"
#include "engines/scene/mutexes.h"
#include "engines/scene/profile.h"
#include "engines/scene/rays.h"
#include "engines/scene/registry.h"
#include "engines/scene/scene.h"

namespace Zant::Engine {

/// The engine in this process: the hosts that use it, and what is alive. Every operation may be called by any thread.
///
/// A call with a handle that is not alive is noted in the watch file and answered with nothing; to destroy null is
/// nothing and not noted. What a handle stands for stays usable while the pointer to it is held.
class Module {
public:
    /// More hosts than this share the last place.
    static constexpr int mostHosts = 32;

    /// The one of the process. It is never destroyed: hosts may still call while their process exits. What it owns is
    /// freed when the last host lets the engine exit.
    static Module& start(const Profile& profile);
    /// The same, once it has been started: slots are called by hosts that an entry point has let in.
    static Module& get() { return *only_; }

    /// Notes a host; the environment is read for the first one.
    /// @return the host's place, the same when it initialises the engine again; -1 when the engine refuses.
    int enter(const Library* host);
    /// A host leaves: its instances end, and with the last host everything else.
    void exit(int place);

    int infoInt(int id);
    const char* infoString(int id) const;
    int serve(ZantEventData& event) { return builtIn_.serve(event); }

    /// @return the handle of the new instance, null when it is refused; fills the host's record.
    void* createInstance(Instance* instance);
    void destroyInstance(const void* handle);

    std::shared_ptr<Scene> sceneOfInstance(const void* handle, const char* call);
    std::shared_ptr<Scene> sceneOfParser(const void* handle, const char* call);
    std::shared_ptr<Scene> sceneOfBitmap(const void* handle, const char* call);

    void* createRays(const void* instance);
    void destroyRays(const void* handle);
    std::shared_ptr<RayContext> rays(const void* handle, const char* call);

    void* createJob();
    void destroyJob(const void* handle);
    std::shared_ptr<Job> job(const void* handle, const char* call);

    void* createMutex();
    void destroyMutex(const void* handle);
    std::shared_ptr<EngineMutex> mutex(const void* handle, const char* call);

    /// Notes a call that the contract forbids.
    void misuse(const char* call, const std::string& what);

private:
    explicit Module(const Profile& profile) : surroundings_(profile) {}

    bool hasHosts() const;
    void abandonScenes(int place);
    void begin();
    void end();
    void stayInMemory();
    template <class Item>
    std::shared_ptr<Item> find(const Registry<Item>& registry, uint64_t number, const char* call, const char* what);
    template <class Item>
    void destroy(Registry<Item>& registry, HandleTag tag, const void* handle, const char* call, const char* what);
    void noteMissing(uint64_t number, const char* call, const char* what);

    static Module* only_;

    std::mutex mutex_;  // guards the hosts and the surroundings
    Scene::Surroundings surroundings_;
    BuiltIn builtIn_;
    const Library* hosts_[mostHosts] = {};
    Registry<Scene> scenes_;
    Registry<RayContext> rays_;
    Registry<Job> jobs_;
    Registry<EngineMutex> mutexes_;
};

}  // namespace Zant::Engine

#endif
