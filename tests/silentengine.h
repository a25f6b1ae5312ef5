#ifndef ZANT_TESTS_SILENTENGINE_H
#define ZANT_TESTS_SILENTENGINE_H

#include <cstddef>

#include "client/engine/library.h"

/// An engine without a file, whose parser looks at the data and does nothing: for what a command costs on our side.
namespace SilentEngine {

inline size_t parsed = 0;
inline volatile char seen = 0;

/// The entry point.
inline void init(Zant::Library* library) {
    static Zant::LibraryFunctionsVtable libraryTable{};
    libraryTable.exit = [] {};
    libraryTable.createInstance = [](Zant::Instance* instance) -> void* { return instance; };
    libraryTable.destroyInstance = [](ZantLibraryInstance*) {};
    libraryTable.getInfoInt = [](int) { return 1; };
    static Zant::ParserFunctionsVtable parserTable{};
    parserTable.parse = [](void*, const void* data, const char*, int) {
        seen = *static_cast<const char*>(data);
        ++parsed;
        return 0;
    };
    library->vtables = {&libraryTable, nullptr, nullptr, nullptr, &parserTable};
}

}  // namespace SilentEngine

#endif
