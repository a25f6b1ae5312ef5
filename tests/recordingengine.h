#ifndef ZANT_TESTS_RECORDINGENGINE_H
#define ZANT_TESTS_RECORDINGENGINE_H

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "client/engine/instance.h"
#include "client/engine/library.h"

/// An engine inside the test that keeps what it is sent and answers what it is told to.
namespace RecordingEngine {

/// One call of the parser.
struct Parsed {
    std::string data;  ///< the text, or the bytes of the block
    std::string source;
    bool hasSource;
    int mode;
};

struct State {
    bool keeping = true;  ///< false: only count
    size_t count = 0;
    std::vector<Parsed> parsed;
    int parseResult = 0;
    std::function<void(const char*, size_t)> onParse;  ///< called once, with what is being parsed
    int infoInt1 = 0;
    std::string lookups;  ///< "name/type/argument" of each lookup, each followed by a space
    void* object = nullptr;
    uint64_t registered = 0;
    std::function<int(void*, ZantParserExchangeBuffer*)> getValue;
    std::function<int(void*, const ZantParserExchangeBuffer*)> setValue;
    std::function<void(void*, ZantBitmapCore*)> linkBitmap;
    std::function<unsigned char(void*, void*, int, int)> setSharedMemory;
};

inline State state;

inline int parse(void* parser, const void* data, const char* source, int mode) {
    EXPECT_EQ(parser, &state);
    ++state.count;
    if (!state.keeping) return state.parseResult;
    const char* const bytes = static_cast<const char*>(data);
    uint64_t length = 0;
    if (mode == Zant::ParseBinary) std::memcpy(&length, bytes, sizeof length);
    if (mode != Zant::ParseBinary) length = std::strlen(bytes);
    state.parsed.push_back({std::string(bytes, length), source ? source : "", source != nullptr, mode});
    const int result = state.parseResult;
    if (const auto hook = std::exchange(state.onParse, nullptr)) hook(bytes, length);
    return result;
}

inline void* findObject(void* parser, const char* name, void* registered, int type, const char* argument) {
    EXPECT_EQ(parser, &state);
    state.lookups += std::string(name) + "/" + std::to_string(type) + "/" + (argument ? argument : "-") + " ";
    if (state.object) std::memcpy(registered, &state.registered, sizeof state.registered);
    return state.object;
}

inline void init(Zant::Library* library) {
    static Zant::LibraryFunctionsVtable libraryTable{};
    libraryTable.exit = [] {};
    libraryTable.createInstance = [](Zant::Instance* instance) -> void* {
        instance->parserContext = &state;
        return instance;
    };
    libraryTable.destroyInstance = [](ZantLibraryInstance*) {};
    libraryTable.getInfoInt = [](int id) { return id == 1 ? state.infoInt1 : 7; };
    static Zant::ParserFunctionsVtable parserTable{};
    parserTable.findObject = findObject;
    parserTable.parse = parse;
    parserTable.getValue = [](void*, void* handle, ZantParserExchangeBuffer* record) {
        return state.getValue(handle, record);
    };
    parserTable.setValue = [](void*, void* handle, const ZantParserExchangeBuffer* record) {
        return state.setValue(handle, record);
    };
    static const Zant::BitmapFunctionsVtable bitmapTable{
        [](void* handle, ZantBitmapCore* link) { state.linkBitmap(handle, link); },
        [](void* handle, void* memory, int width, int height) {
            return state.setSharedMemory(handle, memory, width, height);
        }};
    library->vtables.library = &libraryTable;
    library->vtables.parser = &parserTable;
    library->vtables.bitmap = &bitmapTable;
}

/// A library with one instance; the engine starts each test without any memory.
class Test : public testing::Test {
protected:
    Test() { state = State(); }

    std::vector<std::string> texts() const {
        std::vector<std::string> all;
        for (const Parsed& parsed : state.parsed)
            all.push_back(parsed.data);
        return all;
    }

    Zant::Library library{init, ""};
    Zant::Instance* instance = library.createInstanceWithListner(nullptr);
};

using Texts = std::vector<std::string>;

}  // namespace RecordingEngine

#endif
