#ifndef ZANT_ENGINES_SCENE_TEXTOUTPUT_H
#define ZANT_ENGINES_SCENE_TEXTOUTPUT_H

#include <atomic>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "client/engine/instance.h"

namespace Zant::Engine {

/// Lines of text that a command has to say.
class Lines {
public:
    /// Adds a text, which may itself be of several lines; the last one may end with a newline or without.
    void add(std::string_view text);
    bool empty() const { return lines_.empty(); }
    const std::vector<std::string>& all() const { return lines_; }

private:
    std::vector<std::string> lines_;
};

/// The text stream of one instance: opened on the host's side with the first line, closed with the instance.
///
/// Events are raised with no lock of the engine held but that of opening, so that a host may call the engine from
/// within. An event carries the host's user data in its reserved word.
class TextOutput {
public:
    /// @param foreignThread raise events from a thread of the engine's own, while the caller waits.
    TextOutput(Instance* instance, bool foreignThread) : instance_(instance), foreignThread_(foreignThread) {}

    /// Sends the lines, each as its text and a new line.
    void say(const Lines& lines);
    void say(std::string_view text);
    /// Closes the stream; nothing is sent any more afterwards.
    void close();

private:
    template <class Work>
    void perform(const Work& work);
    bool isOpened();
    void send(const Lines& lines);
    void* stream();
    void raise(ZantEventData& event);
    void raise(_ZantEventKind kind, void* handle, const char* text);

    Instance* instance_;
    bool foreignThread_;
    std::recursive_mutex opening_;  // a host may make the engine speak while it opens the stream
    bool opened_ = false;
    void* handle_ = nullptr;
    std::atomic<bool> closed_{false};
};

}  // namespace Zant::Engine

#endif
