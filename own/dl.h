#ifndef ZANT_OWN_DL_H
#define ZANT_OWN_DL_H

#include <string>

#include "own/cxx17.h"

namespace Zant {

/// Dynamic loading: plain functions over the platform's loader.
///
/// Files are opened with lazy binding. Every function may be called on any thread. A failure answers null and leaves
/// its reason for DllLastError(); running out of memory while a file name is joined throws std::bad_alloc.

/// Opens a file. @return its handle (end it with DllUnload()), or null.
void* DllLoad(const char* fileName);

/// @return the address of a symbol of an open file, or null when the file does not have it.
void* DllFindProcedure(void* handle, const char* name);

/// Closes an open file. @return the loader's result, 0 for success.
int DllUnload(void* handle);

/// Keeps an open file mapped until the process ends, whatever is closed. @return whether it stays.
bool DllKeepMapped(void* handle);

/// The file (program or library) that holds an address of code or of a static object. The name is absolute, with links
/// followed: it depends neither on the name by which the file was started or opened, nor on the working directory.
/// @return an empty text when the platform does not know the address
std::string DllFileOf(const void* address);

/// Opens the file whose name is `dir` + `name` + `middle1` + `middle2` + `middle3` + `ext`. Null pieces are skipped
/// and nothing is put between the pieces, so `dir` must end with its separator. `unused` is not read.
/// @return the handle, or null.
void* DllLoadCombinedFilename(const char* dir, const char* name, const char* unused, const char* ext,
                              const char* middle1, const char* middle2, const char* middle3);

/// Opens `dir` + `name` + `ext`, and when that fails its debug build, `dir` + `name` + "d" + `ext`.
/// @return the first handle that there is, or null.
void* DllLoadDebugOrReleaseVersion(const char* dir, const char* name, const char* ext);

/// Why the calling thread's last opening or look-up did not find what it asked for: one line "name: reason" for each
/// name that was tried in vain, in the order of trying, without a final line break; empty when the first name served.
/// Very long lines are cut off. The text stays valid until the thread's next opening or look-up.
const char* DllLastError();

}  // namespace Zant

#endif
