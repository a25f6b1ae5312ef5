// The life of symbols: names, registration, direct values, text, deletion; and the commands of bitmaps, vertex maps and
// meshes with their links.
#include "client/symbols/symbol.h"

#include <algorithm>
#include <stdexcept>

#include "client/symbols/bitmapsymbol.h"
#include "client/symbols/mesh.h"
#include "client/symbols/valuesymbols.h"
#include "client/symbols/vertexmap.h"
#include "tests/commandstest.h"

namespace {

class Symbols : public RecordingEngine::Test {
protected:
    Symbols() {
        state.object = &object;
        state.registered = 1;
        state.linkBitmap = [this](void* handle, ZantBitmapCore* link) {
            EXPECT_EQ(handle, &object);
            ++links;
            *link = pixels;
        };
    }

    CommandTextBuffer buffer{instance};
    Offline offline;
    int object = 0;
    Bitmap pixels;
    int links = 0;
};

TEST_F(Symbols, Names) {
    const std::string name(200, 'n');
    Symbol symbol(offline, name.c_str());
    EXPECT_EQ(symbol.name, name.substr(0, 127));
    symbol.setName("short");
    EXPECT_STREQ(symbol.name, "short");
    symbol.setName(name.substr(0, 127).c_str());
    EXPECT_EQ(symbol.name, name.substr(0, 127));
    symbol.setName("the tail of its own name");
    symbol.setName(symbol.name + 4);
    EXPECT_STREQ(symbol.name, "tail of its own name");
    symbol.generateAutoname();
    char expected[18];
    CommandBuffer::encode(reinterpret_cast<size_t>(&symbol), expected, 16);
    EXPECT_STREQ(symbol.name, expected);
    EXPECT_TRUE(offline.commands.empty());
    EXPECT_EQ(symbol.handle, 0u);
}

TEST_F(Symbols, RegistrationAndDeletion) {
    {
        Symbol symbol(buffer, "sky");
        EXPECT_FALSE(symbol.isRegistered());
        symbol.registerSymbol();
        EXPECT_TRUE(symbol.isRegistered());
        EXPECT_EQ(symbol.handle, reinterpret_cast<uint64_t>(&object));
        EXPECT_TRUE(state.parsed.empty());
        symbol.registerSymbol(HandleBitmap, "more");
        EXPECT_EQ(state.lookups, "sky/9/- sky/5/more ");

        Symbol unregistered(buffer, "cloud");
        // Known to the engine by its word, whatever its handle; and the other way round.
        Symbol wordOnly(buffer, "word");
        wordOnly.registered = 5;
        Symbol handleOnly(buffer, "handle");
        handleOnly.handle = 5;
    }
    EXPECT_EQ(texts(), (Texts{"delete word;", "delete sky;"}));
    {
        Symbol symbol(offline, "sky");
        EXPECT_TRUE(symbol.isRegistered());
        symbol.registerSymbol();
        EXPECT_EQ(symbol.handle, 0u);
        symbol.freeSymbol();
    }
    EXPECT_EQ(offline.commands, (Texts{"delete sky;", "delete sky;"}));
    Symbol missing(buffer, "missing");
    missing.handle = 8;
    state.object = nullptr;
    missing.registerSymbol();
    EXPECT_EQ(missing.handle, 0u);
}

TEST_F(Symbols, BuffersWithoutInstanceSendNothing) {
    CommandTextBuffer text(nullptr);
    { Symbol symbol(text, "sky"); }
    EXPECT_STREQ(text.getTerminatedBuffer(), "delete sky;");
    CommandBinaryBuffer binary(nullptr);
    {
        VertexMapSymbol map(binary, "map");
        map.registerSymbol(3, 0, 1);
        EXPECT_EQ(map.direct(), nullptr);
        BitmapSymbol bitmap(binary, 1, 1, PixelFloatGray, "bitmap");
        EXPECT_EQ(binary.getParser(), nullptr);
    }
    EXPECT_TRUE(state.parsed.empty());
}

TEST_F(Symbols, TheDestructorLetsNothingOut) {
    struct Throwing : CommandOfflineBuffer {
        void parseOffline(const char*) override { throw std::runtime_error("no room"); }
    } throwing;
    EXPECT_NO_THROW(Symbol(throwing, "sky"));
}

template <class Kind, class... Arguments>
void registerAndForget(CommandBuffer& buffer, Arguments... arguments) {
    Kind symbol(buffer, "s");
    symbol.registerSymbol(arguments...);
    symbol.registered = 0;
}

TEST_F(Symbols, DefiningCommandsComeBeforeTheLookup) {
    registerAndForget<DoubleSymbol>(buffer);
    registerAndForget<StringSymbol>(buffer);
    registerAndForget<VectorSymbol>(buffer);
    registerAndForget<AxesSymbol>(buffer);
    registerAndForget<CoordSysSymbol>(buffer);
    registerAndForget<MeshSymbol>(buffer);
    EXPECT_EQ(texts(), (Texts{"var s;", "string s;", "vector s;", "axes s;", "mesh s;"}));
    EXPECT_EQ(state.lookups, "s/8/- s/8/- s/8/- s/8/- s/9/- s/6/- ");
}

/// An engine that keeps the value that is set, and gives it back.
class DirectValues : public Symbols {
protected:
    DirectValues() {
        state.setValue = [this](void* handle, const ZantParserExchangeBuffer* record) {
            EXPECT_EQ(handle, &object);
            held = *record;
            return 41;
        };
        state.getValue = [this](void*, ZantParserExchangeBuffer* record) {
            EXPECT_EQ(record->type, held.type) << "the expected code goes in";
            *record = held;
            return 42;
        };
    }

