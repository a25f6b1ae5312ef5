#ifndef ZANT_CLIENT_ENGINE_INSTANCE_H
#define ZANT_CLIENT_ENGINE_INSTANCE_H

#include <cstddef>

#include "client/engine/library.h"
#include "client/records/zant_records.h"

namespace Zant {

class RaytraceAccess;

/// One scene and parser inside the engine: the way to the engine's tables, and the routing of the instance's events.
///
/// Instances are created and released through their Library, which owns them. The engine is handed this record,
/// fills `engineInstance` and `parserContext`, and calls `eventFunction`. The calls that go to the engine check
/// nothing: they need a live instance of a loaded engine.
///
/// Threads: event routing is changed while the engine raises no event on the instance; calls on different instances
/// may overlap as far as the engine allows.
class Instance {
public:
    Library* library;
    Instance* next = nullptr;                         ///< the next older instance
    const LibraryFunctionsVtable* libraryTable;       ///< as it was when the instance was made
    ZantLibraryInstance* engineInstance = nullptr;    ///< the engine's handle of the instance
    void* parserContext = nullptr;                    ///< first argument of every parser call
    EventListener* ownedListener = nullptr;           ///< the default listener, once there has been one
    void (*eventFunction)(ZantEventData*) = nullptr;  ///< never null while the engine knows the instance
    EventListener* listener = nullptr;                ///< serves the events, or null
    void* userData = nullptr;                         ///< the host's, beside its own event function

    explicit Instance(Library* owner) : library(owner), libraryTable(owner->vtables.library) {}
    Instance(const Instance&) = delete;
    Instance& operator=(const Instance&) = delete;
    /// Ends the engine's side first, then lets the listener go, then leaves the library's list.
    ~Instance();

    /// Routes events to a host listener, which stays the host's; null drops all events. The previous listener is
    /// deactivated first, activate() of the new one comes last.
    void setEventListener(EventListener* newListener);
    /// Routes events to a host function, which must not be null; the previous listener is deactivated.
    void setEventHandler(void (*function)(ZantEventData*), void* hostData);
    /// Sends every event back to the engine, which serves it itself. Throws std::bad_alloc.
    void setDefaultEventListener();
    /// The host listener that serves the events; null when there is none (the default listener is not the host's).
    EventListener* getEventListener() const { return listener == ownedListener ? nullptr : listener; }

    /// Hands a command text or binary block to the parser. @return the parser's error code, 0 for success.
    int parse(const void* data, const char* sourceName, ParseMode mode) const {
        return library->vtables.parser->parse(parserContext, data, sourceName, mode);
    }
    /// Looks a named engine object up. The engine may fill the eight bytes at `record`.
    /// @return the object's handle, or null.
    void* findObject(const char* name, void* record, int handleType, const char* argument) const {
        return library->vtables.parser->findObject(parserContext, name, record, handleType, argument);
    }
    /// The same for callers without use for the record.
    void* findObject(const char* name, int handleType) const;
    /// Reads a value of an engine object. @return the engine's answer.
    int getValue(void* handle, ZantParserExchangeBuffer* record) const {
        return library->vtables.parser->getValue(parserContext, handle, record);
    }
    /// Reads a text value. @return the engine's own text, valid until the value may change, or null.
    const char* getStringValue(void* handle) const;
    /// Writes a value of an engine object. @return the engine's answer.
    int setValue(void* handle, const ZantParserExchangeBuffer* record) const {
        return library->vtables.parser->setValue(parserContext, handle, record);
    }
    /// Gives an event back to the engine, which serves it itself and leaves its answer in the record.
    int sendBackEvent(ZantEventData* event) const { return libraryTable->sendBackEvent(engineInstance, event); }

    /// Opens a ray context on the instance. The caller deletes it before the instance is released.
    RaytraceAccess* createRaytraceAccess() const;

private:
    void deleteOwnedListener();
};

static_assert(sizeof(Instance) == 72 && offsetof(Instance, library) == 0 && offsetof(Instance, next) == 8 &&
                  offsetof(Instance, libraryTable) == 16 && offsetof(Instance, engineInstance) == 24 &&
                  offsetof(Instance, parserContext) == 32 && offsetof(Instance, ownedListener) == 40 &&
                  offsetof(Instance, eventFunction) == 48 && offsetof(Instance, listener) == 56 &&
                  offsetof(Instance, userData) == 64,
              "the engine is handed this record");

}  // namespace Zant

#endif
