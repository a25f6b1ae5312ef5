#ifndef ZANT_TESTS_VOCABULARY_ROW_H
#define ZANT_TESTS_VOCABULARY_ROW_H

#include <cstddef>
#include <utility>
#include <vector>

#include "client/protos/protos.h"
#include "tests/vocabulary/arguments.h"

/// The vocabulary as expand.py spells it out: one row per typed function, with the parameter types that the function
/// must have, or the row does not compile.
namespace Vocabulary {

// The letters of the catalogue; W is a wide string.
using d = double;
using i = int;
using b = bool;
using u = Zant::Unsigned64;
using s = const char*;
using W = const wchar_t*;
using V = const Zant::Vector&;
using A = const Zant::Axes&;
using C = const Zant::CoordSys&;
using S = const Zant::Symbol&;
using N = Zant::Symbol&;
using B = const Zant::BitmapSymbol&;
using M = const Zant::MeshSymbol&;
using X = const Zant::VertexMapSymbol&;
using Ld = const Zant::VarLenDouble&;
using LV = const Zant::VarLenVector&;
using LC = const Zant::VarLenCoordSys&;
using LS = const Zant::VarLenSymbol&;

/// A typed function, and how to call it with the arguments of a test.
struct Call {
    void (*function)();
    void (*invoke)(void (*function)(), void* protos, const Arguments& arguments);
};

template <typename... Types>
struct Parameters {
    using Function = void(void*, Types...);

    static void invoke(void (*function)(), void* protos, const Arguments& arguments) {
        invokeWith(function, protos, arguments, std::index_sequence_for<Types...>());
    }

private:
    template <size_t... indices>
    static void invokeWith(void (*function)(), void* protos, const Arguments& arguments,
                           std::index_sequence<indices...>) {
        static_cast<void>(arguments);  // unused without parameters
        reinterpret_cast<Function*>(function)(protos, arguments.at<Types>(indices)...);
    }
};

template <typename List>
Call callOf(typename List::Function* function) {
    return {reinterpret_cast<void (*)()>(function), &List::invoke};
}

struct Row {
    const char* group;
    const char* command;
    const char* name;
    const char* sequence;  // "46:fg 6:gradients d d"
    bool wide;
    Call call;
};

extern const std::vector<Row> rows;

}  // namespace Vocabulary

#endif
