#ifndef ZANT_ENGINES_SCENE_BUILTIN_H
#define ZANT_ENGINES_SCENE_BUILTIN_H

#include <atomic>

#include "client/records/zant_records.h"
#include "engines/scene/registry.h"

namespace Zant::Engine {

/// What the engine itself does with an event that a host sends back: text goes to the standard output, a line of text
/// comes from the standard input, windows keep their flags and show nothing.
///
/// May be used by several threads; lines of input are asked for by one at a time.
class BuiltIn {
public:
    /// Serves one event and leaves its answer in the record.
    /// @return 1, or 0 for a kind that the engine does not know.
    int serve(ZantEventData& event);

    int openStreams() const { return static_cast<int>(streams_.size()); }
    int openWindows() const { return static_cast<int>(windows_.size()); }
    /// Closes all of them.
    void close();

private:
    struct TextStream {};
    struct Window {
        std::atomic<int> flags{0};
    };

    char* readLine();
    void serveText(ZantEventData& event);
    void serveWindow(ZantEventData& event);

    Registry<TextStream> streams_;
    Registry<Window> windows_;
    char line_[4096] = {};  // the last line of input; the engine owns answers
};

}  // namespace Zant::Engine

#endif
