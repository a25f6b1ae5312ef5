// What the face reads and writes past the command language: values, rows of numbers and pixels.

#include <array>
#include <functional>
#include <optional>

#include "modernstudio.h"

namespace zant::tests {
namespace {

using Zant::Tests::Environment;

/// What is in a record, without the components that it does not use.
std::string textOf(const vector& of) {
    return testing::PrintToString(std::vector<double>(of.values, of.values + of.count));
}
std::string textOf(const ZantAxesCore& of) {
    return testing::PrintToString(std::vector<double>(of.m, of.m + 3 * of.rows));
}
std::string textOf(const coord_sys& of) {
    return testing::PrintToString(of.position) + textOf(static_cast<const ZantCoordSysCore&>(of).axes);
}

template <class Type>
void expectKept(scene& stage, const Type& content, const std::function<bool(const Type&, const Type&)>& isSame) {
    value<Type> kept(stage, "kept");
    EXPECT_FALSE(kept.set(content));
    EXPECT_EQ(said(stage), "value::set failed: kept has not been declared");
    stage.clear();
    EXPECT_FALSE(kept.get());
    EXPECT_EQ(said(stage), "value::get failed: kept has not been declared");
    stage.clear();
    if constexpr (std::is_same_v<Type, coord_sys>) {
        stage.run("coordSys kept;");
        EXPECT_TRUE(kept.link());
    } else {
        EXPECT_TRUE(kept.declare());
    }
    EXPECT_TRUE(kept.set(content)) << said(stage);
    const std::optional<Type> read = kept.get();
    ASSERT_TRUE(read) << said(stage);
    EXPECT_TRUE(isSame(*read, content));
}

TEST(ModernValues, AreReadAndWritten) {
    for (const encoding commands : encodings) {
        Studio studio(commands);
        expectKept<double>(studio.stage, 0.1, std::equal_to<>());
        expectKept<std::string>(studio.stage, "a \"quote\"; \xC3\xA4", std::equal_to<>());
        const auto same = [&](const auto& a, const auto& b) { return textOf(a) == textOf(b); };
        expectKept<vector>(studio.stage, vector(1, 2, 3), same);
        const axes turned(degrees(90), degrees(10), degrees(0), 1, 2, 3);
        expectKept<axes>(studio.stage, turned, same);
        expectKept<coord_sys>(studio.stage, coord_sys(position{1, 2, 3}, turned), same);
    }
}

TEST(ModernValues, OfAnotherTypeAreRefused) {
    Studio studio;
    EXPECT_TRUE(studio.stage.run("string word,\"a\";"));
    value<double> number(studio.stage, "word");
    if (number.link()) {
        EXPECT_FALSE(number.get());
        EXPECT_NE(said(studio.stage), "");
        studio.stage.clear();
        EXPECT_FALSE(number.set(1));
        EXPECT_NE(said(studio.stage), "");
    }
    studio.stage.clear();
    value<std::string> word(studio.stage, "word");
    EXPECT_TRUE(word.link());
    EXPECT_EQ(word.get(), "a");
    value<double> missing(studio.stage, "missing");
    EXPECT_FALSE(missing.link());
    EXPECT_EQ(said(studio.stage), "symbol::link failed: missing has not been declared");
}

template <class Number>
void moveRows(vertex_map& map, int samples) {
    struct Vertex {
        Number x, y, z;
        Number other[2];
    };
    std::vector<Vertex> vertices(5), back(5);
    for (std::size_t k = 0; k < vertices.size(); ++k) {
        const auto base = static_cast<Number>(10 * k);
        vertices[k] = {base + Number(0.5), base + 1, base + 2, {7, 7}};
    }
    const rows<const Number> strided(&vertices[0].x, 5, 3, sizeof(Vertex));
    ASSERT_TRUE(map.write(strided, 2, samples - 1));
    ASSERT_TRUE(map.read(rows<Number>(&back[0].x, 5, 3, sizeof(Vertex)), 2, samples - 1));
    std::vector<double> dense(9);
    ASSERT_TRUE(map.read(rows<double>(dense, 3), 3, samples - 1));
    for (std::size_t k = 0; k < 5; ++k) {
        EXPECT_EQ(back[k].x, vertices[k].x);
        EXPECT_EQ(back[k].z, vertices[k].z);
        EXPECT_EQ(back[k].other[0], 0) << "beside the rows nothing is written";
    }
    EXPECT_EQ(dense, (std::vector<double>{10.5, 11, 12, 20.5, 21, 22, 30.5, 31, 32}));
    EXPECT_EQ(map.direct()->getValueDouble(2, 0, samples - 1), 0.5);
    EXPECT_EQ(map.direct()->getValueDouble(1, 0, samples - 1), 0) << "the row before";
}

TEST(ModernMaps, TakeRowsOfBothKindsWithAStride) {
    for (const char* isDouble : {"0", "1"}) {
        const Environment environment{{"ZANT_LOOPBACK_DOUBLE_VERTEX_MAPS", isDouble}};
        Studio studio;
        for (const int samples : {1, 2}) {
            vertex_map floats(studio.stage, "floats"), doubles(studio.stage, "doubles");
            ASSERT_TRUE(floats.declare(3, 7, samples) && doubles.declare(3, 7, samples));
            EXPECT_EQ(floats.direct()->isDouble, isDouble[0] == '1');
            moveRows<float>(floats, samples), moveRows<double>(doubles, samples);
        }
    }
}

TEST(ModernMaps, RefuseRowsThatTheyDoNotHave) {
    Studio studio;
    vertex_map map(studio.stage, "map"), undeclared(studio.stage, "undeclared"), empty;
    ASSERT_TRUE(map.declare(3, 4, 2));
    const std::vector<float> source(30);
    const struct {
        vertex_map& map;
        std::size_t count, width, firstRow;
        int sample;
        const char* failure;
    } refusals[] = {
        {map, 5, 3, 0, 0, "vertex_map::write failed: the map has no such rows"},
        {map, 1, 3, 4, 0, "vertex_map::write failed: the map has no such rows"},
        {map, 2, 3, SIZE_MAX, 0, "vertex_map::write failed: the map has no such rows"},
        {map, SIZE_MAX, 3, 0, 0, "vertex_map::write failed: the map has no such rows"},
        {map, 1, 3, 0, 2, "vertex_map::write failed: the map has no such rows"},
        {map, 1, 3, 0, -1, "vertex_map::write failed: the map has no such rows"},
        {map, 1, 2, 0, 0, "vertex_map::write failed: the width of the rows is not the dimension of the map"},
        {map, 1, 0, 0, 0, "vertex_map::write failed: the width of the rows is not the dimension of the map"},
        {undeclared, 1, 3, 0, 0, "vertex_map::write failed: undeclared has not been declared"},
        {empty, 1, 3, 0, 0, ""},
    };
    for (const auto& row : refusals) {
        EXPECT_FALSE(row.map.write(rows<const float>(source.data(), row.count, row.width), row.firstRow, row.sample));
        EXPECT_EQ(said(studio.stage), row.failure);
        studio.stage.clear();
    }
    EXPECT_TRUE(map.write(rows<const float>(source.data(), 0, 3), 4)) << "no rows, at the end";
    EXPECT_TRUE(map.write(rows<const float>(source.data(), 4, 3), 0, 1));
}

TEST(ModernMeshes, AreSentFromArrays) {
    const std::vector<float> points{0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0};
    const double uv[] = {0, 0, 1, 0, 1, 1, 0, 1};
    const int offsets[] = {0, 3, 7}, corners[] = {0, 1, 2, 0, 1, 2, 3}, tags[] = {4, 5};
    for (const encoding commands : encodings) {
        Studio studio(commands);
        mesh quad(studio.stage, "A quad");
        EXPECT_TRUE(quad.points(rows(points, 3)) && quad.normals(rows(points, 3)) && quad.uv(rows(uv, 2)))
            << said(studio.stage);
        EXPECT_TRUE(quad.polygons(offsets, corners, tags));
        EXPECT_TRUE(quad.polygons_of(3, std::array<unsigned, 6>{0, 1, 2, 0, 2, 3}, 1)) << said(studio.stage);
        EXPECT_FALSE(studio.stage.failed());
        Zant::DynamicBuffer storage;
        const std::string text = old(quad).toString(storage);
        EXPECT_NE(text.find("4"), std::string::npos) << text;
    }
}

TEST(ModernMeshes, KeepTheirMapsToTheirOwnEnd) {
    Studio studio;
    const float points[] = {0, 0, 0, 1, 1, 1};
    mesh one(studio.stage, "one"), other(studio.stage, "other");
    ASSERT_TRUE(one.points(rows(points, 3)) && other.points(rows(points, 3)));
    Tap tap(studio.stage);
    one = std::move(other);
    EXPECT_EQ(tap.take(), Texts({"delete one;", "delete one_x2epoints;"})) << "what is assigned over";
    { const mesh last(std::move(one)); }
    EXPECT_EQ(tap.take(), Texts({"delete other;", "delete other_x2epoints;"}));
}

TEST(ModernMeshes, RefuseWhatIsNoPolygon) {
    Studio studio;
    mesh shape(studio.stage, "shape");
    const std::vector<int> corners{0, 1, 2, 3};
    using Offsets = std::vector<int>;
    const struct {
        std::function<bool()> call;
        const char* reason;
    } refusals[] = {
        {[&] {
             return shape.polygons(Offsets{0, 5}, corners);
         },
         "the offsets lead beyond the indices"},
        {[&] {
             return shape.polygons(Offsets{0, 3, 2}, corners);
         },
         "the offsets do not ascend"},
        {[&] {
             return shape.polygons(Offsets{-1, 3}, corners);
         },
         "the offsets do not ascend"},
        {[&] {
             return shape.polygons(Offsets{0, -1}, corners);
         },
         "the offsets lead beyond the indices"},
        {[&] { return shape.polygons_of(3, corners); }, "the last polygon lacks corners"},
        {[&] { return shape.polygons_of(0, corners); }, "the last polygon lacks corners"},
        {[&] { return shape.polygons_of(2, corners, std::vector<int>{1}); }, "there are fewer tags than polygons"},
    };
    Tap tap(studio.stage);
    for (const auto& row : refusals) {
        EXPECT_FALSE(row.call());
        EXPECT_EQ(said(studio.stage), std::string("mesh::polygons failed: ") + row.reason);
        studio.stage.clear();
    }
    EXPECT_EQ(tap.take(), Texts());
    EXPECT_TRUE(shape.polygons(Offsets{}, corners) && shape.polygons(Offsets{0}, corners)) << "none at all";
    EXPECT_FALSE(shape.polygons_of(4, corners, -1)) << "a tag that is none";
}

TEST(ModernBitmaps, MoveWithAStrideInBothDirections) {
    Studio studio;
    const unsigned char rgba[2][4][4] = {{{255, 0, 0, 255}, {0, 255, 0, 255}, {9, 9, 9, 9}, {9, 9, 9, 9}},
                                         {{0, 0, 255, 255}, {255, 255, 255, 255}, {9, 9, 9, 9}, {9, 9, 9, 9}}};
    const bitmap picture(studio.stage, "picture", const_pixels(rgba, 2, 2, PixelCharRgba, 16));
    ASSERT_FALSE(studio.stage.failed()) << said(studio.stage);
    EXPECT_EQ(picture.width() * 10 + picture.height(), 22);
    unsigned char upsideDown[2][4][4] = {};
    ASSERT_TRUE(picture.read(pixels(upsideDown[1], 2, 2, PixelCharRgba, -16)));
    for (int y = 0; y < 2; ++y) {
        EXPECT_EQ(std::memcmp(upsideDown[y], rgba[1 - y], 8), 0) << y;
        EXPECT_EQ(upsideDown[y][2][0], 0) << "beside the rows nothing is written";
    }
    float colours[2][2][3] = {};
    ASSERT_TRUE(picture.read(pixels(colours, 2, 2, PixelFloatRgb)));
    EXPECT_EQ(colours[0][0][0], 1);
    EXPECT_EQ(colours[1][0][2], 1);
    bitmap changed(studio.stage, "changed", 2, 2, PixelFloatRgb);
    ASSERT_TRUE(changed.write(const_pixels(rgba[1], 2, 2, PixelCharRgba, -16)) &&
                changed.read(pixels(colours, 2, 2, PixelFloatRgb)));
    EXPECT_EQ(colours[0][0][2], 1) << "the last row came first";
    EXPECT_EQ(colours[1][0][0], 1);
}

TEST(ModernBitmaps, RefuseWhatTheyCannotMove) {
    Studio studio;
    bitmap picture(studio.stage, "picture", 2, 2, PixelFloatRgb), unsized(studio.stage, "unsized"), empty;
    char memory[256] = {};
    const struct {
        bitmap& from;
        pixels to;
        const char* failure;
    } refusals[] = {
        {picture, pixels(memory, 3, 2, PixelCharGray), "bitmap::read failed: the bitmap is smaller than the pixels"},
        {picture, pixels(memory, 2, 3, PixelCharGray), "bitmap::read failed: the bitmap is smaller than the pixels"},
        {picture, pixels(memory, -1, 2, PixelCharGray), "bitmap::read failed: the bitmap is smaller than the pixels"},
        {picture, pixels(memory, 2, 2, PixelBitPlane), "bitmap::read failed: the format has no pixel access"},
        {unsized, pixels(memory, 1, 1, PixelCharGray), "bitmap::read failed: the engine shows no pixels of the bitmap"},
        {empty, pixels(memory, 1, 1, PixelCharGray), ""},
    };
    for (const auto& row : refusals) {
        EXPECT_FALSE(row.from.read(row.to));
        EXPECT_EQ(said(studio.stage), row.failure);
        studio.stage.clear();
    }
    bitmap plane(studio.stage, "plane", 2, 2, PixelBitPlane);
    EXPECT_FALSE(plane.read(pixels(memory, 2, 2, PixelCharGray)));
    EXPECT_NE(said(studio.stage), "");
    EXPECT_EQ(empty.width() + unsized.height(), 0);
}

}  // namespace
}  // namespace zant::tests
