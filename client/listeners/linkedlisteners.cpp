#include "client/listeners/linkedlisteners.h"

#include <memory>

#include "client/engine/instance.h"

namespace Zant {
namespace {

int64_t addressOf(const void* record) {
    return reinterpret_cast<int64_t>(record);
}

bool onePrefixesTheOther(const char* a, const char* b) {
    while (*a && *b)
        if (*a++ != *b++) return false;
    return true;
}

// Final, so that deleting it as what it is needs no virtual destructor.
class DefaultListener final : public BounceBackListener {};

TextListener* listenerOf(void* stream) {
    return static_cast<TextListener*>(stream);
}

}  // namespace

void InstanceLinkedListener::activate(Instance* activeInstance) {
    instance = activeInstance;
}

void InstanceLinkedListener::deactivate(Instance*) {
    instance = nullptr;
}

bool InstanceLinkedListener::isEventString(int id, const char* text) const {
    if (!text || !instance) return false;
    const char* eventString = instance->library->getInfoString(id);
    return eventString && onePrefixesTheOther(eventString, text);
}

int InstanceLinkedListener::recognizeEventString(const char* text) const {
    for (int id = 100; id <= 102; ++id)
        if (isEventString(id, text)) return id;
    return -1;
}

void* DispatchLinkedListener::createTextStream() {
    return createTextListner();
}

void DispatchLinkedListener::destroyTextStream(void* stream) {
    delete listenerOf(stream);
}

void DispatchLinkedListener::textLine(void* stream, const char* text) {
    if (stream) listenerOf(stream)->textLine(text);
}

void DispatchLinkedListener::textNewLine(void* stream) {
    if (stream) listenerOf(stream)->textNewLine();
}

void DispatchLinkedListener::getTextLine(void* stream, const char* text, _ZantEventTextBufferData* buffer) {
    if (stream) listenerOf(stream)->getTextLine(text, buffer);
}

int DispatchLinkedListener::getTextFlags(void* stream) {
    return stream ? listenerOf(stream)->getTextFlags() : 0;
}

TextListener* DispatchLinkedListener::createTextListner() {
    return nullptr;
}

EventData BounceBackListener::send(_ZantEventKind kind, void* handle, int64_t value, const char* text) const {
    EventData event{};
    event.kind = kind;
    event.handle = handle;
    event.value = value;
    event.text = text;
    instance->sendBackEvent(&event);
    return event;
}

int BounceBackListener::ask(_ZantEventKind kind, void* handle, int32_t selector) const {
    EventData event{};
    event.kind = kind;
    event.handle = handle;
    setEventSelector(event, selector);
    instance->sendBackEvent(&event);
    return static_cast<int>(event.value);
}

void* BounceBackListener::createTextStream() {
    return send(EventCreateTextStream, nullptr).handle;
}

void BounceBackListener::destroyTextStream(void* stream) {
    send(EventDestroyTextStream, stream);
}

void BounceBackListener::textLine(void* stream, const char* text) {
    send(EventTextLine, stream, 0, text);
}

void BounceBackListener::textNewLine(void* stream) {
    send(EventTextNewLine, stream);
}

void BounceBackListener::getTextLine(void* stream, const char* text, _ZantEventTextBufferData* buffer) {
    send(EventGetTextLine, stream, addressOf(buffer), text);
}

int BounceBackListener::getTextFlags(void* stream) {
    return ask(EventGetTextFlags, stream, 0);
}

void* BounceBackListener::createWindow() {
    return send(EventCreateWindow, nullptr).handle;
}

void BounceBackListener::destroyWindow(void* window) {
    send(EventDestroyWindow, window);
}

int BounceBackListener::setWindowSize(void* window, const _ZantEventWindow& size) {
    return send(EventSetWindowSize, window, addressOf(&size)).handle ? 1 : 0;
}

void BounceBackListener::setPixels(void* window, const _ZantEventPixelTable& pixels) {
    send(EventSetPixels, window, addressOf(&pixels));
}

void BounceBackListener::copyPixels(void* window, const _ZantEventPixelRectangle& rectangle) {
    send(EventCopyPixels, window, addressOf(&rectangle));
}

int BounceBackListener::getWindowFlags(void* window) {
    return ask(EventGetWindowFlags, window, 0);
}

void BounceBackListener::setWindowFlags(void* window, int flags) {
    send(EventSetWindowFlags, window, flags);
}

void BounceBackListener::setWindowTitle(void* window, const char* title) {
    send(EventSetWindowTitle, window, 0, title);
}

void BounceBackListener::getWindowMouseRawPosition(void* window, _ZantEventMousePosition& position) {
    send(EventGetMouseRawPosition, window, addressOf(&position));
}

void BounceBackListener::getWindowMousePosition(void* window, _ZantEventMousePosition& position) {
    send(EventGetMousePosition, window, addressOf(&position));
}

void BounceBackListener::getWindowKeyEvent(void* window, _ZantEventKey& key) {
    send(EventGetKey, window, addressOf(&key));
}

int BounceBackListener::getMouseRawDPI(void* window) {
    return ask(EventGetWindowFlags, window, 1);
}

void Instance::setDefaultEventListener() {
    if (!ownedListener) ownedListener = new DefaultListener;
    setEventListener(ownedListener);
}

void Instance::deleteOwnedListener() {
    delete static_cast<DefaultListener*>(ownedListener);
}

Instance* Library::createInstance() {
    // First of all: an instance that had to go again for want of a listener could take the engine along.
    auto listener = std::make_unique<DefaultListener>();
    Instance* instance = allocInstance();
    if (!instance) return nullptr;
    instance->ownedListener = listener.release();
    instance->setDefaultEventListener();
    return initInstance(instance);
}

}  // namespace Zant
