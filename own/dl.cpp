#include "own/dl.h"

#include <dlfcn.h>
#include <link.h>

#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <memory>

#include "own/resizablebuffer.h"

namespace Zant {
namespace {

// Fixed storage per thread: reporting a failure must not fail itself. The first of two lines gets at most half of it,
// so that a long first reason leaves room for the second.
constexpr size_t ErrorRoom = 4096;
thread_local char lastError[ErrorRoom];

bool startsWith(const char* text, const char* start) {
    return std::strncmp(text, start, std::strlen(start)) == 0;
}

void keepFailure(const char* name, const char* reason) {
    if (!reason) reason = "unknown reason";
    const size_t used = std::strlen(lastError);
    const size_t room = used == 0 ? ErrorRoom / 2 : ErrorRoom - used;
    const char* lineBreak = used == 0 ? "" : "\n";
    if (startsWith(reason, name))
        std::snprintf(lastError + used, room, "%s%s", lineBreak, reason);
    else
        std::snprintf(lastError + used, room, "%s%s: %s", lineBreak, name, reason);
}

void* open(const char* fileName) {
    void* handle = dlopen(fileName, RTLD_LAZY);
    if (!handle) keepFailure(fileName, dlerror());
    return handle;
}

void* openCombined(const char* dir, const char* name, const char* ext, const char* middle1, const char* middle2,
                   const char* middle3) {
    ResizableBuffer fileName;
    for (const char* piece : {dir, name, middle1, middle2, middle3, ext})
        if (piece) fileName.appendString(piece);
    fileName.append('\0');
    return open(fileName.buffer);
}

/// Closes a stream, or frees what the platform has allocated.
struct Closing {
    void operator()(std::FILE* file) const { std::fclose(file); }
    void operator()(char* text) const { std::free(text); }
};

/// The kernel's own name of the file that is mapped at an address: the loader knows a program by the name that it was
/// started with, and a library by the name that it was opened with.
std::string mappedFile(const void* address) {
    const std::unique_ptr<std::FILE, Closing> maps(std::fopen("/proc/self/maps", "re"));
    char line[4096 + 128];
    while (maps && std::fgets(line, sizeof line, maps.get())) {
        uintptr_t from = 0, to = 0;
        int name = 0;
        const auto place = reinterpret_cast<uintptr_t>(address);
        if (std::sscanf(line, "%" SCNxPTR "-%" SCNxPTR " %*s %*s %*s %*s %n", &from, &to, &name) < 2) continue;
        if (place < from || place >= to || line[name] != '/') continue;
        return std::string(line + name, std::strcspn(line + name, "\n"));
    }
    return {};
}

}  // namespace

void* DllLoad(const char* fileName) {
    lastError[0] = 0;
    return open(fileName);
}

void* DllFindProcedure(void* handle, const char* name) {
    lastError[0] = 0;
    void* procedure = dlsym(handle, name);
    if (!procedure) keepFailure(name, dlerror());
    return procedure;
}

int DllUnload(void* handle) {
    return dlclose(handle);
}

bool DllKeepMapped(void* handle) {
    const link_map* file = nullptr;
    if (!handle || dlinfo(handle, RTLD_DI_LINKMAP, &file) != 0) return false;
    return dlopen(file->l_name, RTLD_LAZY | RTLD_NODELETE | RTLD_NOLOAD) != nullptr;
}

std::string DllFileOf(const void* address) {
    Dl_info info{};
    if (!dladdr(address, &info) || !info.dli_fname) return {};
    std::string mapped = mappedFile(info.dli_fbase);  // static objects need not lie in the file
    if (!mapped.empty()) return mapped;
    const std::unique_ptr<char, Closing> resolved(realpath(info.dli_fname, nullptr));
    return resolved ? resolved.get() : std::string();
}

void* DllLoadCombinedFilename(const char* dir, const char* name, const char* /*unused*/, const char* ext,
                              const char* middle1, const char* middle2, const char* middle3) {
    lastError[0] = 0;
    return openCombined(dir, name, ext, middle1, middle2, middle3);
}

void* DllLoadDebugOrReleaseVersion(const char* dir, const char* name, const char* ext) {
    lastError[0] = 0;
    void* handle = openCombined(dir, name, ext, nullptr, nullptr, nullptr);
    return handle ? handle : openCombined(dir, name, ext, nullptr, "d", nullptr);
}

const char* DllLastError() {
    return lastError;
}

}  // namespace Zant
