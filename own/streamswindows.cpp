#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include "own/streams.h"

namespace Zant {
namespace Platform {
namespace {

void* handleOf(std::FILE* stream) {
    return reinterpret_cast<void*>(_get_osfhandle(_fileno(stream)));
}

}  // namespace

void prepareStandardStreams() {
    for (std::FILE* const stream : {stdin, stdout, stderr})
        _setmode(_fileno(stream), _O_BINARY);
    SetConsoleOutputCP(CP_UTF8);
}

// A console can be told to understand escapes. The null device is none, though the run-time library takes it for one.
bool isTerminal(std::FILE* stream) {
    DWORD mode = 0;
    void* const handle = handleOf(stream);
    return GetConsoleMode(handle, &mode) && SetConsoleMode(handle, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
}

uint64_t regularSize(std::FILE* stream) {
    LARGE_INTEGER size{};
    void* const handle = handleOf(stream);
    const bool regular = GetFileType(handle) == FILE_TYPE_DISK && GetFileSizeEx(handle, &size);
    return regular ? static_cast<uint64_t>(size.QuadPart) : 0;
}

bool isStandardOutput(const std::string&) {
    return false;  // has no name
}

// GetVersionEx() answers what a program says that it knows; the system's own library tells what it is.
std::string systemName() {
    OSVERSIONINFOW version{};
    version.dwOSVersionInfoSize = sizeof version;
    using Ask = LONG(WINAPI*)(OSVERSIONINFOW*);
    const auto found = reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll"), "RtlGetVersion"));
    if (found) reinterpret_cast<Ask>(found)(&version);
    return "Windows " + std::to_string(version.dwMajorVersion) + "." + std::to_string(version.dwMinorVersion) + "." +
           std::to_string(version.dwBuildNumber) + " x86_64";
}

}  // namespace Platform
}  // namespace Zant
