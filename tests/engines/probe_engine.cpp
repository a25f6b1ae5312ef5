// The engine of the tests: a real module that records every call in order and answers from the test's script. Its
// faults are chosen when it is built:
//   ENGINE_VERSION=0       reports API version 0, or another one
//   ENGINE_NO_TABLE        leaves the library table null
//   ENGINE_HALF_TABLES     leaves the bitmap, the ray and the parser table null
//   ENGINE_NULL_SLOTS      leaves slots null that the client calls when it is asked to
//   ENGINE_REFUSES         refuses every instance
//   ENGINE_CRASHES         crashes in its entry point
//   ENGINE_RAISES_EVENTS   raises events while an instance is created and destroyed
#include <cstring>
#include <thread>

#include "client/engine/instance.h"
#include "engines/probe.h"

#ifndef ENGINE_VERSION
#define ENGINE_VERSION 17
#endif

struct ZantLibraryInstance {
    Zant::Instance* client;
    int number;
};

namespace {

using Zant::Instance;

Probe& probe() {
    static Probe own;  // for a program without one
    static auto* const ofTest = reinterpret_cast<Probe* (*)()>(procedureOfAnyone("zantTestProbe"));
    return ofTest ? *ofTest() : own;
}

Zant::Library* client = nullptr;

std::string numberOf(const ZantLibraryInstance* instance) {
    return instance ? std::to_string(instance->number) : "null";
}

std::string quoted(const char* text) {
    return text ? '"' + std::string(text) + '"' : "null";
}

[[maybe_unused]] void raise(Instance* instance, _ZantEventKind kind, const char* text) {
    static void* stream = nullptr;
    ZantEventData event{};
    event.kind = kind;
    event.instance = instance;
    event.handle = stream;
    event.text = text;
    instance->eventFunction(&event);
    stream = event.handle;
}

// ---- Library -----------------------------------------------------------------------------------------------------

void exitEngine() {
    const Zant::Vtables& t = client->vtables;
    probe().exits.push_back({t.library != nullptr, t.mt || t.bitmap || t.raytrace || t.parser,
                             client->moduleHandle != nullptr,
                             client->instanceMutex.vt || client->instanceMutex.handle});
    probe().note("exit");
}

int nextNumber() {
    const std::lock_guard<std::mutex> lock(probe().guard);
    return ++probe().instances;
}

void* createInstance(Instance* instance) {
#ifdef ENGINE_REFUSES
    static_cast<void>(instance);
    static_cast<void>(nextNumber);
    probe().note("refuse");
    return nullptr;
#else
    auto* const created = new ZantLibraryInstance{instance, nextNumber()};
    instance->engineInstance = created;
    instance->parserContext = &created->number;
    probe().note("createInstance " + numberOf(created));
#ifdef ENGINE_RAISES_EVENTS
    raise(instance, EventCreateTextStream, nullptr);
    raise(instance, EventTextLine, "created");
#endif
    // Answers in the upper half of the word only: the answer is a pointer and must be looked at as one.
    return reinterpret_cast<void*>(uintptr_t{1} << 32);
#endif
}

void destroyInstance(ZantLibraryInstance* instance) {
    probe().note("destroyInstance " + numberOf(instance));
#ifdef ENGINE_RAISES_EVENTS
    raise(instance->client, EventTextLine, "destroyed");
    raise(instance->client, EventDestroyTextStream, nullptr);
#endif
    delete instance;
}

int getInfoInt(int id) {
    if (id != 0) return id;
    ++probe().versionAsked;
    return probe().version < 0 ? ENGINE_VERSION : probe().version;
}

const char* getInfoString(int id) {
    return id >= 100 && id <= 102 ? probe().eventStrings[id - 100] : "information";
}

int sendBackEvent(ZantLibraryInstance* instance, ZantEventData* event) {
    probe().note("sendBackEvent " + std::to_string(event->kind));
    probe().sentBack.push_back(*event);
    probe().sentBackOn.push_back(instance->number);
    if (probe().onSendBack) probe().onSendBack(*event);
    return 11;
}

int setPlatformOption(const char* name, const char* value, void* data) {
    probe().note("setPlatformOption " + quoted(name) + ' ' + quoted(value) + (data ? " data" : ""));
    return 5;
}

[[maybe_unused]] const Zant::LibraryFunctionsVtable libraryTable = {
    exitEngine, createInstance, destroyInstance, getInfoInt, getInfoString, sendBackEvent, {}, setPlatformOption};

// ---- Threads -----------------------------------------------------------------------------------------------------

void runJob(void*, const size_t* dims, int threads, Zant::JobCallback callback, void* context) {
    probe().note("runJob ", dims[0], ' ', dims[1], ' ', dims[2], " on ", threads);
    const size_t items = dims[0] * dims[1] * dims[2];
    const auto work = [=](int thread) {
        for (size_t item = static_cast<size_t>(thread); item < items; item += static_cast<size_t>(threads)) {
            const size_t index[3] = {item % dims[0], item / dims[0] % dims[1], item / dims[0] / dims[1]};
            callback(index, thread, context);
        }
    };
    std::vector<std::thread> workers;
    for (int thread = 0; thread < threads; ++thread)
        workers.emplace_back(work, thread);
    for (std::thread& worker : workers)
        worker.join();
}

void* createJob(void*) {
    probe().note("createJob");
    return probe().giveJobs ? client : nullptr;
}

void destroyJob(void*) {
    probe().note("destroyJob");
}

void* createMutex(void* a, void* b, void* c) {
    probe().note(a || b || c ? "createMutex with arguments" : "createMutex");
    return new std::mutex;
}

int mutexOp(void* mutex, int operation, int zero) {
    auto& locked = *static_cast<std::mutex*>(mutex);
    if (zero) probe().note("mutexOp with an argument");
    if (operation == 0) return static_cast<int>(locked.try_lock()) + probe().mutexAnswer;
    if (operation > 0) {
        locked.lock();
        return 0;
    }
    locked.unlock();
    if (const auto hook = std::exchange(probe().onUnlock, nullptr)) hook();
    return 0;
}

void destroyMutex(void* mutex) {
    probe().note("destroyMutex");
    delete static_cast<std::mutex*>(mutex);
}

[[maybe_unused]] const Zant::MTFunctionsVtable mtTable = {nullptr,     runJob,  createJob,   destroyJob,
                                                          createMutex, mutexOp, destroyMutex};

// ---- Bitmaps and rays --------------------------------------------------------------------------------------------

void linkBitmap(void*, ZantBitmapCore*) {
    probe().note("linkBitmap");
}

unsigned char setSharedMemory(void*, void*, int, int) {
    return 0;
}

[[maybe_unused]] const Zant::BitmapFunctionsVtable bitmapTable = {linkBitmap, setSharedMemory};

// The context of rays is a number: 0 before the first description of a pair, 1 before the second.
void* createContext(ZantLibraryInstance* instance) {
    probe().note("createContext " + numberOf(instance));
    return new int(0);
}

void destroyContext(void* context) {
    probe().note("destroyContext");
    delete static_cast<int*>(context);
}

unsigned char setupBuffers(void*, const size_t* dims) {
    probe().note("setupBuffers ", dims[0], ' ', dims[1], ' ', dims[2]);
    return probe().acceptRays ? 0x80 : 0;
}

void describeBuffer(void* context, void* buffer) {
    int& side = *static_cast<int*>(context);
    const uint64_t* counts = side == 0 ? probe().inputCounts : probe().outputCounts;
    auto* const description = static_cast<unsigned char*>(buffer);
    std::memset(description, 0xEE, 24);
    std::memcpy(description + 24, counts, 24);
    std::memset(description + 48, 0xEE, 24);
    side = 1 - side;
}

void* getBlock(void*, size_t index, int side) {
    probe().note("getBlock ", index, ' ', side);
    return reinterpret_cast<void*>((index + 1) * 16 + static_cast<size_t>(side));
}

[[maybe_unused]] const Zant::RaytraceFunctionsVtable raytraceTable = {createContext, destroyContext, setupBuffers,
                                                                      describeBuffer, getBlock};

// ---- Parser ------------------------------------------------------------------------------------------------------

int contextOf(const void* parser) {
    return *static_cast<const int*>(parser);
}

void* findObject(void* parser, const char* name, void* record, int type, const char* argument) {
    probe().note("findObject ", contextOf(parser), ' ', quoted(name), ' ', type, ' ', quoted(argument));
    return probe().onFindObject ? probe().onFindObject(name, record) : nullptr;
}

int parse(void* parser, const void* data, const char* source, int mode) {
    const std::string command = mode == Zant::ParseBinary ? "binary" : quoted(static_cast<const char*>(data));
    probe().note("parse ", contextOf(parser), ' ', command, ' ', quoted(source), ' ', mode);
    return probe().onParse ? probe().onParse(command) : 0;
}

int getValue(void* parser, void* handle, ZantParserExchangeBuffer* record) {
    probe().note("getValue ", contextOf(parser), ' ', record->type);
    return probe().onGetValue ? probe().onGetValue(handle, *record) : 0;
}

int setValue(void* parser, void* handle, const ZantParserExchangeBuffer* record) {
    probe().note("setValue ", contextOf(parser), ' ', record->type);
    return probe().onSetValue ? probe().onSetValue(handle, *record) : 0;
}

[[maybe_unused]] const Zant::ParserFunctionsVtable parserTable = {findObject, parse, {}, getValue, setValue};

}  // namespace

extern "C" ZANT_EXPORTED void zant3_init(Zant::Library* library) {
    client = library;
    probe().note("init " + std::to_string(library->hostVersion));
#ifdef ENGINE_CRASHES
    __builtin_trap();
#endif
#ifndef ENGINE_NO_TABLE
    library->vtables.library = &libraryTable;
    library->vtables.mt = &mtTable;
#ifndef ENGINE_HALF_TABLES
    library->vtables.bitmap = &bitmapTable;
    library->vtables.raytrace = &raytraceTable;
    library->vtables.parser = &parserTable;
#endif
#endif
#ifdef ENGINE_NULL_SLOTS
    static Zant::LibraryFunctionsVtable holedLibrary = libraryTable;
    static Zant::ParserFunctionsVtable holedParser = parserTable;
    holedLibrary.exit = nullptr;
    holedParser.getValue = nullptr;
    library->vtables.library = &holedLibrary;
    library->vtables.parser = &holedParser;
#endif
}
