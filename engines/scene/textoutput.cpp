#include "engines/scene/textoutput.h"

#include <thread>

#include "engines/scene/guarded.h"

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
    if (lines.empty() || closed_) return;
    perform([&] { send(lines); });
}

void TextOutput::say(std::string_view text) {
    Lines lines;
    lines.add(text);
    say(lines);
}

void TextOutput::close() {
    if (isOpened() && !closed_) {
        perform([&] { raise(EventDestroyTextStream, handle_, nullptr); });
    }
    closed_ = true;
}

template <class Work>
void TextOutput::perform(const Work& work) {
    if (!foreignThread_) return work();
    std::thread([&] { guarded(work); }).join();
}

bool TextOutput::isOpened() {
    const std::lock_guard lock(opening_);
    return opened_;
}

void TextOutput::send(const Lines& lines) {
    void* const handle = stream();
    for (const std::string& line : lines.all()) {
        raise(EventTextLine, handle, line.c_str());
        raise(EventTextNewLine, handle, nullptr);
    }
}

void* TextOutput::stream() {
    const std::lock_guard lock(opening_);
    if (opened_) return handle_;
    opened_ = true;
    ZantEventData event{};
    event.kind = EventCreateTextStream;
    raise(event);
    return handle_ = event.handle;
}

void TextOutput::raise(ZantEventData& event) {
    if (closed_ || !instance_->eventFunction) return;
    event.instance = instance_;
    event.reserved = instance_->userData;
    guarded([&] { instance_->eventFunction(&event); });
}

void TextOutput::raise(_ZantEventKind kind, void* handle, const char* text) {
    ZantEventData event{};
    event.kind = kind;
    event.handle = handle;
    event.text = text;
    raise(event);
}

}  // namespace Zant::Engine
