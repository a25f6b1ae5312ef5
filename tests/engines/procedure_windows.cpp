#include <windows.h>

#include "engines/probe.h"

void* procedureOfAnyone(const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(nullptr), name));
}
