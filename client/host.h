#ifndef ZANT_CLIENT_HOST_H
#define ZANT_CLIENT_HOST_H

/// Comforts for hosts. Nothing of the library includes them, so that what is not used costs nothing.

#include <string>
#include <utility>

#include "client/engine/instance.h"
#include "client/engine/library.h"
#include "client/engine/raytrace.h"

namespace Zant {

/// What the handles of one instance share, and what their session knows of them. The handles hold plain pointers: what
/// templates of the C++ run-time library would bring here, every plug-in exports, and plug-ins would share it.
struct HeldInstance;
struct HeldList;

/// Owns one instance, and releases it at its end or with its session, whichever comes first. When the session has
/// ended, the handle is empty, and says so.
///
/// Threads: one at a time, on any thread.
class UniqueInstance {
public:
    UniqueInstance() = default;
    /// Takes an instance over that belongs to no session; null for none. It must be released before its library ends.
    explicit UniqueInstance(Instance* instance);
    UniqueInstance(UniqueInstance&& other) noexcept : held_(std::exchange(other.held_, nullptr)) {}
    UniqueInstance& operator=(UniqueInstance&& other) noexcept;
    ~UniqueInstance() { reset(); }

    /// Releases the instance, and its ray accesses before it. The handle is empty afterwards.
    void reset();

    /// @return the instance, or null when the handle is empty or its session has ended
    Instance* get() const;
    explicit operator bool() const { return get() != nullptr; }
    Instance* operator->() const { return get(); }
    Instance& operator*() const { return *get(); }

private:
    friend class Session;
    friend class UniqueRaytraceAccess;
    HeldInstance* held_ = nullptr;
};

/// Owns a ray access of an instance, and ends it at its own end or with the instance, whichever comes first.
///
/// Threads: made and ended on the thread of its instance's handle.
class UniqueRaytraceAccess {
public:
    UniqueRaytraceAccess() = default;
    /// Opens a ray access; empty for an empty handle.
    explicit UniqueRaytraceAccess(const UniqueInstance& instance);
    UniqueRaytraceAccess(UniqueRaytraceAccess&& other) noexcept
        : held_(std::exchange(other.held_, nullptr)), access_(other.access_) {}
    UniqueRaytraceAccess& operator=(UniqueRaytraceAccess&& other) noexcept;
    ~UniqueRaytraceAccess() { reset(); }

    void reset();

    /// @return the ray access, or null when the handle is empty or the instance is gone
    RaytraceAccess* get() const;
    explicit operator bool() const { return get() != nullptr; }
    RaytraceAccess* operator->() const { return get(); }
    RaytraceAccess& operator*() const { return *get(); }

private:
    HeldInstance* held_ = nullptr;
    RaytraceAccess* access_ = nullptr;
};

/// The engine of the process for as long as the session lives: begin it in the plug-in's own start hook, end it in its
/// stop hook.
///
/// Sessions are counted: the first one loads the engine, the last one that ends unloads it, and each ends the instances
/// that it has created. Handles that are left over then are empty.
///
/// Do not make it, or the handles, static objects: at process exit the host has already torn down what the engine may
/// still use, its threads may have been ended in the middle of their work, and the order of destruction between two
/// modules is not yours. End it while the host is still whole.
///
/// Threads: sessions are used on one thread at a time. Their handles may be given to other threads, one each, and be
/// released there; they are given up before the session ends.
class Session {
public:
    /// Loads the engine of a directory, given with its final separator; null keeps the library's own. An engine that is
    /// loaded already stays, whatever the directory.
    explicit Session(const char* directory);
    ~Session() { end(); }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// Whether the engine could be loaded; reason() says why not.
    explicit operator bool() const { return loaded_; }
    Library& library() const { return *engine_; }
    /// Why the engine could not be loaded, or why it refused the last instance. Ask on the same thread.
    const char* reason() const { return engine_->getLoadError(); }

    /// An instance whose events the engine serves itself; empty when the engine refuses it.
    UniqueInstance createInstance();
    /// An instance whose events go to a listener, which stays the caller's and outlives the instance.
    UniqueInstance createInstance(EventListener& listener);

    /// Releases the instances of this session, newest first; the last session unloads the engine, at once, with every
    /// instance that is left. Does nothing the second time.
    void end();

private:
    UniqueInstance hold(Instance* instance);

    Library* engine_;
    bool loaded_ = false;
    HeldList* instances_ = nullptr;
};

/// The directory of the module (program or plug-in) that holds an address, absolute and with its final separator, as
/// load() takes it. Pass the address of one of your own functions or static objects.
/// @return an empty text when the platform does not know the address
std::string moduleDirectory(const void* address);

/// A directory with its final separator: it is added where it lacks. An empty text stays empty.
std::string withSeparator(const std::string& directory);

/// UTF-8 of a UTF-16 text, with surrogates paired; for the commands that take narrow strings.
std::string utf8(const char16_t* text);

/// Keeps the engine's file mapped until the process ends, for engines that leave threads behind when they exit: those
/// threads then find their code where it was. Call it while the engine is loaded.
/// @return whether the file stays
bool keepEngineFile(const Library& library);

}  // namespace Zant

#endif
