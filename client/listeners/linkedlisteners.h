#ifndef ZANT_CLIENT_LISTENERS_LINKEDLISTENERS_H
#define ZANT_CLIENT_LISTENERS_LINKEDLISTENERS_H

#include "client/events/eventlistener.h"

namespace Zant {

// No virtual destructors, as in the base class.
ZANT_BEGIN_UNDELETED

/// The ready-made listeners.
///
/// Threads: they take no lock. Activation comes from the host's thread, everything else from the engine's threads.

/// Knows the instance that it is active on, and the engine's event strings (informations 100 to 102 of the engine).
class InstanceLinkedListener : public EventListener {
public:
    Instance* instance = nullptr;  ///< null while the listener is not active

    void activate(Instance* activeInstance) override;
    void deactivate(Instance* activeInstance) override;

    /// Whether the text and the engine's information text `id` agree as far as the shorter of the two goes; an empty
    /// text agrees with any. False while the listener is not active, no engine is loaded or there is no such text.
    bool isEventString(int id, const char* text) const;
    /// The first of 100, 101 and 102 that isEventString() is true for, -1 when none is.
    int recognizeEventString(const char* text) const;
};

/// Receives the text of one stream. Its owner is the DispatchLinkedListener that created it.
/// Threads: it is called on the engine's threads, for its own stream only.
class TextListener {
public:
    /// Text to be written to the current line.
    virtual void textLine(const char* text) = 0;
    /// The end of the current line.
    virtual void textNewLine() = 0;
    /// Asks for a line of text; the answer goes into the `text` of the record, null for none.
    virtual void getTextLine(const char* text, _ZantEventTextBufferData* buffer) = 0;
    virtual int getTextFlags() = 0;
    virtual ~TextListener() = default;
};

/// Gives every text stream a TextListener of its own: override createTextListner().
/// Streams that it has no TextListener for are ignored.
class DispatchLinkedListener : public InstanceLinkedListener {
public:
    void* createTextStream() override;
    void destroyTextStream(void* stream) override;
    void textLine(void* stream, const char* text) override;
    void textNewLine(void* stream) override;
    void getTextLine(void* stream, const char* text, _ZantEventTextBufferData* buffer) override;
    int getTextFlags(void* stream) override;

    /// @return a receiver on the heap for a new stream, deleted when the engine closes the stream; or null, as here,
    /// to drop the stream's text.
    virtual TextListener* createTextListner();
};

/// Sends every event back to the engine, which serves it itself: the default listener of an instance. Text storage
/// alone stays with the client. It must be active whenever one of its operations runs.
class BounceBackListener : public InstanceLinkedListener {
public:
    void* createTextStream() override;
    void destroyTextStream(void* stream) override;
    void textLine(void* stream, const char* text) override;
    void textNewLine(void* stream) override;
    void getTextLine(void* stream, const char* text, _ZantEventTextBufferData* buffer) override;
    int getTextFlags(void* stream) override;

    void* createWindow() override;
    void destroyWindow(void* window) override;
    int setWindowSize(void* window, const _ZantEventWindow& size) override;
    void setPixels(void* window, const _ZantEventPixelTable& pixels) override;
    void copyPixels(void* window, const _ZantEventPixelRectangle& rectangle) override;
    int getWindowFlags(void* window) override;
    void setWindowFlags(void* window, int flags) override;
    void setWindowTitle(void* window, const char* title) override;
    void getWindowMouseRawPosition(void* window, _ZantEventMousePosition& position) override;
    void getWindowMousePosition(void* window, _ZantEventMousePosition& position) override;
    void getWindowKeyEvent(void* window, _ZantEventKey& key) override;
    int getMouseRawDPI(void* window) override;

private:
    EventData send(_ZantEventKind kind, void* handle, int64_t value = 0, const char* text = nullptr) const;
    int ask(_ZantEventKind kind, void* handle, int32_t selector) const;
};

ZANT_END_UNDELETED

}  // namespace Zant

#endif
