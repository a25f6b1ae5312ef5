// The loader of Windows. Its names and messages are UTF-16.
#include <windows.h>

#include <cstdio>
#include <memory>

#include "own/dlplatform.h"
#include "own/wide.h"

namespace Zant {
namespace Platform {
namespace {

// Longer than any name that the system takes.
constexpr DWORD nameRoom = 32768;

/// Keeps the system from asking its user about a file that does not open, for as long as the object lives.
class WithoutDialogs {
public:
    WithoutDialogs() { SetThreadErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX, &before_); }
    ~WithoutDialogs() { SetThreadErrorMode(before_, nullptr); }
    WithoutDialogs(const WithoutDialogs&) = delete;
    WithoutDialogs& operator=(const WithoutDialogs&) = delete;

private:
    DWORD before_ = 0;
};

struct Closing {
    void operator()(void* handle) const { CloseHandle(handle); }
};

/// The name of a file with links followed; as it was where the system does not tell.
std::string followed(const wchar_t* name) {
    constexpr DWORD all = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    void* const opened = CreateFileW(name, 0, all, nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (opened == INVALID_HANDLE_VALUE) return narrow(name);
    const std::unique_ptr<void, Closing> file(opened);
    wchar_t text[nameRoom];
    const DWORD length = GetFinalPathNameByHandleW(opened, text, nameRoom, FILE_NAME_NORMALIZED);
    if (length == 0 || length >= nameRoom) return narrow(name);
    const std::string path = narrow(text), local = "\\\\?\\", share = local + "UNC\\";
    if (path.rfind(share, 0) == 0) return "\\\\" + path.substr(share.size());
    return path.rfind(local, 0) == 0 ? path.substr(local.size()) : path;
}

}  // namespace

bool hasCommonScope() {
    return false;
}

void* openFile(const char* fileName, Binding) {
    const WithoutDialogs quiet;
    return reinterpret_cast<void*>(LoadLibraryW(wide(fileName).c_str()));
}

void* findProcedure(void* handle, const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(handle), name));
}

// The system's text, without the line break at its end; in storage of the thread, as it must not fail.
const char* lastReason() {
    static thread_local char reason[1024];
    wchar_t text[256];
    const DWORD error = GetLastError();
    DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error, 0, text,
                                  sizeof text / sizeof *text, nullptr);
    while (length != 0 && text[length - 1] <= L' ')
        --length;
    const int size =
        WideCharToMultiByte(CP_UTF8, 0, text, static_cast<int>(length), reason, sizeof reason - 1, nullptr, nullptr);
    reason[size] = 0;
    if (size == 0) std::snprintf(reason, sizeof reason, "error %lu", error);
    return reason;
}

int closeFile(void* handle) {
    return FreeLibrary(static_cast<HMODULE>(handle)) ? 0 : -1;
}

bool keepMapped(void* handle) {
    HMODULE module = nullptr;
    constexpr DWORD pinned = GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_PIN;
    return handle && GetModuleHandleExW(pinned, static_cast<const wchar_t*>(handle), &module);  // its first address
}

void keepMappedAround(const void* address) {
    keepMapped(const_cast<void*>(address));
}

bool isOpen(const char* fileName) {
    return GetModuleHandleW(wide(fileName).c_str()) != nullptr;
}

std::string fileOf(const void* address) {
    HMODULE module = nullptr;
    constexpr DWORD borrowed = GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    if (!GetModuleHandleExW(borrowed, static_cast<const wchar_t*>(address), &module)) return {};
    wchar_t name[nameRoom];
    return GetModuleFileNameW(module, name, nameRoom) != 0 ? followed(name) : std::string();
}

}  // namespace Platform
}  // namespace Zant
