#include "client/events/eventlistener.h"

namespace Zant {

void EventListener::activate(Instance*) {}

void EventListener::deactivate(Instance*) {}

void* EventListener::createTextStream() {
    return this;
}

void EventListener::destroyTextStream(void*) {}

void EventListener::textLine(void*, const char*) {}

void EventListener::textNewLine(void*) {}

void EventListener::getTextLine(void*, const char*, _ZantEventTextBufferData* buffer) {
    buffer->text = nullptr;
}

int EventListener::getTextFlags(void*) {
    return 0;
}

void EventListener::allocTextBuffer(_ZantEventTextBufferData* buffer) {
    buffer->buffer = new char[buffer->size];
    buffer->text = buffer->buffer;
}

void EventListener::freeTextBuffer(_ZantEventTextBufferData* buffer) {
    delete[] buffer->buffer;
    buffer->buffer = nullptr;
}

void* EventListener::createWindow() {
    return nullptr;
}

void EventListener::destroyWindow(void*) {}

int EventListener::setWindowSize(void*, const _ZantEventWindow&) {
    return 0;
}

void EventListener::setPixels(void*, const _ZantEventPixelTable&) {}

void EventListener::copyPixels(void*, const _ZantEventPixelRectangle&) {}

int EventListener::getWindowFlags(void*) {
    return 0;
}

void EventListener::setWindowFlags(void*, int) {}

void EventListener::setWindowTitle(void*, const char*) {}

void EventListener::getWindowMouseRawPosition(void* window, _ZantEventMousePosition& position) {
    getWindowMousePosition(window, position);
}

void EventListener::getWindowMousePosition(void*, _ZantEventMousePosition& position) {
    std::memset(position.position, 0, sizeof position.position);
}

void EventListener::getWindowKeyEvent(void*, _ZantEventKey& key) {
    key.present = 0;
}

int EventListener::getMouseRawDPI(void*) {
    return 0;
}

}  // namespace Zant
