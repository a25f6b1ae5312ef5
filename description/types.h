#ifndef ZANT_DESCRIPTION_TYPES_H
#define ZANT_DESCRIPTION_TYPES_H

#include <cstddef>
#include <string>
#include <type_traits>
#include <vector>

#include "client/capi/zant_c.h"
#include "client/engine/instance.h"

namespace Zant::Description {

/// A type as a reader in another language needs it, and as C spells it.
struct Type {
    std::string
        kind;       ///< "void", "int32", "uint8" and their like, "double", "text", "pointer", "function", or a record
    std::string c;  ///< such as "const ZantEventData*" or "double[4]"
    size_t count = 0;  ///< elements of an array, otherwise 0
};

/// The name of a record or of an opaque type; a type without one does not compile.
template <class T>
struct NameOf;

#define ZANT_NAME(type)                         \
    template <>                                 \
    struct NameOf<type> {                       \
        static constexpr const char* c = #type; \
    }

ZANT_NAME(ZantVectorCore);
ZANT_NAME(ZantAxesCore);
ZANT_NAME(ZantCoordSysCore);
ZANT_NAME(ZantTextStorage);
ZANT_NAME(ZantExchangeValue);
ZANT_NAME(ZantParserExchangeBuffer);
ZANT_NAME(ZantBitmapCore);
ZANT_NAME(ZantVertexMapRecord);
ZANT_NAME(ZantEventData);
ZANT_NAME(_ZantEventTextBufferData);
ZANT_NAME(_ZantEventMousePosition);
ZANT_NAME(_ZantEventKey);
ZANT_NAME(ZantInstance);
ZANT_NAME(ZantDirectPrototyper);
ZANT_NAME(ZantLibraryInstance);
ZANT_NAME(Library);
ZANT_NAME(Vtables);
ZANT_NAME(Mutex);
ZANT_NAME(EventListener);
ZANT_NAME(LibraryFunctionsVtable);
ZANT_NAME(MTFunctionsVtable);
ZANT_NAME(BitmapFunctionsVtable);
ZANT_NAME(RaytraceFunctionsVtable);
ZANT_NAME(ParserFunctionsVtable);

template <class T>
Type describeType();

/// Takes a function's type apart.
template <class Function>
struct Signature;

template <class Result, class... Arguments>
struct Signature<Result(Arguments...)> {
    static constexpr size_t count = sizeof...(Arguments);
    static Type result() { return describeType<Result>(); }
    static std::vector<Type> arguments() { return {describeType<Arguments>()...}; }
    static std::string pointerInC() {
        std::string list;
        for (const Type& argument : arguments())
            list += (list.empty() ? "" : ", ") + argument.c;
        return result().c + " (*)(" + (list.empty() ? "void" : list) + ")";
    }
};

template <class T>
Type describeInteger() {
    const std::string kind = (std::is_signed_v<T> ? "int" : "uint") + std::to_string(8 * sizeof(T));
    return {kind, kind + "_t"};
}

template <class T>
Type describePointer() {
    using Target = std::remove_pointer_t<T>;
    if constexpr (std::is_function_v<Target>) {
        return {"function", Signature<Target>::pointerInC()};
    } else {
        return {std::is_same_v<T, const char*> ? "text" : "pointer", describeType<Target>().c + "*"};
    }
}

/// The description of a C type, derived from the type itself.
template <class T>
Type describeType() {
    if constexpr (std::is_array_v<T>) {
        const Type element = describeType<std::remove_extent_t<T>>();
        return {element.kind, element.c + "[" + std::to_string(std::extent_v<T>) + "]", std::extent_v<T>};
    } else if constexpr (std::is_const_v<T>) {
        const Type plain = describeType<std::remove_const_t<T>>();
        return {plain.kind, "const " + plain.c};
    } else if constexpr (std::is_pointer_v<T>) {
        return describePointer<T>();
    } else if constexpr (std::is_void_v<T>) {
        return {"void", "void"};
    } else if constexpr (std::is_same_v<T, char>) {
        return {"char", "char"};
    } else if constexpr (std::is_same_v<T, double>) {
        return {"double", "double"};
    } else if constexpr (std::is_integral_v<T>) {
        return describeInteger<T>();
    } else {
        return {NameOf<T>::c, NameOf<T>::c};
    }
}

}  // namespace Zant::Description

#endif
