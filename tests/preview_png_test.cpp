// The picture files of the preview engine, read back with libpng.

#include <gtest/gtest.h>
#include <png.h>

#include <cmath>
#include <filesystem>
#include <limits>

#include "engines/preview/pngfile.h"
#include "loopbackhost.h"

namespace Zant::Tests {
namespace {

using Engine::Picture;
namespace fs = std::filesystem;

/// Four bytes for each pixel; none when it is no picture of the size.
std::vector<uint8_t> readBack(const std::string& file, const Picture& picture) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    EXPECT_TRUE(png_image_begin_read_from_file(&image, file.c_str())) << image.message;
    EXPECT_EQ(image.format, static_cast<png_uint_32>(PNG_FORMAT_RGBA)) << "8 bits of sRGB, straight alpha";
    if (static_cast<size_t>(image.width) * image.height != picture.size()) return {};
    std::vector<uint8_t> bytes(PNG_IMAGE_SIZE(image));
    EXPECT_TRUE(png_image_finish_read(&image, nullptr, bytes.data(), 0, nullptr)) << image.message;
    return bytes;
}

size_t filesIn(const std::string& folder) {
    return static_cast<size_t>(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

TEST(PreviewPng, HoldsSRgb) {
    const struct {
        float linear;
        int sRgb, alpha;
    } rows[] = {{0, 0, 0},      {1, 255, 255},         {0.5F, 188, 128},     {0.18F, 118, 46},
                {0.001F, 3, 0}, {0.0031F, 10, 1},      {0.0032F, 11, 1},     {2, 255, 255},
                {-1, 0, 0},     {std::nanf(""), 0, 0}, {INFINITY, 255, 255}, {-INFINITY, 0, 0}};
    for (const auto& row : rows) {
        Picture picture(2, 1);
        picture.pixels = {{row.linear, 0, 1, row.linear}, {1, row.linear, row.linear, 1}};
        const TemporaryFile file;
        ASSERT_EQ(Preview::writePng(picture, file.name()), "");
        const auto value = static_cast<uint8_t>(row.sRgb), alpha = static_cast<uint8_t>(row.alpha);
        EXPECT_EQ(readBack(file.name(), picture), (std::vector<uint8_t>{value, 0, 255, alpha, 255, value, value, 255}))
            << row.linear;
    }
}

TEST(PreviewPng, HasItsRowsInOrderAndTheSameBytes) {
    Picture picture(37, 23);
    for (int y = 0; y < picture.height; ++y)
        for (int x = 0; x < picture.width; ++x)
            picture.pixels[picture.place(x, y)] = {x % 2 ? 1.0F : 0, y % 2 ? 1.0F : 0, y == 22 ? 1.0F : 0,
                                                   static_cast<float>(x * 6) / 255};
    const TemporaryFile first, second;
    ASSERT_EQ(Preview::writePng(picture, first.name()), "");
    ASSERT_EQ(Preview::writePng(picture, second.name()), "");
    EXPECT_EQ(first.content(), second.content());
    EXPECT_EQ(first.content().find("tIME"), std::string::npos);
    const auto bytes = readBack(first.name(), picture);
    ASSERT_EQ(bytes.size(), 37U * 23 * 4);
    size_t wrong = 0;
    for (size_t i = 0; i < picture.size(); ++i) {
        const size_t x = i % 37, y = i / 37;
        wrong += bytes[4 * i] != x % 2 * 255 || bytes[4 * i + 1] != y % 2 * 255 ||
                 bytes[4 * i + 2] != (y == 22 ? 255 : 0) || bytes[4 * i + 3] != x * 6;
    }
    EXPECT_EQ(wrong, 0U);
}

TEST(PreviewPng, LeavesTheOldFileAsItIs) {
    const Testkit::TemporaryFolder folder;
    const std::string old = folder.name() + "/old.png", link = folder.name() + "/link.png";
    std::ofstream(old) << "old";
    fs::create_symlink(old, link);
    for (const std::string& place : {link, folder.name() + "/not/there.png", folder.name(), std::string()}) {
        // libpng refuses pictures without pixels
        const std::string said = Preview::writePng(place == link ? Picture(0, 5) : Picture(2, 2), place);
        EXPECT_EQ(said.find("cannot write " + place + ": "), 0U) << said;
        EXPECT_EQ(filesIn(folder.name()), 2U);
        EXPECT_EQ(fs::file_size(old), 3U);
    }
    EXPECT_EQ(Preview::writePng(Picture(2, 2), link), "");
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(readBack(old, Picture(2, 2)).size(), 16U);
    EXPECT_EQ(Preview::writePng(Picture(2, 2), "/dev/null"), "");
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

}  // namespace
}  // namespace Zant::Tests
