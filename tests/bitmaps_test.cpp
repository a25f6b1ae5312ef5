// Pixel access in every format, and copies between every pair of formats against the definition written out pixel by
// pixel.
#include "client/symbols/bitmap.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

namespace {

using namespace Zant;

constexpr float nan = std::numeric_limits<float>::quiet_NaN();
constexpr float infinity = std::numeric_limits<float>::infinity();

_ZantPixelFormat formatOf(int number) {
    return static_cast<_ZantPixelFormat>(number);
}

size_t bytesPerPixel(int format) {
    static constexpr size_t bytes[] = {0, 4, 12, 16, 16, 1, 4};
    return bytes[format];
}

bool isFloat(int format) {
    return format <= 4;
}

// ---- The definition, one pixel at a time ----------------------------------------------------------------------------

template <class Real>
Real clampToUnit(Real v) {
    if (!(v > 0)) v = 0;
    return v < 1 ? v : 1;
}

template <class Real>
unsigned char toByte(Real v) {
    return static_cast<unsigned char>(static_cast<int>(clampToUnit(v) * static_cast<Real>(255)));
}

template <class Real>
void write(unsigned char* memory, int format, const Real* c, Real alpha) {
    const Real mean = (c[0] + c[1] + c[2]) / static_cast<Real>(3);
    float* const floats = reinterpret_cast<float*>(memory);
    if (format == 1) floats[0] = static_cast<float>(mean);
    if (format == 5) memory[0] = toByte(mean);
    for (int i = 0; i < 3; ++i) {
        if (format >= 2 && format <= 4) floats[i] = static_cast<float>(c[i]);
        if (format == 6) memory[i] = toByte(c[i]);
    }
    if (format == 4) floats[3] = static_cast<float>(alpha);
    if (format == 6) memory[3] = toByte(alpha);
}

template <class Real>
int read(const unsigned char* memory, int format, Real* c) {
    const float* const floats = reinterpret_cast<const float*>(memory);
    const int values = format == 4 || format == 6 ? 4 : 3;
    for (int i = 0; i < values; ++i) {
        const int element = format == 1 || format == 5 ? 0 : i;
        c[i] = static_cast<Real>(isFloat(format) ? static_cast<double>(floats[element]) : memory[element] / 255.0);
    }
    return values;
}

// ---- Memory ---------------------------------------------------------------------------------------------------------

/// Pixels with a margin that nothing may touch.
struct Image {
    Image(int pixelFormat, int w, int h) : format(pixelFormat), width(w), height(h) {
        const size_t bytes = bytesPerPixel(format) * static_cast<size_t>(w * h);
        memory.assign(bytes / 4 + 1 + 8, 0);
    }
    unsigned char* bytes() { return reinterpret_cast<unsigned char*>(memory.data()); }
    unsigned char* pixel(int x, int y) { return bytes() + bytesPerPixel(format) * static_cast<size_t>(y * width + x); }
    Bitmap bitmap() { return Bitmap(memory.data(), width, height, formatOf(format)); }

