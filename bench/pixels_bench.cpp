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
    contest.ours("copyTo", repeated([&] {
                     source.bitmap.copyTo(&target.bitmap, size, size);
                     keep(*static_cast<char*>(target.bitmap.data));
                 }),
                 from == to ? 1.25 : 1.0);
    if (from == to) {
        contest.peer("memcpy", repeated([&] {
                         std::memcpy(target.bitmap.data, source.bitmap.data, pixels * bytesPerPixel[from]);
                         keep(*static_cast<char*>(target.bitmap.data));
                     }));
    }
#ifdef ZANT_BENCH_OPENIMAGEIO
    const auto byOpenImageIO = repeated([&] {
        convertByOpenImageIO(source.bitmap, target.bitmap);
        keep(*static_cast<char*>(target.bitmap.data));
    });
    // For the same format memcpy is what is asked for, whatever else there is.
    from == to ? contest.aside("OpenImageIO", byOpenImageIO) : contest.peer("OpenImageIO", byOpenImageIO);
#endif
    return contest.run();
}

/// All rows of a map of three components, out and back in, one sample after another.
template <class Stored, class Value>
bool copyRows(const char* title) {
    constexpr size_t rows = 1 << 16;
    std::vector<Stored> values(rows * 3);
    std::vector<Value> host(rows * 3);
    ZantVertexMapRecord record{rows, values.data(), 3, 1};
    VertexMapInfo info;
    info.record = &record;
    info.isDouble = sizeof(Stored) == sizeof(double);
    Contest contest(title, 2 * rows, 41);
    contest.ours(
        "getRow and setRow",
        [&] {
            for (size_t row = 0; row < rows; ++row)
                info.getRow(row, &host[3 * row], 0);
            keep(host[0]);
            for (size_t row = 0; row < rows; ++row)
                info.setRow(row, &host[3 * row], 0);
            keep(values[0]);
        },
        1.25);
    if (std::is_same_v<Stored, Value>) {
        contest.peer("memcpy of each row", [&] {
            for (size_t row = 0; row < rows; ++row)
                std::memcpy(&host[3 * row], info.getRowFloatPtr(row),
                            static_cast<size_t>(record.dimension) * sizeof(Value));
            keep(host[0]);
            for (size_t row = 0; row < rows; ++row)
                std::memcpy(info.getRowFloatPtr(row), &host[3 * row],
                            static_cast<size_t>(record.dimension) * sizeof(Value));
            keep(values[0]);
        });
    }
#ifdef ZANT_BENCH_OPENIMAGEIO
    const auto type = [](size_t size) {
        return size == sizeof(double) ? OIIO::TypeDesc::DOUBLE : OIIO::TypeDesc::FLOAT;
    };
    contest.peer("OpenImageIO, each row", [&] {
        for (size_t row = 0; row < rows; ++row)
            OIIO::convert_types(type(sizeof(Stored)), &values[3 * row], type(sizeof(Value)), &host[3 * row], 3);
        keep(host[0]);
        for (size_t row = 0; row < rows; ++row)
            OIIO::convert_types(type(sizeof(Value)), &host[3 * row], type(sizeof(Stored)), &values[3 * row], 3);
        keep(values[0]);
    });
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
