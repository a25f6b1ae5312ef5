#include <windows.h>

#include "own/wide.h"

namespace Zant {
namespace Platform {

std::wstring wide(const std::string& text) {
    const int length = static_cast<int>(text.size());
    const int size = MultiByteToWideChar(CP_UTF8, 0, text.data(), length, nullptr, 0);
    std::wstring converted(static_cast<size_t>(size), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), length, converted.data(), size);
    return converted;
}

std::string narrow(const std::wstring& text) {
    const int length = static_cast<int>(text.size());
    const int size = WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string converted(static_cast<size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), length, converted.data(), size, nullptr, nullptr);
    return converted;
}

}  // namespace Platform
}  // namespace Zant
