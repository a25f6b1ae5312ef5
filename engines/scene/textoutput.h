#ifndef ZANT_ENGINES_SCENE_TEXTOUTPUT_H
#define ZANT_ENGINES_SCENE_TEXTOUTPUT_H

#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "engines/scene/events.h"

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

/// The text of one instance: its stream is opened on the host's side with the first line, and asked for its flags.
///
/// Any thread may call any operation. No lock is held during an event: what is said while the stream is being opened,
/// from within that event or by another thread, is sent by whoever opens it.
class TextOutput {
public:
    explicit TextOutput(Events& events) : events_(events) {}

    /// Sends the lines, each as its text and a new line.
    void say(const Lines& lines);
    void say(std::string_view text);
    /// Asks for a line of text.
    /// @param prompt what the host may show
    /// @return false when there is none; then the answer is empty
    bool ask(const char* prompt, std::string& answer);
    /// Closes the stream; nothing is sent any more afterwards.
    void close();

private:
    static constexpr size_t longestAnswer = 4096;

    enum class State { New, Opening, Open, Closed };

    bool isOpen();
    bool open(const Lines& lines);
    void greet();
    bool takeWaiting(std::vector<Lines>& waiting);
    void send(const Lines& lines);
    bool receive(const char* prompt, std::string& answer);

    Events& events_;
    std::mutex mutex_;
    State state_ = State::New;
    std::vector<Lines> waiting_;  // for the stream
    void* handle_ = nullptr;      // written while it is being opened, and by that thread alone
};

}  // namespace Zant::Engine

#endif
