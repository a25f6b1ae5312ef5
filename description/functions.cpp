#include <type_traits>

#include "description/description.h"

namespace Zant::Description {
namespace {

/// A function's type, waiting for the names of its arguments: `TakesNames<F>{"f"}("first", "second")`.
template <class F>
struct TakesNames {
    const char* name;

    template <class... Names>
    Function operator()(Names... names) const {
        static_assert(sizeof...(Names) == Signature<F>::count, "one name for each argument");
        Function function{name, Signature<F>::result(), {}};
        const std::vector<Type> types = Signature<F>::arguments();
        for (const char* argument : std::vector<const char*>{names...}) {
            function.arguments.push_back({argument, types[function.arguments.size()]});
        }
        return function;
    }
};

template <class T>
Table table(std::vector<Slot> slots) {
    return {NameOf<T>::c, sizeof(T) / sizeof(void*), std::move(slots)};
}

}  // namespace

#define FUNCTION(name)           \
    TakesNames<decltype(name)> { \
#name                    \
    }

std::vector<Function> functions() {
    return {
        FUNCTION(ZantGetInfoString)("id"),
        FUNCTION(ZantGetInfoInt)("id"),
        FUNCTION(ZantGetHostVersion)(),
        FUNCTION(ZantGetLibApiVersion)(),
        FUNCTION(ZantLibraryLoad)("directory"),
        FUNCTION(ZantLibraryUnload)(),
        FUNCTION(ZantLibraryCreateInstance)(),
        FUNCTION(ZantLibraryCreateInstanceWithEventHandler)("function", "user_data"),
        FUNCTION(ZantLibraryReleaseInstance)("instance"),
        FUNCTION(ZantInstanceParse)("instance", "text", "source_name"),
        FUNCTION(ZantInstanceSendBackEvent)("event"),
        FUNCTION(ZantInstanceGetObjectByName)("instance", "name", "handle_type"),
        FUNCTION(ZantInstanceGetSymbolValue)("instance", "handle", "value"),
        FUNCTION(ZantInstanceGetStringSymbolValue)("instance", "handle"),
        FUNCTION(ZantCreateDirectProto)("instance"),
        FUNCTION(ZantReleaseProto)("prototyper"),
    };
}

#define SLOT(table, name, ...)                                                          \
    Slot {                                                                              \
        offsetof(table, name) / sizeof(void*),                                          \
            TakesNames<std::remove_pointer_t<decltype(table::name)>>{#name} __VA_ARGS__ \
    }

std::vector<Table> engineTables() {
    return {
        table<LibraryFunctionsVtable>({
            SLOT(LibraryFunctionsVtable, exit, ()),
            SLOT(LibraryFunctionsVtable, createInstance, ("instance")),
            SLOT(LibraryFunctionsVtable, destroyInstance, ("engineInstance")),
            SLOT(LibraryFunctionsVtable, getInfoInt, ("id")),
            SLOT(LibraryFunctionsVtable, getInfoString, ("id")),
            SLOT(LibraryFunctionsVtable, sendBackEvent, ("engineInstance", "event")),
            SLOT(LibraryFunctionsVtable, setPlatformOption, ("name", "value", "data")),
        }),
        table<MTFunctionsVtable>({
            SLOT(MTFunctionsVtable, runJob, ("job", "dims", "threads", "callback", "context")),
            SLOT(MTFunctionsVtable, createJob, ("owner")),
            SLOT(MTFunctionsVtable, destroyJob, ("job")),
            SLOT(MTFunctionsVtable, createMutex, ("zero1", "zero2", "zero3")),
            SLOT(MTFunctionsVtable, mutexOp, ("mutex", "operation", "zero")),
            SLOT(MTFunctionsVtable, destroyMutex, ("mutex")),
        }),
        table<BitmapFunctionsVtable>({
            SLOT(BitmapFunctionsVtable, linkBitmap, ("bitmap", "link")),
            SLOT(BitmapFunctionsVtable, setSharedMemory, ("bitmap", "memory", "width", "height")),
        }),
        table<RaytraceFunctionsVtable>({
            SLOT(RaytraceFunctionsVtable, createContext, ("engineInstance")),
            SLOT(RaytraceFunctionsVtable, destroyContext, ("context")),
            SLOT(RaytraceFunctionsVtable, setupBuffers, ("context", "dims")),
            SLOT(RaytraceFunctionsVtable, describeBuffer, ("context", "buffer")),
            SLOT(RaytraceFunctionsVtable, getBlock, ("context", "index", "side")),
        }),
        table<ParserFunctionsVtable>({
            SLOT(ParserFunctionsVtable, findObject, ("parser", "name", "registered", "type", "argument")),
            SLOT(ParserFunctionsVtable, parse, ("parser", "data", "source", "mode")),
            SLOT(ParserFunctionsVtable, getValue, ("parser", "handle", "record")),
            SLOT(ParserFunctionsVtable, setValue, ("parser", "handle", "record")),
        }),
    };
}

}  // namespace Zant::Description