    /// Sets a value through a symbol that is linked to the object, and reads it back.
    template <class Kind, class Value>
    void setAndGet(const Value& set, Value& back, int code) {
        Kind symbol(buffer, "s");
        symbol.handle = reinterpret_cast<uint64_t>(&object);
        EXPECT_EQ(symbol.directSet(set), 41);
        EXPECT_EQ(held.type, code);
        EXPECT_TRUE(symbol.directGet(back));
        EXPECT_EQ(symbol.getValue(held), 42);
        EXPECT_EQ(buffer.errorCode, 0);
    }

    ZantParserExchangeBuffer held{};
};

TEST_F(DirectValues, GoBothWays) {
    Double number(1.0);
    setAndGet<DoubleSymbol>(Double(2.5), number, 2);
    EXPECT_EQ(number.value, 2.5);

    String string;
    DynamicBuffer unused;
    setAndGet<StringSymbol>(String("text"), string, 1);
    EXPECT_STREQ(string.value, "text");
    EXPECT_STREQ(StringSymbol(buffer, "s").toString(unused), "text");

    Vector vector(7, 8, 9, 10);
    setAndGet<VectorSymbol>(Vector(1, 2), vector, 3);
    EXPECT_EQ(vector.count, 2);
    const double components[] = {1, 2, 9, 10};
    EXPECT_TRUE(std::equal(components, components + 4, vector.values)) << "only the components in use";

    Axes axes;
    axes.m[6] = 5;
    setAndGet<AxesSymbol>(Axes(AxesHpb(1, 2, 3, 4, 5, 6)), axes, 4);
    EXPECT_EQ(axes.rows, 2);
    const double values[] = {1, 2, 3, 4, 5, 6, 5};
    EXPECT_TRUE(std::equal(values, values + 7, axes.m)) << "only the rows in use";

    CoordSys system;
    setAndGet<CoordSysSymbol>(CoordSys(Vector(1, 2, 3), AxesHpb(4, 5, 6)), system, 3);
    EXPECT_EQ(system.position[2], 3);
    EXPECT_EQ(system.axes.rows, 2);
    EXPECT_EQ(system.axes.m[2], 6);
}

/// Every kind reads, and has to fail.
void expectReadsFail(CommandBuffer& buffer) {
    const auto expectError = [&](bool delivered) {
        EXPECT_FALSE(delivered);
        EXPECT_EQ(buffer.errorCode, 2);
        buffer.error(0);
    };
    Double number(1.0);
    expectError(DoubleSymbol(buffer, "n").directGet(number));
    EXPECT_EQ(number.value, 0.0);
    String string("x");
    expectError(StringSymbol(buffer, "s").directGet(string));
    EXPECT_EQ(string.value, nullptr);
    Vector vector(1, 2, 3);
    expectError(VectorSymbol(buffer, "v").directGet(vector));
    EXPECT_EQ(vector.count, 0);
    Axes axes;
    expectError(AxesSymbol(buffer, "a").directGet(axes));
    EXPECT_EQ(axes.rows, -1);
    EXPECT_FALSE(Axes::isEye(axes));
    CoordSys system;
    expectError(CoordSysSymbol(buffer, "c").directGet(system));
    EXPECT_EQ(system.axes.rows, -1);
}

TEST_F(Symbols, AValueOfAnotherKindIsAnError) {
    state.getValue = [](void*, ZantParserExchangeBuffer* record) {
        record->type = 9;
        return 0;
    };
    expectReadsFail(buffer);
    expectReadsFail(offline);
    DoubleSymbol number(offline, "n");
    DynamicBuffer out;
    EXPECT_EQ(number.directSet(1.0), 0);
    EXPECT_EQ(number.toString(out), nullptr);
    out.buffer.fit(100);
    EXPECT_EQ(number.toString(out), nullptr);

    buffer.error(5);
    state.getValue = [](void*, ZantParserExchangeBuffer*) { return 0; };
    Double value;
    EXPECT_TRUE(DoubleSymbol(buffer, "n").directGet(value));
    EXPECT_EQ(buffer.errorCode, 5) << "a successful read leaves the error state alone";
}

TEST_F(Symbols, TextOfAnObject) {
    std::string text = "twenty characters xx";
    int calls = 0;
    state.getValue = [&](void*, ZantParserExchangeBuffer* record) {
        EXPECT_EQ(record->type, 6);
        ++calls;
        ZantTextStorage& storage = record->value.text;
        const bool fits = !text.empty() && storage.length > text.size();
        if (fits) std::strcpy(storage.text, text.c_str());
        if (!fits) storage.text = nullptr;
        storage.length = text.size();
        return 0;
    };
    Symbol symbol(buffer, "s");
    DynamicBuffer out;
    EXPECT_STREQ(symbol.toString(out), text.c_str());
    EXPECT_EQ(calls, 2);
    EXPECT_EQ(out.buffer.bufferSize, 32u);
    EXPECT_EQ(symbol.toString(out), out.buffer.buffer) << "it fits now";
    EXPECT_EQ(calls, 3);
    text.assign(32, 'x');
    EXPECT_STREQ(symbol.toString(out), text.c_str()) << "the terminator has to fit too";
    EXPECT_EQ(calls, 5);
    text.clear();
    EXPECT_EQ(symbol.toString(out), nullptr);
    EXPECT_EQ(calls, 6) << "no second attempt for an empty text";
}

TEST_F(Symbols, BitmapCreation) {
    const struct {
        int format;
        const char* word;
    } rows[] = {{1, "floatGray"}, {2, "floatRgb"},  {3, "floatRgb"}, {4, "floatRgba"}, {5, "charGray"},
                {6, "charRgba"},  {7, "floatRgba"}, {8, "bitPlane"}, {0, "floatRgba"}, {99, "floatRgba"}};
    for (const auto& row : rows) {
        { BitmapSymbol symbol(offline, 20, 10, static_cast<_ZantPixelFormat>(row.format), "b"); }
        EXPECT_EQ(offline.commands.front(), std::string("bitmap b,") + row.word + ",(20,10);");
        EXPECT_EQ(offline.commands.back(), "delete b;");
        offline.commands.clear();
    }
}

TEST_F(Symbols, BitmapConstructorsAndLinks) {
    unsigned char memory[8 * 4];
    int sharedCalls = 0;
    state.setSharedMemory = [&](void* handle, void* shared, int width, int height) -> unsigned char {
        EXPECT_EQ(handle, &object);
        EXPECT_EQ(shared, memory);
        EXPECT_EQ(width * 100 + height, 402);
        ++sharedCalls;
        return 200;
    };
    state.registered = 0;
    BitmapSymbol declared(buffer, "d");
    BitmapSymbol loaded("a \"file\"", buffer, "l");
    BitmapSymbol shared(buffer, memory, 4, 2, PixelCharRgba, "s");
    EXPECT_EQ(texts(), (Texts{"bitmap d;", "bitmap l,load,\"a \"\"file\"\"\";", "bitmap s,charRgba,(0,0);"}));
    EXPECT_EQ(state.lookups, "d/5/- l/5/- s/5/- ");
    EXPECT_EQ(links, 4) << "sharing memory refreshes the link again";
    EXPECT_EQ(sharedCalls, 1);
    EXPECT_EQ(shared.setSharedMemory(memory, 4, 2), 200);
    EXPECT_EQ(links, 5);
    state.parsed.clear();
    shared.setPixel(1, 2, Vector(0.5, 1, 0));
    EXPECT_EQ(texts(), Texts{"bitmapOp s,plot,(1,2),(0.5,1,0);"});

    BitmapSymbol unlinked(offline, 4, 2, PixelCharRgba, "u");
    EXPECT_EQ(unlinked.setSharedMemory(memory, 4, 2), 0);
    EXPECT_EQ(unlinked.bitmap.data, nullptr);
    shared.bitmap.data = memory;
    shared.handle = 0;
    shared.refreshDirectLink();
    EXPECT_EQ(shared.bitmap.data, nullptr);
}

TEST_F(Symbols, BitmapCopiesItsSource) {
    state.registered = 0;
    float source[4] = {0.25f, 0.5f, 1.0f, 2.0f};
    unsigned char target[4] = {};
    pixels = Bitmap(target, 2, 2, PixelCharGray);
    const Bitmap gray(source, 2, 2, PixelFloatGray);
    BitmapSymbol copied(buffer, gray, 2, 2, "c");
    EXPECT_EQ(texts(), Texts{"bitmap c,floatGray,(2,2);"});
    EXPECT_EQ(target[0], 63);
    EXPECT_EQ(target[3], 255);
    pixels.data = nullptr;
    BitmapSymbol nothing(buffer, gray, 2, 2, "n");
    BitmapSymbol offlineCopy(offline, gray, 2, 2, "o");
}

TEST_F(Symbols, VertexMapsAndMeshes) {
    ZantVertexMapRecord record{};
    state.registered = 0;
    state.object = &record;
    VertexMapSymbol map(buffer, "m");
    EXPECT_EQ(map.direct(), nullptr);
    map.registerSymbol(3, 0, 1);
    EXPECT_EQ(map.info.record, &record);
    EXPECT_FALSE(map.direct()->isDouble);
    state.infoInt1 = 3;
    map.registerSymbol(2, 100, 4);
    EXPECT_TRUE(map.direct()->isDouble);
    state.infoInt1 = 2;
    map.registerSymbol(1, UINT64_MAX, 1);
    EXPECT_FALSE(map.direct()->isDouble);

    const Double list[] = {1.0, 2.0, 3.0, 4.0, 5.0};
    map.data(7, Vector(1, 2));
    map.data(7, Vector(1, 2, 3));
    map.data(7, Vector(1, 2, 3, 4));
    map.data(8, list);
    MeshSymbol mesh(buffer, "mesh1");
    mesh.addPoly(-1, VarLenDouble(list, 3), 2, 3);
    mesh.points(map);
    EXPECT_EQ(texts(),
              (Texts{"vertexMap m,3;", "vertexMap m,2,fixedSize,100,4;", "vertexMap m,1,fixedSize,1.8446744e19,1;",
                     "vertex2d m,7,(1,2);", "vertex3d m,7,(1,2,3);", "vertex3d m,7,(1,2,3,4);",
                     "vertexData m,8,{1,2,3,4,5};", "meshAddPoly mesh1,-1,{1,2,3},2,3;", "meshOp mesh1,points,m;"}));
    EXPECT_EQ(state.lookups, "m/3/- m/3/- m/3/- ");
    state.object = nullptr;
    map.registerSymbol(3, 0, 1);
    EXPECT_EQ(map.direct(), nullptr);
}

TEST_F(Symbols, TheOldLinkIsGoneBeforeTheCreationCommandIsParsed) {
    struct Watching : Offline {
        void parseOffline(const char*) override { seen = watched ? watched() : nullptr; }
        std::function<const void*()> watched;
        const void* seen = nullptr;
    } watching;
    ZantVertexMapRecord record{};
    VertexMapSymbol map(watching, "m");
    map.info.record = &record;
    watching.watched = [&] { return map.info.record; };
    watching.seen = &record;
    map.registerSymbol(3, 0, 1);
    EXPECT_EQ(watching.seen, nullptr);

    BitmapSymbol bitmap(watching, "b");
    bitmap.bitmap.data = &record;
    watching.watched = [&] { return bitmap.bitmap.data; };
    watching.seen = &record;
    bitmap.registerSymbol(1, 1, PixelFloatGray);
    EXPECT_EQ(watching.seen, nullptr);
    watching.watched = nullptr;
}

}  // namespace
