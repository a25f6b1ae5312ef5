// The library's instances: creating, listing and releasing them.
#include <memory>

#include "client/engine/instance.h"

namespace Zant {

Instance* Library::createInstanceWithListner(EventListener* listener) {
    std::unique_ptr<Instance> instance(allocInstance());
    if (instance) instance->setEventListener(listener);
    return initInstance(instance.release());
}

Instance* Library::createInstanceWithHandler(void (*function)(ZantEventData*), void* userData) {
    std::unique_ptr<Instance> instance(allocInstance());
    if (instance) instance->setEventHandler(function, userData);
    return initInstance(instance.release());
}

void Library::releaseInstance(Instance* instance) {
    delete instance;
}

Instance* Library::allocInstance() {
    const bool wasLoaded = isLoaded();
    if (!wasLoaded && !load(nullptr)) return nullptr;
    try {
        return new Instance(this);
    } catch (...) {
        if (!wasLoaded) release();  // nobody would ask for the engine's end
        throw;
    }
}

Instance* Library::initInstance(Instance* instance) {
    if (!instance) return nullptr;
    std::unique_ptr<Instance> refused(instance);
    if (!vtables.library->createInstance(instance)) {
        refused.reset();
        refuse("the engine refused to create an instance");
        return nullptr;
    }
    static_cast<void>(refused.release());
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
    // With an engine that was loaded explicitly release() has nothing to do, unless another thread has listed an
    // instance meanwhile: that one stays. Otherwise it goes with the engine.
    if (empty && (flags & AUTO_UNLOAD)) release();
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
