#ifndef ZANT_OWN_WIDE_H
#define ZANT_OWN_WIDE_H

#include <string>

#include "own/cxx17.h"

/// Texts between UTF-8 and the UTF-16 of Windows, for the sources of own/ that are built there. Internal.
namespace Zant {
namespace Platform {

/// Bytes that are not UTF-8 become U+FFFD.
std::wstring wide(const std::string& text);

std::string narrow(const std::wstring& text);

}  // namespace Platform
}  // namespace Zant

#endif
