#include "own/dl.h"

#include <cstdio>
#include <cstring>
#include <initializer_list>

#include "own/dlplatform.h"
#include "own/resizablebuffer.h"

namespace Zant {
namespace {

// Fixed storage per thread: reporting a failure must not fail itself. The first of two lines gets at most half of it,
// so that a long first reason leaves room for the second.
constexpr size_t ErrorRoom = 4096;
thread_local char lastError[ErrorRoom];

bool startsWith(const char* text, const char* start) {
    return std::strncmp(text, start, std::strlen(start)) == 0;
}

void keepFailure(const char* name, const char* reason) {
    if (!reason) reason = "unknown reason";
    const size_t used = std::strlen(lastError);
    const size_t room = used == 0 ? ErrorRoom / 2 : ErrorRoom - used;
    const char* lineBreak = used == 0 ? "" : "\n";
    if (startsWith(reason, name))
        std::snprintf(lastError + used, room, "%s%s", lineBreak, reason);
    else
        std::snprintf(lastError + used, room, "%s%s: %s", lineBreak, name, reason);
}

void* open(const char* fileName) {
    void* handle = Platform::openFile(fileName);
    if (!handle) keepFailure(fileName, Platform::lastReason());
    return handle;
}

void* openCombined(const char* dir, const char* name, const char* ext, const char* middle1, const char* middle2,
                   const char* middle3) {
    ResizableBuffer fileName;
    for (const char* piece : {dir, name, middle1, middle2, middle3, ext})
        if (piece) fileName.appendString(piece);
    fileName.append('\0');
    return open(fileName.buffer);
}

}  // namespace

void* DllLoad(const char* fileName) {
    lastError[0] = 0;
    return open(fileName);
}

void* DllFindProcedure(void* handle, const char* name) {
    lastError[0] = 0;
    void* procedure = Platform::findProcedure(handle, name);
    if (!procedure) keepFailure(name, Platform::lastReason());
    return procedure;
}

int DllUnload(void* handle) {
    return Platform::closeFile(handle);
}

bool DllKeepMapped(void* handle) {
    return Platform::keepMapped(handle);
}

std::string DllFileOf(const void* address) {
    return Platform::fileOf(address);
}

void* DllLoadCombinedFilename(const char* dir, const char* name, const char* /*unused*/, const char* ext,
                              const char* middle1, const char* middle2, const char* middle3) {
    lastError[0] = 0;
    return openCombined(dir, name, ext, middle1, middle2, middle3);
}

void* DllLoadDebugOrReleaseVersion(const char* dir, const char* name, const char* ext) {
    lastError[0] = 0;
    void* handle = openCombined(dir, name, ext, nullptr, nullptr, nullptr);
    return handle ? handle : openCombined(dir, name, ext, nullptr, "d", nullptr);
}

const char* DllLastError() {
    return lastError;
}

}  // namespace Zant
