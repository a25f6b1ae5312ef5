// A plug-in with a mistake, which the environment variable ZANT_TEST_MISTAKE chooses. The engine is called past the
// client's own records, which may be gone: what happens then is up to the engine alone, the same every time.

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <thread>

#include "client/zant.h"

/// Starts a process that goes on after this one, where the platform makes that easy. It would leave a file.
void leaveProcessBehind();

namespace {

Zant::Instance* instance = nullptr;
const Zant::ParserFunctionsVtable* parser = nullptr;
void* context = nullptr;

bool makes(const char* mistake) {
    const char* chosen = std::getenv("ZANT_TEST_MISTAKE");
    return chosen && std::strcmp(chosen, mistake) == 0;
}

void send() {
    parser->parse(context, "var x,1;", nullptr, Zant::ParseText);
}

/// Outlives the library object, which is made later.
struct Static {
    ~Static() {
        if (parser && makes("static-destructor")) send();
    }
} lateCaller;

}  // namespace

extern "C" ZANT_EXPORTED int zantPluginStart(const char* engineDirectory) {
    Zant::Library& library = *Zant::getLibrary(nullptr);
    if (makes("does-not-start") || !library.loadExplicitly(engineDirectory)) return 0;
    instance = library.createInstance();
    parser = library.vtables.parser;
    context = instance->parserContext;
    return 1;
}

extern "C" ZANT_EXPORTED void zantPluginWork() {
    if (makes("ends-process")) {
        leaveProcessBehind();
        std::_Exit(0);
    }
    while (makes("hangs")) {
        std::puts("it hangs");
        std::fflush(stdout);
        std::this_thread::sleep_for(std::chrono::hours(24));
    }
    if (!makes("two-threads")) return send();
    std::thread other(send);
    send();
    other.join();
}

extern "C" ZANT_EXPORTED void zantPluginStop() {
    Zant::Library& library = *Zant::getLibrary(nullptr);
    library.releaseInstance(instance);
    if (makes("after-release")) send();
    library.unloadExplicitly();
    if (makes("after-unload")) send();
}
