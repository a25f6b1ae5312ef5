#include "client/engine/instance.h"

namespace Zant {

Instance::~Instance() {
    // The engine's side first: it may raise events until it is gone, and the listener must still be there for them.
    libraryTable->destroyInstance(engineInstance);
    setEventListener(nullptr);
    deleteOwnedListener();
    library->unregister(this);
}

void* Instance::findObject(const char* name, int handleType) const {
    void* unused = nullptr;
    return findObject(name, &unused, handleType, nullptr);
}

const char* Instance::getStringValue(void* handle) const {
    ZantParserExchangeBuffer record{};
    record.type = ZantValueString;
    getValue(handle, &record);
    return record.value.string;
}

}  // namespace Zant
