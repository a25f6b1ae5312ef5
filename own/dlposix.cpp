// The loader of Linux.
#include <dlfcn.h>
#include <link.h>

#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "own/dlplatform.h"

namespace Zant {
namespace Platform {
namespace {

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

bool hasCommonScope() {
    return true;
}

void* openFile(const char* fileName, Binding binding) {
    return dlopen(fileName, (binding == Binding::Lazy ? RTLD_LAZY : RTLD_NOW) |
                                (binding == Binding::NowForAll ? RTLD_GLOBAL : RTLD_LOCAL));
}

void* findProcedure(void* handle, const char* name) {
    return dlsym(handle, name);
}

const char* lastReason() {
    return dlerror();
}

int closeFile(void* handle) {
    return dlclose(handle);
}

bool keepMapped(void* handle) {
    const link_map* file = nullptr;
    if (!handle || dlinfo(handle, RTLD_DI_LINKMAP, &file) != 0) return false;
    return dlopen(file->l_name, RTLD_LAZY | RTLD_NODELETE | RTLD_NOLOAD) != nullptr;
}

void keepMappedAround(const void* address) {
    Dl_info info{};
    if (dladdr(address, &info)) dlopen(info.dli_fname, RTLD_LAZY | RTLD_NOLOAD | RTLD_NODELETE);
}

bool isOpen(const char* fileName) {
    void* const handle = dlopen(fileName, RTLD_LAZY | RTLD_NOLOAD);
    if (handle) dlclose(handle);
    return handle != nullptr;
}

std::string fileOf(const void* address) {
    Dl_info info{};
    if (!dladdr(address, &info) || !info.dli_fname) return {};
    std::string mapped = mappedFile(info.dli_fbase);  // static objects need not lie in the file
    if (!mapped.empty()) return mapped;
    const std::unique_ptr<char, Closing> resolved(realpath(info.dli_fname, nullptr));
    return resolved ? resolved.get() : std::string();
}

}  // namespace Platform
}  // namespace Zant
