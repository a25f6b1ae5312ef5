#ifndef ZANT_ENGINES_SCENE_INCLUDEDFILE_H
#define ZANT_ENGINES_SCENE_INCLUDEDFILE_H

#include <string>

#include "language/reader.h"
#include "own/regularfile.h"

namespace Zant::Engine {

using namespace Language;

/// A command file that other commands include. It may be the transcript, which grows meanwhile.
class IncludedFile : public TextSource {
public:
    /// Throws std::system_error, here and when reading, when the file cannot be read.
    explicit IncludedFile(const std::string& name) : file_(name) {}
    size_t read(char* into, size_t room) override { return file_.read(into, room); }

private:
    Platform::RegularFile file_;
};

}  // namespace Zant::Engine

#endif
