#ifndef ZANT_APP_LIBRARYFILE_H
#define ZANT_APP_LIBRARYFILE_H

#include <string>

namespace Zant::App {

/// What the header and the size of a file say about loading it, without loading it. The platform's loader maps what the
/// header promises and dies with SIGBUS where the file ends early; its messages for files of another kind mislead.
struct LibraryFile {
    /// Why it cannot be loaded, "cut off: 10 bytes where ..."; empty when nothing is against it.
    std::string fault = {};
    /// The loader does not refuse it all the same: it dies with SIGBUS on what is not there.
    bool endsHost = false;
    /// What is wrong with it and does not matter to the loader; empty when there is nothing.
    std::string remark = {};
};

/// Looks at a file. A file that is not there has no fault here: the loader's own reason says it well.
LibraryFile lookAtLibraryFile(const std::string& name);

}  // namespace Zant::App

#endif
