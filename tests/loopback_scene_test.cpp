// What the loopback engine keeps: values, bitmaps, vertex maps and meshes, by command and by link.

#include <gtest/gtest.h>

#include <cfenv>
#include <clocale>
#include <vector>

#include "client/encoding/commandbinarybuffer.h"
#include "client/encoding/commandtextbuffer.h"
#include "client/symbols/bitmapsymbol.h"
#include "client/symbols/mesh.h"
#include "client/symbols/valuesymbols.h"
#include "client/symbols/vertexmap.h"
#include "loopbackhost.h"

namespace Zant::Tests {
namespace {

std::string textOf(Symbol& symbol) {
    DynamicBuffer storage;
    const char* text = symbol.toString(storage);
    return text ? text : "";
}

// The text of an object that a command declared.
std::string textOf(Host& host, const char* name) {
    CommandTextBuffer buffer(host.instance);
    Symbol symbol(buffer, name);
    symbol.registerSymbol();
    const std::string text = textOf(symbol);
    symbol.registered = 0;  // the object stays
    return text;
}

// The value of an object `q` is delivered, changed, and offered to another object.
TEST(LoopbackValues, AreTakenInTheirKindAndShape) {
    using Value = ZantExchangeValue;
    const auto keep = [](Value&) {};
    const struct {
        const char* name;
        const char* declaration;
        void (*change)(Value&);
        bool isTaken;
    } rows[] = {
        {"n", "var q,0.1;", keep, true},
        {"n", "string q,\"1\";", keep, false},
        {"s", "string q,\"a \"\"quote\"\"\";", keep, true},
        {"s", "string q,\"\";", [](Value& value) { value.string = nullptr; }, true},
        {"s", "var q,1;", keep, false},
        {"v", "vector q,(1,2);", keep, true},
        {"v", "vector q,(1,2,3,4);", keep, true},
        {"v", "vector q,(1,2);", [](Value& value) { value.vector.count = 5; }, false},
        {"v", "vector q,(1,2);", [](Value& value) { value.vector.count = 0; }, false},
        {"v", "axes q,<>;", keep, false},
        {"a", "axes q,<90,0,0>*(2);", keep, true},
        {"a", "axes q,<>;", [](Value& value) { value.axes.rows = 4; }, false},
        {"a", "axes q,<>;", [](Value& value) { value.axes.rows = -1; }, false},
        {"c", "coordSys q,(4,5,6)@<90,0,0>;", keep, true},
        {"c", "coordSys q,(4,5,6)@<>;", [](Value& value) { value.coordSys.axes.rows = 4; }, false},
        {"m", "var q,1;", keep, false},
    };
    Host host;
    host.parse("var n; string s; vector v; axes a; coordSys c; mesh m;");
    for (const auto& row : rows) {
        const std::string before = textOf(host, row.name);
        host.parse(row.declaration);
        ZantParserExchangeBuffer record{};
        EXPECT_EQ(host.instance->getValue(host.instance->findObject("q", HandleValue), &record), 1);
        row.change(record.value);
        EXPECT_EQ(host.instance->setValue(host.instance->findObject(row.name, HandleObject), &record), row.isTaken);
        std::string taken = row.declaration;
        taken.replace(taken.find('q'), 1, row.name);
        EXPECT_EQ(textOf(host, row.name), row.isTaken ? taken : before);
    }
}

TEST(LoopbackValues, OfTheWrongKindAreRefused) {
    Host host;
    CommandTextBuffer buffer(host.instance);
    DoubleSymbol number(buffer, "x");
    number.registerSymbol();
    host.parse("string x,\"text\";");  // another object under the same name: the old handle is dead
    Double value{7};
    EXPECT_FALSE(number.directGet(value));
    EXPECT_EQ(buffer.errorCode, 2);
    EXPECT_EQ(number.directSet(Double(1)), 0);
    number.Symbol::registerSymbol(HandleBitmap, nullptr);
    EXPECT_EQ(number.handle, 0U);
    EXPECT_EQ(number.registered, 0U);
    number.Symbol::registerSymbol(HandleValue, nullptr);
    const Instance* const other = host.library.createInstance();
    other->parse("var x; var y; var z;", nullptr, ParseText);
    ZantParserExchangeBuffer record{};
    record.type = ZantValueText;
    EXPECT_EQ(other->getValue(reinterpret_cast<void*>(number.handle), &record), 0) << "a handle of another instance";
}

TEST(LoopbackValues, TextsOfObjectsFollowTheCapacityProtocol) {
    Host host;
    host.parse("var x,2;");
    void* const handle = host.instance->findObject("x", HandleObject);
    for (const size_t room : {0U, 8U, 9U, 100U}) {
        char storage[] = "##########";
        ZantParserExchangeBuffer record{};
        record.type = ZantValueText;
        record.value.text = {storage, room};
        host.instance->getValue(handle, &record);
        EXPECT_EQ(record.value.text.length, 8U) << room;
        EXPECT_EQ(record.value.text.text != nullptr, room > 8) << room;
        EXPECT_EQ(std::string(storage, 10), room > 8 ? std::string("var x,2;\0#", 10) : "##########") << room;
    }
}

TEST(LoopbackObjects, KeepTheirContentAsText) {
    const char* const texts[] = {
        "variable n;",
        "double n,-3;",
        "color n,(1,0,0,0.5);",
        "axes n,<>;",
        "coordSys n,(1,2,3)@axes((1,0,0),(0,0,1),(0,-1,0));",
        "surface n,black;",
        "bitmap n,floatGray,(2,1);\nbitmapData n,(0,0),{(0.5,0.5,0.5),(1,1,1)};",
        "bitmap n,floatRgb,(1,1);\nbitmapData n,(0,0),(1,0.5,0.25);",
        "bitmap n,floatRgba,(1,1);\nbitmapData n,(0,0),(1,0.5,0.25,0.125);",
        "bitmap n,charRgba,(1,2);\nbitmapData n,(0,0),(1,0,0,1);\nbitmapData n,(0,1),(0,1,0,0);",
        "bitmap n,bitPlane,(3,2);",
        "vertexMap n,2,fixedSize,2,1;\nvertexData n,0,{1,2};\nvertexData n,1,{3,4};",
        "mesh n;\nmeshAddPoly n,1,{0,1,2};\nmeshAddPoly n,2,{0,1,2,3},4,5;",
    };
    Host host;
    for (const std::string text : texts) {
        EXPECT_EQ(host.parse(text), 0) << host.text.take();
        const std::string first = textOf(host, "n");
        EXPECT_EQ(first, text == "variable n;" ? "variable n,0;" : text);
        host.parse("delete n;");
        EXPECT_EQ(host.parse(first), 0);
        EXPECT_EQ(textOf(host, "n"), first);
    }
    host.parse("var n,1; double n,2;");
    EXPECT_EQ(textOf(host, "n"), "double n,2;") << "declared again, by another word";
}

TEST(LoopbackObjects, AreFoundThroughReferences) {
    Host host;
    host.parse("var x,1; reference r,x; reference r1,r; reference r2,r1; reference loop,loop2; reference loop2,loop;");
    void* handle = host.instance->findObject("r2", HandleValue);
    ASSERT_NE(handle, nullptr);
    ZantParserExchangeBuffer record{};
    record.type = ZantValueNumber;
    record.value.number = 5;
    EXPECT_EQ(host.instance->setValue(handle, &record), 1);
    EXPECT_EQ(textOf(host, "x"), "var x,5;");
    EXPECT_EQ(host.instance->findObject("loop", HandleObject), nullptr);
    host.parse("delete x;");
    EXPECT_EQ(host.instance->setValue(handle, &record), 0);
    EXPECT_EQ(host.instance->findObject("r2", HandleValue), nullptr);
}

// The bitmap as rows of letters: "#" where the red component is above a half.
std::string picture(const Bitmap& bitmap) {
    std::string text;
    for (int y = 0; y < bitmap.height; ++y) {
        for (int x = 0; x < bitmap.width; ++x) {
            Vector pixel;
            bitmap.getPixel(x, y, pixel);
            text += pixel.values[0] > 0.5 ? '#' : '.';
        }
        text += y + 1 < bitmap.height ? "/" : "";
    }
    return text;
}

// Some hosts end with a signal where an operation has no result.
class FloatingPointTraps {
public:
#ifdef __GLIBC__
    FloatingPointTraps() {
        feenableexcept(FE_INVALID | FE_DIVBYZERO | FE_OVERFLOW);
    }
    ~FloatingPointTraps() {
        fedisableexcept(FE_ALL_EXCEPT);
    }
#endif
};

const struct {
    const char* commands;
    const char* picture;
} drawings[] = {
    {"", "...../...../...../....."},
    {"bitmapOp b,plot,(4,3),(1,1,1);", "...../...../...../....#"},
    {"bitmapOp b,plot,(5,3),(1,1,1); bitmapOp b,plot,(-1,0),(1,1,1);", "...../...../...../....."},
    {"bitmapOp b,plot,(0.4,1.6),(1,1,1);", "...../...../#..../....."},
    {"bitmapOp b,clear,(1,1,1);", "#####/#####/#####/#####"},
    {"bitmapOp b,clear,(1,1,1); bitmapOp b,clear;", "...../...../...../....."},
    {"bitmapOp b,line,(0,0),(4,0),(1,1,1);", "#####/...../...../....."},
    {"bitmapOp b,line,(3,3),(0,0),(1,1,1);", "#..../.#.../..#../...#."},
    {"bitmapOp b,line,(2,2),(2,2),(1,1,1);", "...../...../..#../....."},
    {"bitmapOp b,line,(-1e9,1),(1e9,1),(1,1,1);", "...../#####/...../....."},
    {"bitmapOp b,line,(-9,-9),(-9,99),(1,1,1);", "...../...../...../....."},
    {"bitmapOp b,circle,(1,1),1,(1,1,1);", ".#.../#.#../.#.../....."},
    {"bitmapOp b,circle,(-1000000,2),1000002,(1,1,1);", "..#../..#../..#../..#.."},
    {"bitmapOp b,circle,(1,1),1e300,(1,1,1); bitmapOp b,circle,(-1e300,1),2,(1,1,1);", "...../...../...../....."},
    {"bitmapOp b,line,(-1e308,1),(1e308,1),(1,1,1); bitmapOp b,line,(0,0),(1e-300,0),(1,1,1);",
     "#..../...../...../....."},
    {"bitmapOp b,line,(2,0),(2,3),(1,1,1); bitmapOp b,fill,(0,0),(1,1,1);", "###../###../###../###.."},
    {"bitmapOp b,plot,(1,1),(0.1,0.1,0.1,0); bitmapOp b,fill,(0,0),(1,1,1),0.2;", "#####/#####/#####/#####"},
    {"bitmapOp b,line,(0,1),(4,1),(1,1,1); bitmapOp b,fill,(4,3),(1,1,1);", "...../#####/#####/#####"},
    {"bitmapOp b,fill,(9,9),(1,1,1);", "...../...../...../....."},
    {"bitmapOp b,clear,(1,1,1); bitmapOp b,resize,(2,3);", "##/##/##"},
    {"bitmapOp b,clear,(1,1,1); bitmapOp b,resize,(6,2);", "#####./#####."},
    {"bitmap c,charGray,(2,1); bitmapOp c,clear,(1,1,1); bitmapOp b,copy,c;", "##"},
    {"bitmapOp b,plot,(0,1),(1,1,1); bitmap c,copy,b; bitmap b,copy,c;", "...../#..../...../....."},
    {"bitmapData b,(3,0),{(1,1,1),(0,0,0),(1,1,1)};", "...#./#..../...../....."},
    {"bitmapOp b,clear,(1,1,1); clear b;", "...../...../...../....."},
};

TEST(LoopbackBitmaps, ShowCommandsInLinkedMemory) {
    const struct {
        _ZantPixelFormat created, linked;
    } formats[] = {
        {PixelFloatGray, PixelFloatGray}, {PixelFloatRgb, PixelFloatRgb}, {PixelFloatRgbx, PixelFloatRgb},
        {PixelFloatRgba, PixelFloatRgba}, {PixelCharGray, PixelCharGray}, {PixelCharRgba, PixelCharRgba},
    };
    for (const auto& format : formats) {
        for (const auto& row : drawings) {
            Host host;
            CommandTextBuffer buffer(host.instance);
            BitmapSymbol bitmap(buffer, 5, 4, format.created, "b");
            EXPECT_EQ(bitmap.bitmap.format, format.linked);
            [[maybe_unused]] const FloatingPointTraps traps;
            EXPECT_EQ(host.parse(row.commands), 0) << host.text.take();
            bitmap.refreshDirectLink();
            EXPECT_EQ(picture(bitmap.bitmap), row.picture) << row.commands << format.created;
            // A client may address the format with the unused float as it created it: that stays inside of the memory.
            const double white[3] = {1, 1, 1};
            for (int x = 0; x < bitmap.bitmap.width; ++x)
                bitmap.bitmap.setPixel(x, bitmap.bitmap.height - 1, white, 1.0, format.created);
        }
    }
}

TEST(LoopbackBitmaps, RefuseWhatIsAbsurdAndLoseNothing) {
    Host host;
    CommandTextBuffer buffer(host.instance);
    BitmapSymbol bitmap(buffer, 2, 1, PixelCharGray, "b");
    bitmap.setPixel(1, 0, Vector(1, 1, 1));
    const char* const refused[] = {
        "bitmapOp b,resize,(-1,4);",
        "bitmapOp b,resize,(1e300,1);",
        "bitmapOp b,resize,(65536,65536);",
        "bitmapOp b,resize,(4);",
        "bitmap b,floatRgba,(65536,65536);",
        "bitmapData b,(1,0),{(1,1,1),(1,1,1)};",
        "bitmapData b,(2,0),{(1,1,1),(1,1,1)};",
        "bitmapData b,(0,0),{(1,1,1),(1,1)};",
        "bitmapOp b,plot,(1),(1,1,1);",
        "bitmapOp b,plot,(1,1),(1,1);",
    };
    for (const char* command : refused) {
        EXPECT_EQ(host.parse(command), 4) << command << host.text.take();
        bitmap.refreshDirectLink();
        EXPECT_EQ(picture(bitmap.bitmap), ".#") << command;
    }
}

TEST(LoopbackBitmaps, ShareTheMemoryOfTheHost) {
    Host host;
    CommandBinaryBuffer buffer(host.instance);
    std::vector<float> memory(6 * 3 + 1, 0.0F);
    memory[18] = 9;  // no longer the bitmap's
    BitmapSymbol bitmap(buffer, memory.data(), 3, 2, PixelFloatRgb, "b");
    EXPECT_EQ(bitmap.bitmap.data, memory.data());
    bitmap.setPixel(2, 1, Vector(0.25, 0.5, 1));
    EXPECT_EQ(memory[15], 0.25F);
    EXPECT_EQ(memory[17], 1.0F);
    EXPECT_EQ(bitmap.setSharedMemory(nullptr, 3, 2), 0);
    EXPECT_EQ(bitmap.setSharedMemory(memory.data(), -1, 2), 0);
    EXPECT_EQ(bitmap.bitmap.data, memory.data());
    host.parse("clear b; bitmapOp b,copy,b; bitmapOp b,plot,(0,0),(1,1,1);");
    EXPECT_EQ(memory[0], 1.0F);
    EXPECT_EQ(memory[17], 0.0F);
    EXPECT_EQ(memory[18], 9.0F);
    host.parse("bitmapOp b,resize,(3,3);");
    bitmap.refreshDirectLink();
    EXPECT_NE(bitmap.bitmap.data, memory.data());
}

TEST(LoopbackVertexMaps, AreFilledByCommandAndByLink) {
    for (const char* doubles : {"0", "1"}) {
        const Environment environment{{"ZANT_LOOPBACK_DOUBLE_VERTEX_MAPS", doubles}};
        Host host;
        CommandBinaryBuffer buffer(host.instance);
        VertexMapSymbol map(buffer, "v");
        map.registerSymbol(2, 3, 2);
        ASSERT_NE(map.direct(), nullptr);
        EXPECT_EQ(map.info.isDouble, doubles[0] == '1');
        EXPECT_EQ(map.direct()->getSize(), 3U);
        map.data(1, Vector(1, 2));
        const Double row[4] = {Double(3), Double(4), Double(5), Double(6)};
        map.data(2, VarLenDouble(row));
        map.direct()->setValue(0, 1, 7.0, 1);
        EXPECT_EQ(textOf(map),
                  "vertexMap v,2,fixedSize,3,2;\nvertexData v,0,{0,0,0,7};\nvertexData v,1,{1,2,0,0};\n"
                  "vertexData v,2,{3,4,5,6};");
        EXPECT_EQ(host.parse("vertexData v,3,{1};"), 4);
        EXPECT_EQ(host.parse("vertexData v,0,{1,2,3,4,5};"), 4);
        EXPECT_EQ(host.parse("vertexMapOp v,resize,5;"), 0);
        EXPECT_EQ(map.direct()->getSize(), 5U);
        EXPECT_EQ(map.direct()->getValueDouble(2, 1, 1), 6);
        host.parse("clear v;");
        EXPECT_EQ(map.direct()->getValueDouble(2, 1, 1), 0);
        host.parse("vertexMapOp v,resize,2;");
        EXPECT_EQ(map.direct()->getSize(), 2U);
    }
}

TEST(LoopbackVertexMaps, GrowInPlaceAndRefuseWhatIsAbsurd) {
    Host host;
    CommandBinaryBuffer buffer(host.instance);
    VertexMapSymbol map(buffer, "v");
    map.registerSymbol(3, 0, 1);
    const uint64_t handle = map.handle;
    for (size_t row = 0; row < 1000; ++row)
        map.data(row, Vector(1, 2, static_cast<double>(row)));
    EXPECT_EQ(map.handle, handle);
    ASSERT_EQ(map.direct()->getSize(), 1000U) << host.text.take();
    EXPECT_EQ(map.direct()->getValueFloat(999, 2, 0), 999.0F);
    for (const char* command :
         {"vertexMap v,3,fixedSize,1e18;", "vertexMap v,-1;", "vertexMap v,3,fixedSize,100000000,1000;",
          "vertexMapOp v,resize,1e15;", "vertexData v,1e15,{1};"}) {
        EXPECT_EQ(host.parse(command), 4) << command << host.text.take();
        EXPECT_EQ(map.direct()->getSize(), 1000U) << command;
    }
    host.parse("vertexMap v,2,fixedSize,4;");  // declared again: the record stays where it is
    EXPECT_EQ(map.direct()->getSize(), 4U);
    EXPECT_EQ(map.direct()->getDimension(), 2);
    host.parse("delete v;");
    ZantParserExchangeBuffer record{};
    record.type = ZantValueText;
    EXPECT_EQ(host.instance->getValue(reinterpret_cast<void*>(handle), &record), 0) << "the record is gone";
}

TEST(LoopbackMeshes, TakePointsAndPolygons) {
    Host host;
    CommandBinaryBuffer buffer(host.instance);
    MeshSymbol mesh(buffer, "m");
    const Double corners[4] = {Double(0), Double(1), Double(2), Double(3)};
    {
        VertexMapSymbol map(buffer, "v");
        map.registerSymbol(3, 4, 1);
        mesh.registerSymbol();
        mesh.points(map);
        mesh.addPoly(1, VarLenDouble(corners), 2, 3);
        EXPECT_EQ(buffer.errorCode, 0);
    }
    EXPECT_EQ(textOf(mesh), "mesh m;\nmeshOp m,points,v;\nmeshAddPoly m,1,{0,1,2,3},2,3;");
    host.parse("mesh t,triple,m;");
    EXPECT_EQ(textOf(host, "t"),
              "mesh t;\nmeshOp t,points,v;\nmeshAddPoly t,1,{0,1,2},2,3;\nmeshAddPoly t,1,{0,2,3},2,3;");
    EXPECT_EQ(host.parse("meshAddPoly m,1,{0,1,4};"), 4) << "the map of four rows lives on in the mesh";
    EXPECT_EQ(host.parse("meshOp m,points; meshAddPoly m,1,{0,1,4};"), 0) << "without points, any index";
}

// A host's locale may write 0.5 as 0,5. Where no such locale could be made, at least the digits are looked at.
TEST(LoopbackObjects, AreNumberedInMessagesAsInCommands) {
    const Environment environment{{"LOCPATH", ZANT_TEST_LOCALES}};
    std::setlocale(LC_ALL, "de_DE.UTF-8");
    Host host;
    host.parse(
        "bitmap b,charGray,(-0.5,4); vertexMap v,3,fixedSize,2; mesh m; meshOp m,points,v; meshAddPoly m,1,1.5;");
    std::setlocale(LC_ALL, "C");
    EXPECT_EQ(host.text.take(),
              "Error: text:1:19: a bitmap cannot have the size -0.5 x 4\n"
              "Error: text:1:99: the mesh has no point 1.5\n");
}

}  // namespace
}  // namespace Zant::Tests
