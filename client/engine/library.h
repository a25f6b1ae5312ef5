#ifndef ZANT_CLIENT_ENGINE_LIBRARY_H
#define ZANT_CLIENT_ENGINE_LIBRARY_H

#include <cstddef>
#include <cstdint>

#include "client/engine/mutex.h"
#include "client/engine/tables.h"

namespace Zant {

class EventListener;
class Instance;

/// The bits of Library::flags.
enum LibraryFlags : uint32_t {
    AUTO_UNLOAD = 1,  ///< release() ends by unloading the engine
    RELEASING = 2     ///< release() is destroying instances
};

/// The engine in this process: its file, its tables of functions and its instances.
///
/// The library opens `dir` + "zant3.dylib", or `dir` + "zant3d.dylib" (the engine's debug build) when that fails. A
/// directory must end with its separator; with none, the platform's loader searches its own paths. The engine's entry
/// point "zant3_init" writes the tables into this record; from then on the tables are the only way to the engine.
///
/// An engine that the first instance loaded is unloaded with the last one. An engine loaded by loadExplicitly() stays
/// until unloadExplicitly(), and is not told to exit when the process ends.
/// At process exit the library of the process ends: release its instances and unload the engine before, while the
/// engine's threads are idle. An exit() during a job takes the engine's file away under them.
///
/// Owner: the library owns its instances and its copy of the directory.
///
/// Threads: one thread at a time. After loadExplicitly() and setupInstanceMutex(), instances may be created and
/// released on several threads until unloadExplicitly(). Without the explicit load the thread that releases the last
/// instance unloads the engine under the others, mutex or not.
class Library {
public:
    void* reserved0 = nullptr;         ///< the engine's
    void* reserved1 = nullptr;         ///< the engine's
    char* libraryDir = nullptr;        ///< owned copy, or null
    Vtables vtables;                   ///< written by the engine's entry point
    void* moduleHandle = nullptr;      ///< the open engine file, or null
    Instance* instanceList = nullptr;  ///< newest first
    Mutex instanceMutex;               ///< guards changes of the list
    int32_t hostVersion = 3000;
    uint32_t flags = AUTO_UNLOAD;

    /// Remembers the directory, "./" for null; loads nothing.
    explicit Library(const char* dir);
    /// The same, then initLib(init): for an engine whose entry point the host has already.
    Library(void (*init)(Library*), const char* dir);
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;
    /// Destroys every instance, and unloads an engine that was not loaded explicitly.
    ~Library();

    /// Forgets directory, instances and file without freeing anything; tables, flags and mutex stay.
    void zero();

    /// Stores a copy of the directory; null and the empty text leave none. Throws std::bad_alloc, and then keeps the
    /// stored one.
    void setLibraryDir(const char* dir);
    const char* getLibraryDir() const { return libraryDir; }

    /// Loads the engine from a directory, null for the stored one. A loaded engine stays, whatever the directory.
    /// Closes the file that a failed load left open before it opens another, unless instances are listed.
    /// Throws std::bad_alloc, with the directory as it was, when the file name cannot be joined.
    /// @return whether an engine is loaded; getLoadError() says why not.
    bool load(const char* dir);
    /// load() for good: the engine stays when its last instance goes, also when loading fails this time.
    bool loadExplicitly(const char* dir);
    /// Lets an entry point fill this record.
    /// @return whether the engine is usable; if not, everything is released again.
    bool initLib(void (*init)(Library*));
    /// The same for an engine file that the host has opened and will close; null gives false.
    bool initLib(void* handle);
    bool initLib(std::nullptr_t) { return false; }
    /// Why the calling thread's last load(), initLib() or creation of an instance failed: a line for each file name
    /// that was tried, with its reason, or what was wrong with the file that opened, or that the engine refused the
    /// instance. Ask only after a failure.
    const char* getLoadError() const;

