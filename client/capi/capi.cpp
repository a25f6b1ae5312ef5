#include "client/capi/zant_c.h"
#include "client/encoding/prototyper.h"
#include "client/engine/instance.h"
#include "client/engine/library.h"

using Zant::getLibrary;

const char* ZantGetInfoString(int id) {
    return getLibrary(nullptr)->getInfoString(id);
}

int ZantGetInfoInt(int id) {
    return getLibrary(nullptr)->getInfoInt(id);
}

int ZantGetHostVersion() {
    return getLibrary(nullptr)->hostVersion;
}

int ZantGetLibApiVersion() {
    return getLibrary(nullptr)->getLibApiVersion();
}

int ZantLibraryLoad(const char* directory) {
    return getLibrary(nullptr)->loadExplicitly(directory);
}

void ZantLibraryUnload() {
    getLibrary(nullptr)->unloadExplicitly();
}

ZantInstance* ZantLibraryCreateInstance() {
    return getLibrary(nullptr)->createInstance();
}

ZantInstance* ZantLibraryCreateInstanceWithEventHandler(ZantEventFunction function, void* userData) {
    return getLibrary(nullptr)->createInstanceWithHandler(function, userData);
}

void ZantLibraryReleaseInstance(ZantInstance* instance) {
    getLibrary(nullptr)->releaseInstance(instance);
}

int ZantInstanceParse(ZantInstance* instance, const char* text, const char* sourceName) {
    return instance->parse(text, sourceName, Zant::ParseText);
}

int ZantInstanceSendBackEvent(ZantEventData* event) {
    return event->instance->sendBackEvent(event);
}

void* ZantInstanceGetObjectByName(ZantInstance* instance, const char* name, int handleType) {
    return instance->findObject(name, handleType);
}

int ZantInstanceGetSymbolValue(ZantInstance* instance, void* handle, ZantParserExchangeBuffer* value) {
    return instance->getValue(handle, value);
}

const char* ZantInstanceGetStringSymbolValue(ZantInstance* instance, void* handle) {
    return instance->getStringValue(handle);
}

ZantDirectPrototyper* ZantCreateDirectProto(ZantInstance* instance) {
    return instance ? new Zant::DirectPrototyper(instance) : nullptr;
}

void ZantReleaseProto(ZantDirectPrototyper* prototyper) {
    delete prototyper;
}
