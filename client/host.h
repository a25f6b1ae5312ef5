#ifndef ZANT_CLIENT_HOST_H
#define ZANT_CLIENT_HOST_H

/// Comforts for hosts: header-only, and included by nobody else, so that what is not used costs nothing.

#include <dlfcn.h>

#include <memory>
#include <string>

#include "client/commands/utf8.h"
#include "client/engine/instance.h"
#include "client/engine/library.h"
#include "client/engine/raytrace.h"

namespace Zant {

/// Gives an instance back to its library.
struct InstanceRelease {
    void operator()(Instance* instance) const { instance->library->releaseInstance(instance); }
};

/// Owns one instance. Must end before its library is unloaded.
using UniqueInstance = std::unique_ptr<Instance, InstanceRelease>;

/// Owns the ray access of an instance. Must end before the instance does.
using UniqueRaytraceAccess = std::unique_ptr<RaytraceAccess>;

/// The engine for as long as the session lives: load it in the plug-in's own start hook, end it in its stop hook.
///
/// Do not make it, or the handles above, static objects: at process exit the host has already torn down what the engine
/// may still use, its threads may have been ended in the middle of their work, and the order of destruction between
/// two modules is not yours. End it while the host is still whole.
///
/// Threads: one at a time, as the library. The handles may be given to other threads, one each.
class Session {
public:
    /// Loads the engine of a directory, given with its final separator; null keeps the library's own.
    explicit Session(const char* directory) : engine(getLibrary(nullptr)) {
        loaded = engine->loadExplicitly(directory);
    }
    ~Session() { end(); }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// Whether the engine could be loaded; library().getLoadError() says why not.
    explicit operator bool() const { return loaded; }
    Library& library() const { return *engine; }

    /// An instance whose events the engine serves itself; empty when the engine refuses it.
    UniqueInstance createInstance() const { return UniqueInstance(loaded ? engine->createInstance() : nullptr); }
    /// An instance whose events go to a listener, which stays the caller's and outlives the instance.
    UniqueInstance createInstance(EventListener& listener) const {
        return UniqueInstance(loaded ? engine->createInstanceWithListner(&listener) : nullptr);
    }

    /// Releases every instance that is left and unloads the engine. Does nothing the second time.
    void end() {
        if (!loaded) return;
        loaded = false;
        engine->unloadExplicitly();
    }

private:
    Library* engine;
    bool loaded = false;
};

/// The directory of the module (program or plug-in) that holds an address, with its final separator, as load() takes
/// it. Pass the address of one of your own functions or static objects.
/// @return an empty text when the platform does not know the address
inline std::string moduleDirectory(const void* address) {
    Dl_info info{};
    if (!dladdr(address, &info) || !info.dli_fname) return {};
    const std::string file = info.dli_fname;
    const size_t separator = file.rfind('/');
    return separator == std::string::npos ? "./" : file.substr(0, separator + 1);
}

/// UTF-8 of a UTF-16 text, with surrogates paired; for the commands that take narrow strings.
inline std::string utf8(const char16_t* text) {
    const UTF8EncoderBuffer<char16_t> converted(text);
    return converted.data ? converted.data : std::string();
}

/// Keeps the engine's file mapped until the process ends, for engines that leave threads behind when they exit: those
/// threads then find their code where it was. Call it while the engine is loaded.
/// @return whether the file stays
inline bool keepEngineFile(const Library& library) {
    const auto* entryPoint = library.moduleHandle ? dlsym(library.moduleHandle, "zant3_init") : nullptr;
    Dl_info info{};
    if (!entryPoint || !dladdr(entryPoint, &info)) return false;
    return dlopen(info.dli_fname, RTLD_LAZY | RTLD_NODELETE | RTLD_NOLOAD) != nullptr;
}

}  // namespace Zant

#endif
