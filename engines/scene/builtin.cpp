#include "engines/scene/builtin.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "client/events/eventlistener.h"
#include "engines/scene/handles.h"

namespace Zant::Engine {
namespace {

template <class Detail>
Detail* detailOf(const ZantEventData& event) {
    return reinterpret_cast<Detail*>(event.value);
}

void allocate(_ZantEventTextBufferData* storage) {
    if (storage) storage->text = storage->buffer = static_cast<char*>(std::calloc(storage->size + 1, 1));
}

void release(_ZantEventTextBufferData* storage) {
    if (!storage) return;
    std::free(storage->buffer);
    storage->buffer = nullptr;
}

}  // namespace

int BuiltIn::serve(ZantEventData& event) {
    switch (event.kind) {
        case EventCreateTextStream:
        case EventDestroyTextStream:
        case EventTextLine:
        case EventTextNewLine:
        case EventGetTextLine:
        case EventGetTextFlags:
        case EventAllocTextBuffer:
        case EventFreeTextBuffer:
            serveText(event);
            return 1;
        default:
            break;
    }
    if (event.kind < EventSetPixels || event.kind > EventFreeTextBuffer) return 0;
    serveWindow(event);
    return 1;
}

void BuiltIn::close() {
    streams_.takeAll();
    windows_.takeAll();
}

// One line of the standard input, without its end.
char* BuiltIn::readLine() {
    if (!std::fgets(line_, sizeof line_, stdin)) return nullptr;
    line_[std::strcspn(line_, "\r\n")] = 0;
    return line_;
}

void BuiltIn::serveText(ZantEventData& event) {
    switch (event.kind) {
        case EventCreateTextStream:
            event.handle = makeHandle(HandleTag::TextStream, streams_.add(std::make_shared<TextStream>()));
            break;
        case EventDestroyTextStream:
            streams_.take(handleNumber(HandleTag::TextStream, event.handle));
            break;
        case EventTextLine:
            std::fputs(event.text ? event.text : "", stdout);
            break;
        case EventTextNewLine:
            std::fputc('\n', stdout);
            std::fflush(stdout);
            break;
        case EventGetTextLine:
            if (auto* answer = detailOf<_ZantEventTextBufferData>(event)) answer->text = readLine();
            break;
        case EventAllocTextBuffer:
            allocate(detailOf<_ZantEventTextBufferData>(event));
            break;
        case EventFreeTextBuffer:
            release(detailOf<_ZantEventTextBufferData>(event));
            break;
        default:
            event.value = 0;  // no flags
    }
}

void BuiltIn::serveWindow(ZantEventData& event) {
    const uint64_t number = handleNumber(HandleTag::Window, event.handle);
    const auto window = windows_.find(number);
    switch (event.kind) {
        case EventCreateWindow:
            event.handle = makeHandle(HandleTag::Window, windows_.add(std::make_shared<Window>()));
            break;
        case EventDestroyWindow:
            windows_.take(number);
            break;
        case EventSetWindowFlags:
            if (window && eventSelector(event) == 0) window->flags = static_cast<int>(event.value);
            break;
        case EventGetWindowFlags:
            if (eventSelector(event) == 0) event.value = window ? window->flags.load() : 0;
            if (eventSelector(event) == 1) event.value = 0;
            break;
        case EventGetMousePosition:
        case EventGetMouseRawPosition:
            if (auto* detail = detailOf<_ZantEventMousePosition>(event)) detail->position[0] = detail->position[1] = 0;
            break;
        case EventGetKey:
            if (auto* key = detailOf<_ZantEventKey>(event)) key->present = 0;
            break;
        default:
            break;  // pixels, sizes and titles are shown to nobody
    }
}

}  // namespace Zant::Engine
