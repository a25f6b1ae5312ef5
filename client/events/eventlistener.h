#ifndef ZANT_CLIENT_EVENTS_EVENTLISTENER_H
#define ZANT_CLIENT_EVENTS_EVENTLISTENER_H

#include <cstdint>
#include <cstring>

#include "client/records/zant_records.h"
#include "own/allocator.h"

namespace Zant {

class Instance;

/// One event, as the engine raises it and as it is sent back.
using EventData = ZantEventData;

/// The selector of a window-flags event lies in the first four bytes of the `text` field itself; the other four carry
/// nothing.
inline int32_t eventSelector(const EventData& event) {
    int32_t selector;
    std::memcpy(&selector, &event.text, sizeof selector);
    return selector;
}

inline void setEventSelector(EventData& event, int32_t selector) {
    std::memcpy(&event.text, &selector, sizeof selector);
}

// No virtual destructor: the order of the virtual operations is shared with other builds.
ZANT_BEGIN_UNDELETED

/// Serves an instance's events: text output, questions for text, preview windows, mouse and keys.
///
/// Derive from it (or from one of the listeners in client/listeners/) and override what the host serves; what is not
/// overridden declines the request: no stream beyond the listener itself, no window, no text, no key.
///
/// Streams and windows are whatever the listener returned from createTextStream() and createWindow(); the engine only
/// passes them back. Texts and records belong to the engine and are valid during the call.
///
/// Owner: whoever creates the listener ends it, as the class that it is: there is no virtual destructor, because the
/// order of the virtual operations is shared with other builds. It must outlive its time on an instance.
///
/// Threads: activate() and deactivate() come from the thread that sets the listener or releases the instance, all
/// other operations from whatever thread the engine raises the event on. A listener protects its own state.
class EventListener : public Object {
public:
    /// The instance takes the listener; events may follow at once.
    virtual void activate(Instance* instance);
    /// The instance lets the listener go: no event follows.
    virtual void deactivate(Instance* instance);

    /// Opens a text stream. @return its handle, here the listener itself.
    virtual void* createTextStream();
    virtual void destroyTextStream(void* stream);
    /// Text to be written to the current line of the stream.
    virtual void textLine(void* stream, const char* text);
    /// The end of the stream's current line.
    virtual void textNewLine(void* stream);
    /// Asks for a line of text. The answer goes into the `text` of the record, null for none.
    virtual void getTextLine(void* stream, const char* text, _ZantEventTextBufferData* buffer);
    virtual int getTextFlags(void* stream);

    /// Provides `size` bytes in `text` and `buffer`; they belong to the listener until freeTextBuffer().
    /// Throws std::bad_alloc.
    virtual void allocTextBuffer(_ZantEventTextBufferData* buffer);
    /// Frees `buffer` and sets it to null; `text` is left as it is.
    virtual void freeTextBuffer(_ZantEventTextBufferData* buffer);

    /// Opens a preview window. @return its handle, or null for no window.
    virtual void* createWindow();
    virtual void destroyWindow(void* window);
    /// @return non-zero when the window has taken the size; after 0 the engine sees no window.
    virtual int setWindowSize(void* window, const _ZantEventWindow& size);
    virtual void setPixels(void* window, const _ZantEventPixelTable& pixels);
    virtual void copyPixels(void* window, const _ZantEventPixelRectangle& rectangle);
    /// Asked twice for one event; only bits 0 and 1 travel to the engine.
    virtual int getWindowFlags(void* window);
    virtual void setWindowFlags(void* window, int flags);
    virtual void setWindowTitle(void* window, const char* title);
    /// The mouse position without the system's acceleration; here the same as getWindowMousePosition().
    virtual void getWindowMouseRawPosition(void* window, _ZantEventMousePosition& position);
    virtual void getWindowMousePosition(void* window, _ZantEventMousePosition& position);
    /// The next key; `present` tells whether there is one.
    virtual void getWindowKeyEvent(void* window, _ZantEventKey& key);
    /// The mouse's resolution in dots per inch, 0 when it is not known.
    virtual int getMouseRawDPI(void* window);
};

ZANT_END_UNDELETED

}  // namespace Zant

#endif
