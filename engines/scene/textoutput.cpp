#include "engines/scene/textoutput.h"

#include <utility>

namespace Zant::Engine {

void Lines::add(std::string_view text) {
    for (;;) {
        const size_t end = text.find('\n');
        lines_.emplace_back(text.substr(0, end));
        if (end == std::string_view::npos || end + 1 == text.size()) return;
        text.remove_prefix(end + 1);
    }
}

void TextOutput::say(const Lines& lines) {
    if (lines.empty() || events_.isClosed()) return;
    events_.perform([&] {
        if (open(lines)) send(lines);
    });
}

void TextOutput::say(std::string_view text) {
    Lines lines;
    lines.add(text);
    say(lines);
}

bool TextOutput::ask(const char* prompt, std::string& answer) {
    bool isAnswered = false;
    events_.perform([&] { isAnswered = open({}) && receive(prompt, answer); });
    if (!isAnswered) answer.clear();
    return isAnswered;
}

void TextOutput::close() {
    if (isOpen()) {
        events_.perform([&] { events_.raise(EventDestroyTextStream, handle_); });
    }
    const std::lock_guard lock(mutex_);
    state_ = State::Closed;
}

bool TextOutput::isOpen() {
    const std::lock_guard lock(mutex_);
    return state_ == State::Open;
}

// False when the stream does not take lines: it has been closed, or is being opened, and then these lines wait.
bool TextOutput::open(const Lines& lines) {
    {
        const std::lock_guard lock(mutex_);
        if (state_ == State::Opening) waiting_.push_back(lines);
        if (state_ != State::New) return state_ == State::Open;
        state_ = State::Opening;
    }
    greet();
    std::vector<Lines> waiting;
    while (takeWaiting(waiting)) {
        for (const Lines& said : waiting)
            send(said);
    }
    return true;
}

void TextOutput::greet() {
    ZantEventData event{};
    event.kind = EventCreateTextStream;
    events_.raise(event);
    handle_ = event.handle;
    events_.raise(EventGetTextFlags, handle_);
}

// The stream is open once nothing waits.
bool TextOutput::takeWaiting(std::vector<Lines>& waiting) {
    const std::lock_guard lock(mutex_);
    waiting = std::exchange(waiting_, {});
    if (waiting.empty()) state_ = State::Open;
    return !waiting.empty();
}

void TextOutput::send(const Lines& lines) {
    for (const std::string& line : lines.all()) {
        events_.raise(EventTextLine, handle_, line.c_str());
        events_.raise(EventTextNewLine, handle_);
    }
}

// The storage is empty before it is offered: a host that leaves it as it is has answered with an empty line.
bool TextOutput::receive(const char* prompt, std::string& answer) {
    _ZantEventTextBufferData storage{};
    storage.size = longestAnswer;
    ZantEventData event{};
    event.kind = EventAllocTextBuffer;
    event.value = reinterpret_cast<int64_t>(&storage);
    events_.raise(event);
    if (storage.buffer) storage.buffer[0] = 0;
    event.kind = EventGetTextLine;
    event.handle = handle_;
    event.text = prompt;
    events_.raise(event);
    const bool isAnswered = storage.text != nullptr;
    if (isAnswered) answer = storage.text;
    event.kind = EventFreeTextBuffer;
    event.handle = nullptr;
    event.text = nullptr;
    events_.raise(event);
    return isAnswered;
}

}  // namespace Zant::Engine
