#ifndef ZANT_APP_FILEPOINTER_H
#define ZANT_APP_FILEPOINTER_H

#include <cstdio>
#include <memory>

namespace Zant::App {

struct CloseFile {
    void operator()(std::FILE* file) const {
        if (file != stdin && file != stdout) std::fclose(file);
    }
};

/// Owns an open file; the standard ones stay open.
using FilePointer = std::unique_ptr<std::FILE, CloseFile>;

}  // namespace Zant::App

#endif
