#include "client/engine/library.h"

#include <cstring>
#include <memory>

#include "own/dl.h"

namespace Zant {
namespace {

// What was wrong with an engine file that opened; null when the loader's own reason holds.
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
    if (moduleHandle) unload();
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
    refusal = vtables.library ? "the engine reports API version 0" : "the engine's entry point gave no library table";
    release();
    return false;
}

bool Library::initLib(void* handle) {
    if (!handle) return false;
    return initLib(reinterpret_cast<void (*)(Library*)>(DllFindProcedure(handle, "zant3_init")));
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

Library* getLibrary(const char* dir) {
    static StaticLibraryLoader loader;
    return loader.getLibrary(dir);
}

}  // namespace Zant
