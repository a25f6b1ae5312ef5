#ifndef ZANT_APP_LIBRARYFILE_H
#define ZANT_APP_LIBRARYFILE_H

#include <string>

#include "own/libraryheader.h"

namespace Zant::App {

using Platform::LibraryFile;

/// Looks at a file that is to be loaded. A file that is not there has no fault here: the loader's own reason says it
/// well.
LibraryFile lookAtLibraryFile(const std::string& name);

}  // namespace Zant::App

#endif