    bool isLoaded() const { return getLibApiVersion() != 0; }
    /// The engine's API version, 0 when none is loaded.
    int getLibApiVersion() const { return getInfoInt(0); }
    /// An information of the engine, 0 when none is loaded.
    int getInfoInt(int id) const { return vtables.library ? vtables.library->getInfoInt(id) : 0; }
    /// An information text of the engine, which owns it; null when there is none or no engine is loaded.
    const char* getInfoString(int id) const { return vtables.library ? vtables.library->getInfoString(id) : nullptr; }
    /// Passes an option on to the engine. @return the engine's answer, 0 when none is loaded.
    int setPlatformOption(const char* name, const char* value, void* data) const {
        return vtables.library ? vtables.library->setPlatformOption(name, value, data) : 0;
    }

    /// Creates the mutex of the instance list; call it once after loading (and again after a reload) when instances
    /// are created or released on several threads.
    void setupInstanceMutex() { instanceMutex.init(vtables.mt); }

    bool hasInstances() const { return instanceList != nullptr; }
    /// Creates an instance whose events the engine serves itself. Loads the engine when none is loaded.
    /// @return an instance that this library owns (end it with releaseInstance()), or null when the engine cannot be
    ///         loaded or refuses it.
    Instance* createInstance();
    /// The same with a host listener, which stays the host's and must outlive the instance; null for no events.
    Instance* createInstanceWithListner(EventListener* listener);
    /// The same with a host event function.
    Instance* createInstanceWithHandler(void (*function)(ZantEventData*), void* userData);
    /// Destroys an instance; null does nothing. The last one takes an engine along that was not loaded explicitly.
    /// The newest instance goes at once, an older one after a walk past all that are newer.
    void releaseInstance(Instance* instance);

    /// First step of creating: loads the engine when necessary. Throws std::bad_alloc, and then unloads an engine that
    /// it has loaded. @return an instance without event routing that the engine has not seen yet, or null.
    Instance* allocInstance();
    /// Last step of creating: hands the instance to the engine and lists it.
    /// @return the instance, or null after destroying it when the engine refuses it.
    Instance* initInstance(Instance* instance);
    /// Takes an instance off the list, and releases the library when the list is empty. Part of its destruction.
    void unregister(Instance* instance);

    /// Destroys every instance, newest first, and unloads the engine unless it was loaded explicitly.
    /// Does nothing while it is under way. Instance pointers of the host are dangling afterwards.
    void release();
    /// release() and unload, also when the engine was loaded explicitly.
    void unloadExplicitly();
    /// Lets the engine exit and closes its file; instances must be gone. Does nothing when nothing is loaded.
    void unload();

private:
    static void refuse(const char* reason);
    void storeLibraryDir(char* copy);
    void destroyInstances();
};

static_assert(sizeof(Library) == 104 && offsetof(Library, reserved0) == 0 && offsetof(Library, reserved1) == 8 &&
                  offsetof(Library, libraryDir) == 16 && offsetof(Library, vtables) == 24 &&
                  offsetof(Library, moduleHandle) == 64 && offsetof(Library, instanceList) == 72 &&
                  offsetof(Library, instanceMutex) == 80 && offsetof(Library, hostVersion) == 96 &&
                  offsetof(Library, flags) == 100,
              "the engine's entry point is handed this record");

/// Holds a library and ends it.
class StaticLibraryLoader {
public:
    Library* library = nullptr;

    StaticLibraryLoader() = default;
    StaticLibraryLoader(const StaticLibraryLoader&) = delete;
    StaticLibraryLoader& operator=(const StaticLibraryLoader&) = delete;
    ~StaticLibraryLoader();

    /// The library, created with `dir` when there is none.
    Library* getLibrary(const char* dir);
};

/// The library of the process. The first call creates it, with the directory `dir` (null for "./"), and must have
/// come back before another thread calls; later calls ignore `dir`. Loads nothing.
/// After its end at process exit another one answers, which is not loaded and never freed.
Library* getLibrary(const char* dir);

}  // namespace Zant

#endif
