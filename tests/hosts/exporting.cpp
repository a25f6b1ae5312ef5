// A plug-in that is built to export all that it defines, as a compiler's defaults do. Two builds of it in global symbol
// scope are one to the platform's linker: the second's Engine has the first one's table of virtual operations.

#include "client/host.h"
#include "client/zant.h"

/// All of it inline, so that every build of it has a copy of its own.
class Engine {
public:
    virtual ~Engine() {}
    virtual bool load(const char* directory) {
        if (Zant::getLibrary(nullptr)->loadExplicitly(directory))
            instance = Zant::getLibrary(nullptr)->createInstance();
        return instance != nullptr;
    }
    /// Of the library that it takes for its own: the other plug-in's instance goes with it.
    virtual void unload() { Zant::getLibrary(nullptr)->unloadExplicitly(); }

    Zant::Instance* instance = nullptr;
};

namespace {

// Volatile, or the compiler calls past the table.
Engine* volatile engine = nullptr;

}  // namespace

extern "C" int zantPluginStart(const char* engineDirectory) {
    engine = new Engine;
    return engine->load(engineDirectory) ? 1 : 0;
}

extern "C" void zantPluginWork() {
    Zant::Prototyper quick(engine->instance);
    fg2_gradients(quick.protos(), 0.5, 3);
}

extern "C" void zantPluginStop() {
    engine->unload();
    delete engine;
    engine = nullptr;
}
