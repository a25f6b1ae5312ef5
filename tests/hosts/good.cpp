// A plug-in that keeps the contract. Each build of it is given its NUMBER, which its commands carry, and whether it
// LOADS_WITH_ITS_FIRST_INSTANCE or explicitly.

#include "client/host.h"
#include "client/zant.h"

namespace {

#ifdef LOADS_WITH_ITS_FIRST_INSTANCE
struct Plugin {
    explicit Plugin(const char* engineDirectory) {
        Zant::Library& library = *Zant::getLibrary(nullptr);
        library.setLibraryDir(engineDirectory);
        instance = Zant::UniqueInstance(library.createInstance());
    }
    Zant::UniqueInstance instance;
};
#else
struct Plugin {
    explicit Plugin(const char* engineDirectory) : session(engineDirectory), instance(session.createInstance()) {}
    Zant::Session session;
    Zant::UniqueInstance instance;
};
#endif

Plugin* plugin = nullptr;

}  // namespace

extern "C" ZANT_EXPORTED int zantPluginStart(const char* engineDirectory) {
    plugin = new Plugin(engineDirectory);
    return plugin->instance ? 1 : 0;
}

extern "C" ZANT_EXPORTED void zantPluginWork() {
    Zant::Prototyper quick(plugin->instance.get());
    Zant::DirectPrototyper binary(plugin->instance.get());
    fg2_gradients(quick.protos(), 0.5, NUMBER);
    fg2_gradients(binary.protos(), 0.25, NUMBER);
}

extern "C" ZANT_EXPORTED void zantPluginStop() {
    delete plugin;
    plugin = nullptr;
}
