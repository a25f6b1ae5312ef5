#ifndef ZANT_OWN_DLPLATFORM_H
#define ZANT_OWN_DLPLATFORM_H

#include <string>

#include "own/cxx17.h"

/// What a platform's loader does; own/dl.h is made of it. Internal. File names and reasons are UTF-8.
namespace Zant {
namespace Platform {

/// @return the handle, or null: lastReason() says why
void* openFile(const char* fileName);

/// @return the address, or null: lastReason() says why
void* findProcedure(void* handle, const char* name);

/// Why the thread's last call answered null. @return null when the platform does not say
const char* lastReason();

/// @return 0 for success
int closeFile(void* handle);

bool keepMapped(void* handle);

/// @return the absolute name with links followed, or an empty text
std::string fileOf(const void* address);

}  // namespace Platform
}  // namespace Zant

#endif