    int format, width, height;
    std::vector<float> memory;
};

void fill(Image& image, std::mt19937& random) {
    static constexpr float special[] = {0, -0.0f, 1, -1, 2, 0.5f, nan, infinity, -infinity, 1e-40f, 0.999999f, 3e38f};
    std::uniform_real_distribution<float> unit(-0.2f, 1.2f);
    if (isFloat(image.format)) {
        for (float& value : image.memory)
            value = random() % 4 == 0 ? special[random() % std::size(special)] : unit(random);
    } else {
        for (size_t i = 0; i < image.memory.size() * 4; ++i)
            image.bytes()[i] = static_cast<unsigned char>(random());
    }
}

/// Bytes are compared, except that any NaN is as good as another.
bool same(Image& a, Image& b) {
    for (size_t i = 0; i < a.memory.size(); ++i) {
        const bool bothNan = isFloat(a.format) && std::isnan(a.memory[i]) && std::isnan(b.memory[i]);
        if (!bothNan && std::memcmp(&a.memory[i], &b.memory[i], 4) != 0) return false;
    }
    return true;
}

TEST(Bitmaps, CopiesBetweenEveryPairOfFormats) {
    const struct {
        int sourceWidth, targetWidth, width, height;
    } shapes[] = {{1, 1, 1, 1}, {37, 37, 37, 5}, {37, 40, 37, 5}, {40, 37, 21, 4}, {300, 300, 300, 2}, {5, 5, 0, 3}};
    std::mt19937 random(7);
    int checked = 0;
    for (int from = 1; from <= 6; ++from) {
        for (int to = 1; to <= 6; ++to) {
            for (const auto& shape : shapes) {
                Image source(from, shape.sourceWidth, 6), target(to, shape.targetWidth, 6);
                fill(source, random);
                fill(target, random);
                Image expected = target;
                for (int y = 0; y < shape.height; ++y) {
                    for (int x = 0; x < shape.width; ++x) {
                        float c[4] = {0, 0, 0, 1};
                        read(source.pixel(x, y), from, c);
                        write(expected.pixel(x, y), to, c, c[3]);
                    }
                }
                const Bitmap targetBitmap = target.bitmap();
                source.bitmap().copyTo(&targetBitmap, shape.width, shape.height);
                EXPECT_TRUE(same(target, expected)) << from << " to " << to << ", width " << shape.width;
                ++checked;
            }
        }
    }
    EXPECT_EQ(checked, 216);
}

TEST(Bitmaps, NothingIsCopiedWithoutPixelAccessOrSize) {
    float memory[4] = {1, 2, 3, 4};
    float other[4] = {5, 6, 7, 8};
    for (int format : {0, 7, 8, -1}) {
        const Bitmap strange(memory, 2, 2, formatOf(format));
        const Bitmap gray(other, 2, 2, PixelFloatGray);
        strange.copyTo(&gray, 2, 2);
        gray.copyTo(&strange, 2, 2);
        double out[4] = {9, 9, 9, 9};
        EXPECT_EQ(strange.getPixel(0, 0, out, formatOf(format)), 0);
        EXPECT_EQ(out[0], 9);
        strange.setPixel(0, 0, out, 1.0, formatOf(format));
        Vector colour(1, 2, 3);
        strange.getPixel(0, 0, colour);
        EXPECT_EQ(colour.count, 0);
    }
    const Bitmap gray(other, 2, 2, PixelFloatGray);
    const Bitmap target(memory, 2, 2, PixelFloatGray);
    gray.copyTo(&target, -1, 2);
    gray.copyTo(&target, 2, -1);
    EXPECT_EQ(memory[0], 1);
    EXPECT_EQ(other[0], 5);
}

template <class Real>
void expectPixelsAsDefined() {
    const Real nanReal = std::numeric_limits<Real>::quiet_NaN();
    const Real huge = std::numeric_limits<Real>::infinity();
    const Real colours[][4] = {{1, 1, 1, Real(0.5)},
                               {2, -1, Real(0.5), 1},
                               {Real(0.3), Real(0.6), Real(0.9), Real(0.1)},
                               {nanReal, huge, -huge, nanReal},
                               {Real(1) / 3, Real(0.7), Real(0.999999), -1}};
    for (int format = 1; format <= 6; ++format) {
        for (const Real* colour : colours) {
            Image image(format, 3, 3), expected(format, 3, 3);
            std::memset(image.bytes(), 0x5A, image.memory.size() * 4);
            expected.memory = image.memory;
            const Bitmap bitmap = image.bitmap();
            bitmap.setPixel(1, 2, colour, colour[3], formatOf(format));
            write(expected.pixel(1, 2), format, colour, colour[3]);
            EXPECT_TRUE(same(image, expected)) << format;
            Real out[4] = {7, 7, 7, 7}, expectedOut[4] = {7, 7, 7, 7};
            EXPECT_EQ(bitmap.getPixel(1, 2, out, formatOf(format)), read(expected.pixel(1, 2), format, expectedOut));
            for (int i = 0; i < 4; ++i)
                EXPECT_TRUE(out[i] == expectedOut[i] || std::isnan(out[i])) << format;
        }
    }
}

TEST(Bitmaps, PixelsAsDefined) {
    expectPixelsAsDefined<double>();
    expectPixelsAsDefined<float>();
}

TEST(Bitmaps, KnownPixels) {
    unsigned char bytes[4];
    const Bitmap rgba(bytes, 1, 1, PixelCharRgba);
    rgba.setPixel(0, 0, Vector(1, 1, 1, 0.5));
    EXPECT_EQ(std::string(reinterpret_cast<char*>(bytes), 4), "\xFF\xFF\xFF\x7F");
    rgba.setPixel(0, 0, Vector(2, -1, 0.5));
    EXPECT_EQ(std::string(reinterpret_cast<char*>(bytes), 4), std::string("\xFF\x00\x7F\xFF", 4));

    float gray = 0;
    const Bitmap floatGray(&gray, 1, 1, PixelFloatGray);
    floatGray.setPixel(0, 0, Vector(0.3, 0.6, 0.9));
    EXPECT_EQ(gray, 0.6f);
    Vector colour;
    floatGray.getPixel(0, 0, colour);
    EXPECT_EQ(colour.count, 3);
    EXPECT_EQ(colour.values[2], static_cast<double>(0.6f));

    bytes[0] = 51;
    Bitmap(bytes, 1, 1, PixelCharGray).getPixel(0, 0, colour);
    EXPECT_EQ(colour.values[1], 0.2);

    float colours[8] = {};
    Bitmap(colours, 2, 1, PixelFloatRgba).setPixel(1, 0, Vector(0.1, 0.2, 0.3));
    EXPECT_EQ(colours[7], 1.0f) << "three components: opaque";
    Bitmap(colours, 2, 1, PixelFloatRgbx).setPixel(1, 0, Vector(0, 0, 0, 9));
    EXPECT_EQ(colours[4], 0.0f);
    EXPECT_EQ(colours[7], 1.0f) << "untouched";
    Bitmap(colours, 2, 1, PixelFloatRgba).getPixel(1, 0, colour);
    EXPECT_EQ(colour.count, 4);
}

}  // namespace
