#include "client/listeners/dispatch.h"

#include "client/engine/instance.h"
#include "client/events/eventlistener.h"

namespace Zant {
namespace {

template <class T>
T* pointer(const EventData& event) {
    return reinterpret_cast<T*>(event.value);
}

template <class T>
T& detail(const EventData& event) {
    return *pointer<T>(event);
}

void serveWindowFlagsQuestion(EventListener& listener, EventData& event) {
    switch (eventSelector(event)) {
        case 0: {
            const int first = listener.getWindowFlags(event.handle);
            const int second = listener.getWindowFlags(event.handle);
            event.value = (first & 1) | (second & 2);
            break;
        }
        case 1:
            event.value = listener.getMouseRawDPI(event.handle);
            break;
        default:
            break;
    }
}

using Serve = void (*)(EventListener& listener, EventData& event);

// One row per kind of event, in the order of _ZantEventKind.
constexpr Serve rows[] = {
    [](EventListener& l, EventData& e) { l.setPixels(e.handle, detail<_ZantEventPixelTable>(e)); },
    [](EventListener& l, EventData& e) { l.copyPixels(e.handle, detail<_ZantEventPixelRectangle>(e)); },
    [](EventListener& l, EventData& e) { e.handle = l.createTextStream(); },
    [](EventListener& l, EventData& e) { l.destroyTextStream(e.handle); },
    [](EventListener& l, EventData& e) { l.textLine(e.handle, e.text); },
    [](EventListener& l, EventData& e) { l.textNewLine(e.handle); },
    [](EventListener& l, EventData& e) { l.getTextLine(e.handle, e.text, pointer<_ZantEventTextBufferData>(e)); },
    [](EventListener& l, EventData& e) { e.value = l.getTextFlags(e.handle); },
    [](EventListener& l, EventData& e) { e.handle = l.createWindow(); },
    [](EventListener& l, EventData& e) { l.destroyWindow(e.handle); },
    [](EventListener& l, EventData& e) {
        if (!l.setWindowSize(e.handle, detail<_ZantEventWindow>(e))) e.handle = nullptr;
    },
    [](EventListener& l, EventData& e) { l.setWindowTitle(e.handle, e.text); },
    [](EventListener& l, EventData& e) {
        if (eventSelector(e) == 0) l.setWindowFlags(e.handle, static_cast<int>(e.value));
    },
    serveWindowFlagsQuestion,
    [](EventListener& l, EventData& e) { l.getWindowMousePosition(e.handle, detail<_ZantEventMousePosition>(e)); },
    [](EventListener& l, EventData& e) { l.getWindowMouseRawPosition(e.handle, detail<_ZantEventMousePosition>(e)); },
    [](EventListener& l, EventData& e) { l.getWindowKeyEvent(e.handle, detail<_ZantEventKey>(e)); },
    [](EventListener& l, EventData& e) { l.allocTextBuffer(pointer<_ZantEventTextBufferData>(e)); },
    [](EventListener& l, EventData& e) { l.freeTextBuffer(pointer<_ZantEventTextBufferData>(e)); },
};
constexpr uint32_t rowCount = sizeof rows / sizeof rows[0];
static_assert(rowCount == EventFreeTextBuffer + 1, "a row for every kind");

}  // namespace

void Instance::setEventListener(EventListener* newListener) {
    if (listener) listener->deactivate(this);
    listener = newListener;
    eventFunction = listener ? zant_cpp_handler : zant_null_handler;
    // Last: a listener may use the instance, and raise events on it, from its activation on.
    if (listener) listener->activate(this);
}

void Instance::setEventHandler(void (*function)(ZantEventData*), void* hostData) {
    if (listener) listener->deactivate(this);
    eventFunction = function;
    listener = nullptr;
    userData = hostData;
}

}  // namespace Zant

void zant_cpp_handler(ZantEventData* event) {
    const auto kind = static_cast<uint32_t>(event->kind);
    if (kind < Zant::rowCount) Zant::rows[kind](*event->instance->listener, *event);
}

void zant_null_handler(ZantEventData*) {}
