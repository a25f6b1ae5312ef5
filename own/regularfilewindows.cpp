#include <windows.h>

#include <algorithm>
#include <system_error>

#include "own/regularfile.h"
#include "own/wide.h"

namespace Zant {
namespace Platform {
namespace {

[[noreturn]] void fail(std::errc reason) {
    throw std::system_error(std::make_error_code(reason));
}

void* handleOf(intptr_t file) {
    return reinterpret_cast<void*>(file);
}

std::errc reasonOfOpening(DWORD error) {
    const bool missing = error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
    return missing ? std::errc::no_such_file_or_directory : std::errc::permission_denied;
}

}  // namespace

RegularFile::RegularFile(const std::string& name) {
    constexpr DWORD all = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    const std::wstring wideName = wide(name);
    const DWORD attributes = GetFileAttributesW(wideName.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY))
        fail(std::errc::is_a_directory);
    void* const file = CreateFileW(wideName.c_str(), GENERIC_READ, all, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE) fail(reasonOfOpening(GetLastError()));
    LARGE_INTEGER size{};
    file_ = reinterpret_cast<intptr_t>(file);
    left_ = GetFileSizeEx(file, &size) ? static_cast<uint64_t>(size.QuadPart) : 0;
    if (GetFileType(file) == FILE_TYPE_DISK) return;
    CloseHandle(file);
    fail(std::errc::not_supported);
}

RegularFile::~RegularFile() {
    CloseHandle(handleOf(file_));
}

size_t RegularFile::read(char* into, size_t room) {
    const auto wanted = static_cast<DWORD>(std::min<uint64_t>({room, left_, uint64_t{1} << 30}));
    DWORD count = 0;
    if (!ReadFile(handleOf(file_), into, wanted, &count, nullptr)) fail(std::errc::io_error);
    left_ -= count;
    return count;
}

}  // namespace Platform
}  // namespace Zant
