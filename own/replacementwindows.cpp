#include "own/replacement.h"

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cerrno>

namespace Zant {
namespace Platform {
namespace {

/// Whether the system takes the file away when its last handle is closed, by the end of the process too.
bool goesWithItsHandle(void* file, bool goes) {
    FILE_DISPOSITION_INFO disposition{};
    disposition.DeleteFile = goes ? TRUE : FALSE;
    return SetFileInformationByHandle(file, FileDispositionInfo, &disposition, sizeof disposition);
}

int errnoOf(DWORD error) {
    switch (error) {
        case ERROR_FILE_NOT_FOUND:
        case ERROR_PATH_NOT_FOUND:
            return ENOENT;
        case ERROR_DISK_FULL:
            return ENOSPC;
        default:
            return EACCES;
    }
}

}  // namespace

bool Replacement::isPossible(const std::string&, const std::filesystem::path& target) {
    std::error_code failure;
    const auto status = std::filesystem::status(target, failure);
    return !std::filesystem::exists(status) || std::filesystem::is_regular_file(status);
}

std::FILE* Replacement::begin(const std::filesystem::path& target) {
    const DWORD old = GetFileAttributesW(target.c_str());
    if (old != INVALID_FILE_ATTRIBUTES && (old & FILE_ATTRIBUTE_READONLY)) {
        errno = EACCES;
        return nullptr;
    }
    const auto path = target.parent_path() / (L".zant." + std::to_wstring(GetCurrentProcessId()));
    void* const file = CreateFileW(path.c_str(), GENERIC_WRITE | DELETE, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr,
                                   CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE || !goesWithItsHandle(file, true)) {
        errno = errnoOf(GetLastError());
        if (file != INVALID_HANDLE_VALUE) CloseHandle(file);
        return nullptr;
    }
    target_ = target;
    temporary_ = path;
    return _fdopen(_open_osfhandle(reinterpret_cast<intptr_t>(file), _O_BINARY), "wb");
}

bool Replacement::finish(std::FILE* stream) {
    constexpr DWORD atOnce = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
    const bool written =
        std::fflush(stream) == 0 && goesWithItsHandle(reinterpret_cast<void*>(_get_osfhandle(_fileno(stream))), false);
    if (std::fclose(stream) != 0 || !written) return false;
    if (!MoveFileExW(temporary_.c_str(), target_.c_str(), atOnce)) {
        errno = errnoOf(GetLastError());
        return false;
    }
    temporary_.clear();
    return true;
}

// Also where the file is kept already and could not take the place.
void Replacement::abandon() {
    if (isBegun()) DeleteFileW(temporary_.c_str());
    temporary_.clear();
}

}  // namespace Platform
}  // namespace Zant
