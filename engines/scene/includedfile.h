#ifndef ZANT_ENGINES_SCENE_INCLUDEDFILE_H
#define ZANT_ENGINES_SCENE_INCLUDEDFILE_H

#include <string>

#include "language/reader.h"

namespace Zant::Engine {

using namespace Language;

/// A command file that other commands include. It always has an end: devices, pipes and folders are not opened, and of
/// a file that grows meanwhile, as the transcript does, only what was there at first is read.
class IncludedFile : public TextSource {
public:
    /// Throws std::system_error, here and when reading, when the file cannot be read.
    explicit IncludedFile(const std::string& name);
    ~IncludedFile() override;
    IncludedFile(const IncludedFile&) = delete;
    IncludedFile& operator=(const IncludedFile&) = delete;

    size_t read(char* into, size_t room) override;

private:
    int file_;
    size_t left_;
};

}  // namespace Zant::Engine

#endif
