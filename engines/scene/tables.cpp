// The five tables: each slot is one delegation that lets no exception out.

#include "engines/scene/tables.h"

#include <cstring>
#include <utility>

#include "engines/scene/guarded.h"
#include "engines/scene/handles.h"
#include "engines/scene/module.h"

namespace Zant::Engine {
namespace {

Module& module() {
    return Module::get();
}

void unused() {
    guarded([] { module().misuse("unused slot", "no host calls it"); });
}

// ---- library ---------------------------------------------------------------------------------------------------

// Each host gets a table with an exit of its own, since exit says nothing about who calls.
template <int place>
void exitEngine() {
    guarded([] { module().exit(place); });
}

void* createInstance(Instance* instance) {
    return guarded<void*>(nullptr, [=] { return instance ? module().createInstance(instance) : nullptr; });
}

void destroyInstance(ZantLibraryInstance* instance) {
    guarded([=] { module().destroyInstance(instance); });
}

int getInfoInt(int id) {
    return guarded(0, [=] { return module().infoInt(id); });
}

const char* getInfoString(int id) {
    return module().infoString(id);
}

int sendBackEvent(ZantLibraryInstance* instance, ZantEventData* event) {
    return guarded(0, [=] {
        if (!event || !module().sceneOfInstance(instance, "sendBackEvent")) return 0;
        return module().serve(*event);
    });
}

// Every option is taken; none has an effect.
int setPlatformOption(const char* name, const char*, void*) {
    return name ? 1 : 0;
}

template <int... places>
const LibraryFunctionsVtable* libraryTable(int place, std::integer_sequence<int, places...>) {
    static const LibraryFunctionsVtable tables[] = {{exitEngine<places>,
                                                     createInstance,
                                                     destroyInstance,
                                                     getInfoInt,
                                                     getInfoString,
                                                     sendBackEvent,
                                                     {unused, unused, unused},
                                                     setPlatformOption}...};
    return &tables[place];
}

// ---- threads ---------------------------------------------------------------------------------------------------

void runJob(void* handle, const size_t* dims, int threads, JobCallback callback, void* context) {
    guarded([=] {
        const auto job = module().job(handle, "runJob");
        if (job && dims && callback) job->run(dims, threads, callback, context);
    });
}

void* createJob(void*) {
    return guarded<void*>(nullptr, [] { return module().createJob(); });
}

void destroyJob(void* job) {
    guarded([=] { module().destroyJob(job); });
}

void* createMutex(void*, void*, void*) {
    return guarded<void*>(nullptr, [] { return module().createMutex(); });
}

int mutexOp(void* handle, int operation, int) {
    return guarded(0, [=]() -> int {
        const auto mutex = module().mutex(handle, "mutexOp");
        if (!mutex) return 0;
        if (operation == 0) return mutex->tryLock();
        const bool done = operation > 0 ? mutex->lock() : mutex->unlock();
        if (!done) module().misuse("mutexOp", operation > 0 ? "locked twice by one thread" : "unlocked by a stranger");
        return done;
    });
}

void destroyMutex(void* mutex) {
    guarded([=] { module().destroyMutex(mutex); });
}

const MTFunctionsVtable threadTable = {unused, runJob, createJob, destroyJob, createMutex, mutexOp, destroyMutex};

// ---- bitmaps ---------------------------------------------------------------------------------------------------

void linkBitmap(void* bitmap, ZantBitmapCore* link) {
    guarded([=] {
        if (!link) return;
        *link = ZantBitmapCore{};
        const uint32_t object = objectInScene(handleNumber(HandleTag::Object, bitmap));
        if (const auto scene = module().sceneOfBitmap(bitmap, "linkBitmap")) scene->linkBitmap(object, *link);
    });
}

unsigned char setSharedMemory(void* bitmap, void* memory, int width, int height) {
    return guarded<unsigned char>(0, [=]() -> unsigned char {
        const uint32_t object = objectInScene(handleNumber(HandleTag::Object, bitmap));
        const auto scene = module().sceneOfBitmap(bitmap, "setSharedMemory");
        return scene && scene->shareMemory(object, memory, width, height);
    });
}

const BitmapFunctionsVtable bitmapTable = {linkBitmap, setSharedMemory};

// ---- rays ------------------------------------------------------------------------------------------------------

void* createContext(ZantLibraryInstance* instance) {
    return guarded<void*>(nullptr, [=] { return module().createRays(instance); });
}

void destroyContext(void* context) {
    guarded([=] { module().destroyRays(context); });
}

unsigned char setupBuffers(void* context, const size_t* dims) {
    return guarded<unsigned char>(0, [=]() -> unsigned char {
        const auto rays = module().rays(context, "setupBuffers");
        return rays && dims && rays->setup(dims);
    });
}

void describeBuffer(void* context, void* buffer) {
    guarded([=] {
        const auto rays = module().rays(context, "describeBuffer");
        if (!buffer) return;
        if (rays)
            rays->describe(buffer);
        else
            std::memset(buffer, 0, rayDescriptionSize);
    });
}

void* getBlock(void* context, size_t index, int side) {
    return guarded<void*>(nullptr, [=]() -> void* {
        const auto rays = module().rays(context, "getBlock");
        return rays ? rays->block(index, side) : nullptr;
    });
}

const RaytraceFunctionsVtable rayTable = {createContext, destroyContext, setupBuffers, describeBuffer, getBlock};

// ---- parser ----------------------------------------------------------------------------------------------------

void* findObject(void* parser, const char* name, void* registered, int type, const char*) {
    return guarded<void*>(nullptr, [=]() -> void* {
        const auto scene = module().sceneOfParser(parser, "findObject");
        return scene ? scene->findObject(name, static_cast<uint64_t*>(registered), type) : nullptr;
    });
}

int parse(void* parser, const void* data, const char* source, int mode) {
    return guarded<int>(OutOfMemory, [=]() -> int {
        const auto scene = module().sceneOfParser(parser, "parse");
        return scene ? scene->parse(data, source, mode) : DeadContext;
    });
}

int getValue(void* parser, void* handle, ZantParserExchangeBuffer* record) {
    return guarded(0, [=] {
        const auto scene = module().sceneOfParser(parser, "getValue");
        return scene && record ? scene->getValue(handle, *record) : 0;
    });
}

int setValue(void* parser, void* handle, const ZantParserExchangeBuffer* record) {
    return guarded(0, [=] {
        const auto scene = module().sceneOfParser(parser, "setValue");
        return scene && record ? scene->setValue(handle, *record) : 0;
    });
}

const ParserFunctionsVtable parserTable = {findObject, parse, {unused, unused}, getValue, setValue};

}  // namespace

void enter(Library* host, const Profile& profile) {
    if (!host) return;
    const int place = guarded(-1, [&] { return Module::start(profile).enter(host); });
    if (place < 0) return;
    host->vtables.library = libraryTable(place, std::make_integer_sequence<int, Module::mostHosts>());
    host->vtables.mt = &threadTable;
    host->vtables.bitmap = &bitmapTable;
    host->vtables.raytrace = &rayTable;
    host->vtables.parser = &parserTable;
}

}  // namespace Zant::Engine
