// The library's instances: creating, listing and releasing them.
#include <memory>

#include "client/engine/instance.h"

namespace Zant {

Instance* Library::createInstanceWithListner(EventListener* listener) {
    Instance* instance = allocInstance();
    if (!instance) return nullptr;
    instance->setEventListener(listener);
    return initInstance(instance);
}

Instance* Library::createInstanceWithHandler(void (*function)(ZantEventData*), void* userData) {
    Instance* instance = allocInstance();
    if (!instance) return nullptr;
    instance->setEventHandler(function, userData);
    return initInstance(instance);
}

void Library::releaseInstance(Instance* instance) {
    delete instance;
}

Instance* Library::allocInstance() {
    const bool wasLoaded = isLoaded();
    if (!load(nullptr)) return nullptr;
    try {
        return new Instance(this);
    } catch (...) {
        if (!wasLoaded) release();  // nobody would ask for the engine's end
        throw;
    }
}

Instance* Library::initInstance(Instance* instance) {
    if (!instance || !vtables.library->createInstance(instance)) {
        delete instance;
        return nullptr;
    }
    const MutexLocker locker(instanceMutex);
    instance->next = instanceList;
    instanceList = instance;
    return instance;
}

void Library::unregister(Instance* instance) {
    bool empty;
    {
        const MutexLocker locker(instanceMutex);
        Instance** link = &instanceList;
        while (*link && *link != instance)
            link = &(*link)->next;
        if (*link) *link = instance->next;
        empty = !instanceList;
    }
    // What release() comes to with an empty list, without looking at the list again: it is no longer locked, and
    // another thread may have listed a new instance.
    if (empty && (flags & (AUTO_UNLOAD | RELEASING)) == AUTO_UNLOAD) unload();
}

void Library::destroyInstances() {
    flags |= RELEASING;
    Instance* instance = instanceList;
    instanceList = nullptr;
    while (instance) {
        Instance* older = instance->next;
        delete instance;
        instance = older;
    }
    flags &= ~RELEASING;
}

}  // namespace Zant
