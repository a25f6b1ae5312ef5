// What the commands of a scene send, byte by byte, beside the typed functions.

#include <array>
#include <functional>
#include <memory>

#include "allocationcount.h"
#include "client/protos/protos.h"
#include "modernstudio.h"

namespace zant::tests {
namespace {

/// What both sides of the table below talk about.
struct Props {
    symbol red, green;
    mesh shape;
    bitmap picture;
    vertex_map map;

    explicit Props(scene& stage)
        : red(stage, "red"),
          green(stage, "green"),
          shape(stage, "shape"),
          picture(stage, "picture"),
          map(stage, "map") {
        EXPECT_TRUE(stage.surface1_color(red) && stage.surface1_color(green)) << said(stage);
        EXPECT_TRUE(shape.declare() && map.declare(3, 1));
        picture = bitmap(stage, "picture", 1, 1, PixelFloatRgb);
    }
    Zant::MeshSymbol& oldShape() const { return static_cast<Zant::MeshSymbol&>(old(shape)); }
    Zant::BitmapSymbol& oldPicture() const { return static_cast<Zant::BitmapSymbol&>(old(picture)); }
    Zant::VertexMapSymbol& oldMap() const { return static_cast<Zant::VertexMapSymbol&>(old(map)); }
};

struct Pair {
    const char* name;
    std::function<bool(scene&, Props&)> face;
    std::function<void(void*, Props&)> typed;
    bool hasOwnHandle = false;  // each side makes an object, whose handles differ in blocks
};

const double someDoubles[] = {0.5, -2, 1e9};
const float someFloats[] = {0.5F, -2, 1e9F};
const std::int32_t someIntegers[] = {3, -2, 1000000000};
const std::uint32_t someCounts[] = {3, 2, 4000000000};
const Zant::Double oldDoubles[] = {0.5, -2, 1e9};
const Zant::Double oldIntegers[] = {3, -2, 1e9};
const Zant::Double oldCounts[] = {3, 2, 4e9};
const vector someVectors[] = {vector(1, 2, 3), vector(4, 5)};
const coord_sys someSystems[] = {coord_sys(position{1, 2, 3}),
                                 coord_sys(position{4, 5, 6}, axes(degrees(90), degrees(0), degrees(0)))};
const Zant::CoordSys oldSystems[] = {someSystems[0], someSystems[1]};
const std::string longText(500, 'x'), washing(5000, 'w');

// One row for each kind of argument and each way to give it.
const Pair pairs[] = {
    {"nothing", [](scene& s, Props&) { return s.view0_render(); }, [](void* p, Props&) { view0_render(p); }},
    {"numbers", [](scene& s, Props&) { return s.fg2_gradients(0.5, 2); },
     [](void* p, Props&) { fg2_gradients(p, 0.5, 2); }},
    {"float and int for a number", [](scene& s, Props&) { return s.fg2_gradients(0.5F, 2); },
     [](void* p, Props&) { fg2_gradients(p, 0.5, 2); }},
    {"integer", [](scene& s, Props&) { return s.sett1_aRecurse(-3); }, [](void* p, Props&) { sett1_aRecurse(p, -3); }},
    {"truth value", [](scene& s, Props&) { return s.fg1_showSamples(true); },
     [](void* p, Props&) { fg1_showSamples(p, true); }},
    {"index", [](scene& s, Props&) { return s.lw1_ignoreItemId(7); }, [](void* p, Props&) { lw1_ignoreItemId(p, 7); }},
    {"large index", [](scene& s, Props&) { return s.lw1_ignoreItemId(std::uint64_t{1} << 40); },
     [](void* p, Props&) { lw1_ignoreItemId(p, std::uint64_t{1} << 40); }},
    {"literal", [](scene& s, Props&) { return s.sett1_logFile("a\"b"); },
     [](void* p, Props&) { sett1_logFile(p, "a\"b"); }},
    {"string", [](scene& s, Props&) { return s.sett1_logFile(longText); },
     [](void* p, Props&) { sett1_logFile(p, longText.c_str()); }},
    {"view into a longer text",
     [](scene& s, Props&) { return s.sett1_logFile(std::string_view("abcdef").substr(1, 3)); },
     [](void* p, Props&) { sett1_logFile(p, "bcd"); }},
    {"empty view", [](scene& s, Props&) { return s.sett1_logFile(std::string_view()); },
     [](void* p, Props&) { sett1_logFile(p, ""); }},
    {"two views",
     [](scene& s, Props&) { return s.animOb2_setParent(std::string_view("ab", 1), std::string_view(longText)); },
     [](void* p, Props&) { animOb2_setParent(p, "a", longText.c_str()); }},
    {"wide literal", [](scene& s, Props&) { return s.sett1_renderInfo(L"\u00e4\u753b"); },
     [](void* p, Props&) { sett1u_renderInfo(p, L"\u00e4\u753b"); }},
    {"wide view", [](scene& s, Props&) { return s.sett1_renderInfo(std::wstring_view(L"ab\u00e4", 2)); },
     [](void* p, Props&) { sett1u_renderInfo(p, L"ab"); }},
    {"wide string", [](scene& s, Props&) { return s.sett1_renderInfo(std::wstring(L"ab")); },
     [](void* p, Props&) { sett1u_renderInfo(p, L"ab"); }},
    {"vector", [](scene& s, Props&) { return s.view1_offset(vector(1, 2)); },
     [](void* p, Props&) {
         view1_offset(p, {1, 2});
     }},
    {"vector in braces",
     [](scene& s, Props&) {
         return s.view1_offset({1, 2, 3});
     },
     [](void* p, Props&) {
         view1_offset(p, {1, 2, 3});
     }},
    {"axes",
     [](scene& s, Props&) { return s.animOb3_addAxesKey("a", 1, axes(degrees(180), radians(0.5), degrees(0))); },
     [](void* p, Props&) { animOb3_addAxesKey(p, "a", 1, Zant::AxesHpb(3.14159265358979323846, 0.5, 0)); }},
    {"position and orientation",
     [](scene& s, Props&) {
         return s.camera3_picture({1, 2}, 3, position{4, 5, 6});
     },
     [](void* p, Props&) {
         camera3_picture(p, {1, 2}, 3, Zant::CoordSys({4, 5, 6}, Zant::Axes()));
     }},
    {"numbers in braces",
     [](scene& s, Props& o) {
         return s.meshAddPoly3(o.shape, 0, {0.5, -2.0, 1e9});
     },
     [](void* p, Props& o) { meshAddPoly3(p, o.oldShape(), 0, oldDoubles); }},
    {"integers in braces",
     [](scene& s, Props& o) {
         return s.meshAddPoly3(o.shape, 0, {3, -2, 1000000000});
     },
     [](void* p, Props& o) { meshAddPoly3(p, o.oldShape(), 0, oldIntegers); }},
    {"array of doubles", [](scene& s, Props& o) { return s.meshAddPoly3(o.shape, 0, someDoubles); },
     [](void* p, Props& o) { meshAddPoly3(p, o.oldShape(), 0, oldDoubles); }},
    {"array of floats", [](scene& s, Props& o) { return s.meshAddPoly3(o.shape, 0, someFloats); },
     [](void* p, Props& o) { meshAddPoly3(p, o.oldShape(), 0, oldDoubles); }},
    {"std::array of integers",
     [](scene& s, Props& o) {
         return s.meshAddPoly3(o.shape, 0, std::array<int, 3>{3, -2, 1000000000});
     },
     [](void* p, Props& o) { meshAddPoly3(p, o.oldShape(), 0, oldIntegers); }},
    {"span of unsigned integers",
     [](scene& s, Props& o) { return s.meshAddPoly3(o.shape, 0, span<const std::uint32_t>(someCounts)); },
     [](void* p, Props& o) { meshAddPoly3(p, o.oldShape(), 0, oldCounts); }},
    {"std::vector of floats",
     [](scene& s, Props& o) { return s.meshAddPoly3(o.shape, 0, std::vector<float>(someFloats, someFloats + 3)); },
     [](void* p, Props& o) { meshAddPoly3(p, o.oldShape(), 0, oldDoubles); }},
    {"pointer and count",
     [](scene& s, Props& o) {
         return s.meshAddPoly3(o.shape, 0, {someIntegers, 3});
     },
     [](void* p, Props& o) { meshAddPoly3(p, o.oldShape(), 0, oldIntegers); }},
    {"no numbers", [](scene& s, Props& o) { return s.meshAddPoly3(o.shape, 0, std::vector<double>()); },
     [](void* p, Props& o) { meshAddPoly3(p, o.oldShape(), 0, {}); }},
    {"a text and numbers, both converted",
     [](scene& s, Props& o) { return s.meshOp5_addPolyTagName(o.shape, std::string_view("abc", 2), someFloats, 1, 2); },
     [](void* p, Props& o) { meshOp5_addPolyTagName(p, o.oldShape(), "ab", oldDoubles, 1, 2); }},
    {"vectors in braces",
     [](scene& s, Props&) {
         return s.lightAdd2_point({vector(1, 2, 3), vector(4, 5)}, {1, 1, 1});
     },
     [](void* p, Props&) {
         lightAdd2_point(p, someVectors, {1, 1, 1});
     }},
    {"one vector",
     [](scene& s, Props&) {
         return s.lightAdd2_point({vector(1, 2, 3)}, {1, 1, 1});
     },
     [](void* p, Props&) {
         lightAdd2_point(p, {someVectors, 1}, {1, 1, 1});
     }},
    {"array of vectors",
     [](scene& s, Props&) {
         return s.lightAdd2_point(someVectors, {1, 1, 1});
     },
     [](void* p, Props&) {
         lightAdd2_point(p, someVectors, {1, 1, 1});
     }},
    {"coordinate systems",
     [](scene& s, Props&) {
         return s.lightAdd3_rectangle(someSystems, {1, 1}, {1, 1, 1});
     },
     [](void* p, Props&) {
         lightAdd3_rectangle(p, oldSystems, {1, 1}, {1, 1, 1});
     }},
    {"coordinate systems in braces",
     [](scene& s, Props&) {
         return s.lightAdd3_rectangle({someSystems[0], someSystems[1]}, {1, 1}, {1, 1, 1});
     },
     [](void* p, Props&) {
         lightAdd3_rectangle(p, oldSystems, {1, 1}, {1, 1, 1});
     }},
    {"symbol", [](scene& s, Props& o) { return s.view1_camFilter(o.red); },
     [](void* p, Props& o) { view1_camFilter(p, old(o.red)); }},
    {"symbols in braces",
     [](scene& s, Props& o) {
         return s.lightAdd1_group({o.red, o.green});
     },
     [](void* p, Props& o) {
         const Zant::Symbol* const list[] = {&old(o.red), &old(o.green)};
         lightAdd1_group(p, list);
     }},
    {"symbols of several kinds",
     [](scene& s, Props& o) {
         return s.lightAdd1_group({o.red, o.shape, o.picture});
     },
     [](void* p, Props& o) {
         const Zant::Symbol* const list[] = {&old(o.red), &old(o.shape), &old(o.picture)};
         lightAdd1_group(p, list);
     }},
    {"a vector of symbols",
     [](scene& s, Props& o) {
         std::vector<symbol> both;
         both.push_back(std::move(o.red)), both.push_back(std::move(o.green));
         const bool isTaken = s.lightAdd1_group(both);
         o.red = std::move(both[0]), o.green = std::move(both[1]);
         return isTaken;
     },
     [](void* p, Props& o) {
         const Zant::Symbol* const list[] = {&old(o.red), &old(o.green)};
         lightAdd1_group(p, list);
     }},
    {"an array of meshes, which are larger than a symbol",
     [](scene& s, Props& o) {
         mesh all[2] = {std::move(o.shape), mesh(s, "other")};
         const bool isTaken = all[1].declare() && s.lightAdd1_group(all);
         o.shape = std::move(all[0]);
         return isTaken;
     },
     [](void* p, Props& o) {
         Zant::Symbol other(*static_cast<Zant::ProtoBase*>(p)->buffer, "other");
         mesh1(p, other);
         const Zant::Symbol* const list[] = {&old(o.shape), &other};
         lightAdd1_group(p, list);
     },
     true},
    {"mesh and map", [](scene& s, Props& o) { return s.meshOp2_points(o.shape, o.map); },
     [](void* p, Props& o) { meshOp2_points(p, o.oldShape(), o.oldMap()); }},
    {"bitmap", [](scene& s, Props& o) { return s.bitmapOp1_clear(o.picture); },
     [](void* p, Props& o) { bitmapOp1_clear(p, o.oldPicture()); }},
    {"object that is declared and deleted",
     [](scene& s, Props& o) {
         symbol blue(s, "blue");
         return s.surface3_filter(blue, o.red, o.green);
     },
     [](void* p, Props& o) {
         Zant::Symbol blue(*static_cast<Zant::ProtoBase*>(p)->buffer, "blue");
         surface3_filter(p, blue, old(o.red), old(o.green));
     },
     true},
};

TEST(ModernCommands, ArriveAsThoseOfTheTypedFunctions) {
    for (const encoding commands : encodings) {
        Studio studio(commands);
        Props props(studio.stage);
        Tap tap(studio.stage);
        std::unique_ptr<Zant::CommandBuffer> buffer;
        Zant::Instance* const instance = studio.stage.instance();
        if (commands == encoding::binary()) buffer = std::make_unique<Zant::CommandBinaryBuffer>(instance);
        if (commands == encoding::quick_text()) buffer = std::make_unique<Zant::CommandQuickTextBuffer>(instance);
        if (commands == encoding::text()) buffer = std::make_unique<Zant::CommandTextBuffer>(instance);
        Zant::ProtoBase protos;
        protos.buffer = buffer.get();
        for (const Pair& pair : pairs) {
            if (pair.hasOwnHandle && commands == encoding::binary()) continue;
            // Texts in blocks are filled up with what stood there before: the same on both sides.
            studio.stage.sett1_logFile(washing), sett1_logFile(&protos, washing.c_str());
            tap.take();
            const scope alone(studio.stage, on_failure::go_on);  // what the engine says of it is another matter
            const bool isTaken = pair.face(studio.stage, props);
            const Texts sent = tap.take();
            pair.typed(&protos, props);
            EXPECT_EQ(sent, tap.take()) << pair.name;
            EXPECT_EQ(isTaken, buffer->errorCode == 0) << pair.name;
            EXPECT_FALSE(sent.empty()) << pair.name;
            buffer->error(0);
        }
    }
}

TEST(ModernCommands, AreRefusedWithWhatCannotBeSent) {
    Studio studio, other;
    Tap tap(studio.stage);
    symbol empty, foreign(other.stage, "foreign"), own(studio.stage, "own");
    const struct {
        std::function<bool(scene&)> command;
        const char* failure;
    } rows[] = {
        {[&](scene& s) { return s.view1_camFilter(empty); }, "view1_camFilter failed: an empty symbol"},
        {[&](scene& s) { return s.surface1_color(empty); }, "surface1_color failed: an empty symbol"},
        {[&](scene& s) { return s.view1_camFilter(foreign); }, "view1_camFilter failed: a symbol of another scene"},
        {[&](scene& s) {
             return s.lightAdd1_group({own, empty});
         },
         "lightAdd1_group failed: an empty symbol"},
        {[&](scene& s) {
             return s.lightAdd1_group({own, foreign});
         },
         "lightAdd1_group failed: a symbol of another scene"},
        {[&](scene& s) { return s.lw1_ignoreItemId(-1); }, "lw1_ignoreItemId failed: a negative number"},
        {[&](scene& s) { return s.sett1_logFile(std::string("a\0b", 3)); },
         "sett1_logFile failed: a text with a zero byte"},
        {[&](scene& s) { return s.sett1_logFile(std::string_view("a\0b", 3)); },
         "sett1_logFile failed: a text with a zero byte"},
        {[&](scene& s) { return s.sett1_renderInfo(std::wstring(L"a\0b", 3)); },
         "sett1u_renderInfo failed: a text with a zero byte"},
    };
    for (const auto& row : rows) {
        EXPECT_FALSE(row.command(studio.stage)) << row.failure;
        EXPECT_EQ(said(studio.stage), row.failure);
        studio.stage.clear();
    }
    EXPECT_EQ(tap.take(), Texts());
}

TEST(ModernCommands, TakeNoMemoryInSteadyState) {
    for (const encoding commands : encodings) {
        Studio studio(commands);
        Props props(studio.stage);
        Tap tap(studio.stage, false);
        scene& stage = studio.stage;
        std::size_t before = 0;
        for (int round = 0; round < 100; ++round) {
            if (round == 1) before = allocationCount();
            stage.fg2_gradients(0.5, 2);
            stage.lightAdd1_group({props.red, props.green});
            stage.sett1_logFile(std::string_view(longText));
            stage.meshAddPoly3(props.shape, 0, someFloats);
            stage.meshOp5_addPolyTagName(props.shape, std::string_view("abc", 2), {1, 2, 3}, 1, 2);
        }
        EXPECT_EQ(allocationCount(), before);
        EXPECT_FALSE(stage.failed());
    }
}

}  // namespace
}  // namespace zant::tests
