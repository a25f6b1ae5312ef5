#ifndef ZANT_ENGINES_SCENE_BUILTIN_H
#define ZANT_ENGINES_SCENE_BUILTIN_H

#include <atomic>

#include "client/records/zant_records.h"

namespace Zant::Engine {

/// What the engine itself does with an event that a host sends back: text goes to the standard output, a line of text
/// comes from the standard input, windows are counted and show nothing.
///
/// May be used by several threads; lines of input are asked for by one at a time.
class BuiltIn {
public:
    /// Serves one event and leaves its answer in the record.
    /// @return 1, or 0 for a kind that the engine does not know.
    int serve(ZantEventData& event);

    int openStreams() const { return streams_; }
    int openWindows() const { return windows_; }

private:
    char* readLine();
    void serveText(ZantEventData& event);
    void serveWindow(ZantEventData& event);

    std::atomic<int> streams_{0};
    std::atomic<int> windows_{0};
    std::atomic<uintptr_t> lastHandle_{0};
    std::atomic<int> windowFlags_{0};
    char line_[4096] = {};  // the last line of input; the engine owns answers
};

}  // namespace Zant::Engine

#endif
