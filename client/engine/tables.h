#ifndef ZANT_CLIENT_ENGINE_TABLES_H
#define ZANT_CLIENT_ENGINE_TABLES_H

#include <cstddef>

#include "client/records/zant_records.h"
#include "own/cxx17.h"

namespace Zant {

/// The five tables of functions through which the engine is reached.
///
/// The engine owns them and writes their addresses into the Library record. Slots are numbered by their place from 0;
/// the client calls the named slots only, the others keep their place.
///
/// Threads: the tables do not change while the engine is loaded. Which slots may be called at the same time is the
/// engine's contract; the classes that call them say what they rely on.

using UnusedSlot = void (*)();

struct LibraryFunctionsVtable {
    void (*exit)();                                                // 0
    void* (*createInstance)(Instance* instance);                   // 1: fills engineInstance and parserContext
    void (*destroyInstance)(ZantLibraryInstance* engineInstance);  // 2
    int (*getInfoInt)(int id);                                     // 3: id 0 is the API version, 0 = not usable
    const char* (*getInfoString)(int id);                          // 4: ids 100 to 102 are the event strings
    int (*sendBackEvent)(ZantLibraryInstance*, ZantEventData*);    // 5
    UnusedSlot unused[3];                                          // 6 to 8
    int (*setPlatformOption)(const char* name, const char* value, void* data);  // 9
};

/// One work item: three indices and the number of the thread that runs it.
using JobCallback = void (*)(const size_t* index, int thread, void* context);

struct MTFunctionsVtable {
    UnusedSlot unused;                                                                                // 0
    void (*runJob)(void* job, const size_t* dims, int threads, JobCallback callback, void* context);  // 1
    void* (*createJob)(void* owner);                                                                  // 2
    void (*destroyJob)(void* job);                                                                    // 3
    void* (*createMutex)(void*, void*, void*);             // 4: three zero arguments
    int (*mutexOp)(void* mutex, int operation, int zero);  // 5: 1 lock, -1 unlock, 0 try (low byte: taken)
    void (*destroyMutex)(void* mutex);                     // 6
};

struct BitmapFunctionsVtable {
    void (*linkBitmap)(void* bitmap, ZantBitmapCore* link);                               // 0
    unsigned char (*setSharedMemory)(void* bitmap, void* memory, int width, int height);  // 1: non-zero on success
};

struct RaytraceFunctionsVtable {
    void* (*createContext)(ZantLibraryInstance* engineInstance);       // 0
    void (*destroyContext)(void* context);                             // 1
    unsigned char (*setupBuffers)(void* context, const size_t* dims);  // 2: non-zero on success
    void (*describeBuffer)(void* context, void* buffer);               // 3: writes an 80-byte description
    void* (*getBlock)(void* context, size_t index, int side);          // 4: side 0 input, 1 output
};

/// The first argument is always the instance's parser context.
struct ParserFunctionsVtable {
    void* (*findObject)(void* parser, const char* name, void* registered, int type, const char* argument);  // 0
    int (*parse)(void* parser, const void* data, const char* source, int mode);           // 1: returns 0 for success
    UnusedSlot unused[2];                                                                 // 2, 3
    int (*getValue)(void* parser, void* handle, ZantParserExchangeBuffer* record);        // 4
    int (*setValue)(void* parser, void* handle, const ZantParserExchangeBuffer* record);  // 5
};

/// The third argument of ParserFunctionsVtable::parse.
enum ParseMode { ParseText = 0, ParseQuickText = 1, ParseBinary = 2 };

/// The table pointers, in the order in which the engine writes them. Null tables mean that no engine is loaded.
struct Vtables {
    const LibraryFunctionsVtable* library = nullptr;
    const MTFunctionsVtable* mt = nullptr;
    const BitmapFunctionsVtable* bitmap = nullptr;
    const RaytraceFunctionsVtable* raytrace = nullptr;
    const ParserFunctionsVtable* parser = nullptr;

    /// Drops every table, the library table last, and tells the engine to exit on the way.
    void exit();
};

// Engines were built with these places.
#define ZANT_SLOT(table, slot, number) \
    static_assert(offsetof(table, slot) == (number) * sizeof(void*), #table "::" #slot " keeps its place")
ZANT_SLOT(LibraryFunctionsVtable, exit, 0);
ZANT_SLOT(LibraryFunctionsVtable, createInstance, 1);
ZANT_SLOT(LibraryFunctionsVtable, destroyInstance, 2);
ZANT_SLOT(LibraryFunctionsVtable, getInfoInt, 3);
ZANT_SLOT(LibraryFunctionsVtable, getInfoString, 4);
ZANT_SLOT(LibraryFunctionsVtable, sendBackEvent, 5);
ZANT_SLOT(LibraryFunctionsVtable, setPlatformOption, 9);
ZANT_SLOT(MTFunctionsVtable, runJob, 1);
ZANT_SLOT(MTFunctionsVtable, createJob, 2);
ZANT_SLOT(MTFunctionsVtable, destroyJob, 3);
ZANT_SLOT(MTFunctionsVtable, createMutex, 4);
ZANT_SLOT(MTFunctionsVtable, mutexOp, 5);
ZANT_SLOT(MTFunctionsVtable, destroyMutex, 6);
ZANT_SLOT(BitmapFunctionsVtable, linkBitmap, 0);
ZANT_SLOT(BitmapFunctionsVtable, setSharedMemory, 1);
ZANT_SLOT(RaytraceFunctionsVtable, createContext, 0);
ZANT_SLOT(RaytraceFunctionsVtable, destroyContext, 1);
ZANT_SLOT(RaytraceFunctionsVtable, setupBuffers, 2);
ZANT_SLOT(RaytraceFunctionsVtable, describeBuffer, 3);
ZANT_SLOT(RaytraceFunctionsVtable, getBlock, 4);
ZANT_SLOT(ParserFunctionsVtable, findObject, 0);
ZANT_SLOT(ParserFunctionsVtable, parse, 1);
ZANT_SLOT(ParserFunctionsVtable, getValue, 4);
ZANT_SLOT(ParserFunctionsVtable, setValue, 5);
ZANT_SLOT(Vtables, library, 0);
ZANT_SLOT(Vtables, mt, 1);
ZANT_SLOT(Vtables, bitmap, 2);
ZANT_SLOT(Vtables, raytrace, 3);
ZANT_SLOT(Vtables, parser, 4);
#undef ZANT_SLOT

}  // namespace Zant

#endif
