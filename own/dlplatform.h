#ifndef ZANT_OWN_DLPLATFORM_H
#define ZANT_OWN_DLPLATFORM_H

#include <string>

#include "own/cxx17.h"

/// What a platform's loader does; own/dl.h is made of it. Internal. File names and reasons are UTF-8.
namespace Zant {
namespace Platform {

/// When a file's missing symbols are found, and who else sees its own. Windows finds them at once and shows none.
enum class Binding { Lazy, Now, NowForAll };

/// Whether Binding::NowForAll differs from Binding::Now.
bool hasCommonScope();

/// @return the handle, or null: lastReason() says why
void* openFile(const char* fileName, Binding binding = Binding::Lazy);

/// @return the address, or null: lastReason() says why
void* findProcedure(void* handle, const char* name);

/// Why the thread's last call answered null. @return null when the platform does not say
const char* lastReason();

/// @return 0 for success
int closeFile(void* handle);

bool keepMapped(void* handle);

/// Keeps the file that holds an address mapped until the process ends.
void keepMappedAround(const void* address);

/// @return whether the process has the file open
bool isOpen(const char* fileName);

/// @return the absolute name with links followed, or an empty text
std::string fileOf(const void* address);

}  // namespace Platform
}  // namespace Zant

#endif
