// Copies of pixels between formats, and of the rows of vertex maps, against memcpy and OpenImageIO.
#include <cstring>
#include <random>
#include <vector>

#ifdef ZANT_BENCH_OPENIMAGEIO
#include <OpenImageIO/imageio.h>
#endif

#include "bench/contest.h"
#include "client/symbols/bitmap.h"
#include "client/symbols/vertexmap.h"

namespace {

using namespace Zant;

constexpr size_t bytesPerPixel[] = {0, 4, 12, 16, 16, 1, 4};
constexpr const char* names[] = {"",           "gray floats", "three floats", "three of four floats", "four floats",
                                 "gray bytes", "four bytes"};

/// Pixels of one format: floats from -0.1 to 1.1, any bytes.
class Pixels {
public:
    Pixels(int format, int width, int height)
        : memory_(bytesPerPixel[format] * static_cast<size_t>(width * height) / sizeof(float) + 1),
          bitmap(memory_.data(), width, height, static_cast<_ZantPixelFormat>(format)) {
        std::mt19937 random(1);
        std::uniform_real_distribution<float> unit(-0.1f, 1.1f);
        for (float& value : memory_)
            value = unit(random);
    }

private:
    std::vector<float> memory_;

public:
    Bitmap bitmap;
};

#ifdef ZANT_BENCH_OPENIMAGEIO
/// The same conversion as far as OpenImageIO has it: the components that both formats hold.
void convertByOpenImageIO(const Bitmap& source, const Bitmap& target) {
    static constexpr int components[] = {0, 1, 3, 3, 4, 1, 4};
    const auto type = [](int format) { return format <= 4 ? OIIO::TypeDesc::FLOAT : OIIO::TypeDesc::UINT8; };
    const auto stride = [](int format) { return static_cast<OIIO::stride_t>(bytesPerPixel[format]); };
    OIIO::convert_image(std::min(components[source.format], components[target.format]), source.width, source.height, 1,
                        source.data, type(source.format), stride(source.format), OIIO::AutoStride, OIIO::AutoStride,
                        target.data, type(target.format), stride(target.format), OIIO::AutoStride, OIIO::AutoStride);
}
#endif

/// @param repeats makes a turn of a small picture long enough
bool copyBetween(int from, int to, int size, int repeats) {
    const Pixels source(from, size, size), target(to, size, size);
    const size_t pixels = static_cast<size_t>(size) * static_cast<size_t>(size);
    const std::string title = std::string(names[from]) + " to " + names[to] + ", " + std::to_string(size) + " squared";
    Contest contest(title, pixels * static_cast<size_t>(repeats), 41);
    const auto repeated = [repeats](auto turn) {
        return [repeats, turn] {
            for (int i = 0; i < repeats; ++i)
                turn();
        };
    };
    // For the same format memcpy is what is asked for, unless it copies fourth floats that are to be left alone.
    const bool canMemcpy = from == to && from != PixelFloatRgbx;
    contest.ours("copyTo", repeated([&] {
                     source.bitmap.copyTo(&target.bitmap, size, size);
                     keep(*static_cast<char*>(target.bitmap.data));
                 }),
                 canMemcpy ? 1.25 : 1.0);
    if (from == to) {
        const auto byMemcpy = repeated([&] {
            std::memcpy(target.bitmap.data, source.bitmap.data, pixels * bytesPerPixel[from]);
            keep(*static_cast<char*>(target.bitmap.data));
        });
        canMemcpy ? contest.peer("memcpy", byMemcpy) : contest.aside("limit: memcpy, fourth floats too", byMemcpy);
    }
#ifdef ZANT_BENCH_OPENIMAGEIO
    const auto byOpenImageIO = repeated([&] {
        convertByOpenImageIO(source.bitmap, target.bitmap);
        keep(*static_cast<char*>(target.bitmap.data));
    });
    canMemcpy ? contest.aside("OpenImageIO", byOpenImageIO) : contest.peer("OpenImageIO", byOpenImageIO);
#endif
    return contest.run();
}

/// Rows of three components, as a map stores them and as a host has them.
template <class Stored, class Value>
struct Rows {
    static constexpr size_t count = 1 << 16;
    std::vector<Stored> values = std::vector<Stored>(count * 3);
    std::vector<Value> host = std::vector<Value>(count * 3);
    ZantVertexMapRecord record{count, values.data(), 3, 1};

    /// Every row out and back in, one sample after another.
    template <class Get, class Set>
    Contest::Turn outAndIn(Get get, Set set) {
        return [this, get, set] {
            for (size_t row = 0; row < count; ++row)
                get(row, &host[3 * row]);
            keep(host[0]);
            for (size_t row = 0; row < count; ++row)
                set(row, &host[3 * row]);
            keep(values[0]);
        };
    }
};

template <class Stored, class Value>
bool copyRows(const char* title) {
    Rows<Stored, Value> rows;
    VertexMapInfo info;
    info.record = &rows.record;
    info.isDouble = sizeof(Stored) == sizeof(double);
    Contest contest(title, 2 * rows.count, 41);
    contest.ours("getRow and setRow",
                 rows.outAndIn([&](size_t row, Value* host) { info.getRow(row, host, 0); },
                               [&](size_t row, const Value* host) { info.setRow(row, host, 0); }),
                 1.25);
    if (std::is_same_v<Stored, Value>) {
        const auto size = [&] { return static_cast<size_t>(rows.record.dimension) * sizeof(Value); };
        contest.peer(
            "memcpy of each row",
            rows.outAndIn(
                [&, size](size_t row, Value* host) { std::memcpy(host, info.getRowFloatPtr(row), size()); },
                [&, size](size_t row, const Value* host) { std::memcpy(info.getRowFloatPtr(row), host, size()); }));
    }
#ifdef ZANT_BENCH_OPENIMAGEIO
    const auto type = [](size_t size) {
        return size == sizeof(double) ? OIIO::TypeDesc::DOUBLE : OIIO::TypeDesc::FLOAT;
    };
    const auto stored = type(sizeof(Stored)), value = type(sizeof(Value));
    contest.peer("OpenImageIO, each row",
                 rows.outAndIn([&](size_t row,
                                   Value* host) { OIIO::convert_types(stored, &rows.values[3 * row], value, host, 3); },
                               [&](size_t row, const Value* host) {
                                   OIIO::convert_types(value, host, stored, &rows.values[3 * row], 3);
                               }));
#endif
    return contest.run();
}

}  // namespace

int main() {
    bool met = true;
    // In the caches, and beyond them.
    for (int format = 1; format <= 6; ++format) {
        met &= copyBetween(format, format, 128, 16);
        met &= copyBetween(format, format, bytesPerPixel[format] == 1 ? 8192 : 4096, 1);
    }
    for (int from = 1; from <= 6; ++from) {
        for (int to = 1; to <= 6; ++to) {
            if (from != to) met &= copyBetween(from, to, 128, 4);
        }
    }
    met &= copyRows<float, float>("rows of three floats");
    met &= copyRows<float, double>("rows of three floats, as doubles");
    met &= copyRows<double, float>("rows of three doubles, as floats");
    return met ? 0 : 1;
}
