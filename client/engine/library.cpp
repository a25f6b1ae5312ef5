#include "client/engine/library.h"

#include <cstring>
#include <memory>
#include <new>

#include "own/dl.h"

namespace Zant {
namespace {

// What was wrong with an engine file that opened, or with an instance; null when the loader's own reason holds.
thread_local const char* refusal = nullptr;

// Null for no directory: a null or an empty text.
std::unique_ptr<char[]> copyOf(const char* text) {
    if (!text || !*text) return nullptr;
    const size_t size = std::strlen(text) + 1;
    std::unique_ptr<char[]> copy(new char[size]);
    std::memcpy(copy.get(), text, size);
    return copy;
}

}  // namespace

Library::Library(const char* dir) {
    setLibraryDir(dir ? dir : "./");
}

Library::Library(void (*init)(Library*), const char* dir) : Library(dir) {
    initLib(init);
}

Library::~Library() {
    release();
    delete[] libraryDir;
}

void Library::zero() {
    reserved0 = nullptr;
    libraryDir = nullptr;
    moduleHandle = nullptr;
    instanceList = nullptr;
    hostVersion = 3000;
}

void Library::setLibraryDir(const char* dir) {
    storeLibraryDir(copyOf(dir).release());
}

void Library::storeLibraryDir(char* copy) {
    delete[] libraryDir;
    libraryDir = copy;
}

bool Library::load(const char* dir) {
    if (isLoaded()) return true;
    std::unique_ptr<char[]> copy = copyOf(dir);
    // The file of a failed load. An engine whose version has turned 0 under its instances stays open for them.
    if (moduleHandle && !instanceList) unload();
    refusal = nullptr;
    moduleHandle = DllLoadDebugOrReleaseVersion(dir ? copy.get() : libraryDir, "zant3", ZANT_ENGINE_SUFFIX);
    // Only now, with no allocation left to fail: the exception of joining a file name leaves the old directory.
    if (dir) storeLibraryDir(copy.release());
    return initLib(moduleHandle);
}

bool Library::loadExplicitly(const char* dir) {
    flags &= ~AUTO_UNLOAD;
    return load(dir);
}

bool Library::initLib(void (*init)(Library*)) {
    refusal = nullptr;
    if (!init) return false;
    init(this);
    if (isLoaded()) return true;
    const char* const reason =
        vtables.library ? "the engine reports API version 0" : "the engine's entry point gave no library table";
    release();
    refuse(reason);
    return false;
}

bool Library::initLib(void* handle) {
    if (!handle) return false;
    return initLib(reinterpret_cast<void (*)(Library*)>(DllFindProcedure(handle, "zant3_init")));
}

void Library::refuse(const char* reason) {
    refusal = reason;
}

const char* Library::getLoadError() const {
    return refusal ? refusal : DllLastError();
}

void Library::release() {
    if (flags & RELEASING) return;
    if (instanceList) destroyInstances();
    if (flags & AUTO_UNLOAD) unload();
}

void Library::unloadExplicitly() {
    flags |= AUTO_UNLOAD;
    release();
}

void Library::unload() {
    instanceMutex.destroy();
    vtables.exit();
    if (moduleHandle) {
        DllUnload(moduleHandle);
        moduleHandle = nullptr;
        reserved0 = nullptr;
    }
}

StaticLibraryLoader::~StaticLibraryLoader() {
    delete library;
}

Library* StaticLibraryLoader::getLibrary(const char* dir) {
    if (!library) library = new Library(dir);
    return library;
}

namespace {

/// Ends the library of the process at its exit.
struct LibraryEnd {
    StaticLibraryLoader& loader;
    ~LibraryEnd() {
        delete loader.library;
        loader.library = nullptr;
    }
};

}  // namespace

Library* getLibrary(const char* dir) {
    // The loader itself is never destroyed: a host's static object may ask after our end, and finds a library that is
    // not loaded.
    alignas(StaticLibraryLoader) static unsigned char storage[sizeof(StaticLibraryLoader)];
    static StaticLibraryLoader& loader = *new (storage) StaticLibraryLoader;
    static const LibraryEnd end{loader};
    return loader.getLibrary(dir);
}

}  // namespace Zant
