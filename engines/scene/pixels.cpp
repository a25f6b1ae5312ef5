#include "engines/scene/pixels.h"

#include <algorithm>
#include <cstring>

namespace Zant::Engine {
namespace {

struct FormatRow {
    _ZantPixelFormat format;
    const char* word;
    size_t bytesPerPixel;
};
// Clients have a format of four floats with the fourth unused and create it with the word of three floats. Room for
// four keeps such a client inside the memory.
const FormatRow formats[] = {
    {PixelFloatGray, "floatGray", 4}, {PixelFloatRgb, "floatRgb", 16}, {PixelFloatRgba, "floatRgba", 16},
    {PixelCharGray, "charGray", 1},   {PixelCharRgba, "charRgba", 4},  {PixelBitPlane, "bitPlane", 1},
};

const FormatRow& rowOf(_ZantPixelFormat format) {
    for (const FormatRow& row : formats) {
        if (row.format == format) return row;
    }
    return formats[0];
}

bool acceptable(int width, int height, size_t bytesPerPixel) {
    if (width < 0 || height < 0 || width > Pixels::largestSide || height > Pixels::largestSide) return false;
    return static_cast<size_t>(width) * static_cast<size_t>(height) <= Pixels::mostBytes / bytesPerPixel;
}

}  // namespace

bool Pixels::resize(int width, int height) {
    const size_t bytesPerPixel = rowOf(format()).bytesPerPixel;
    if (!acceptable(width, height, bytesPerPixel)) return false;
    const size_t count = static_cast<size_t>(width) * static_cast<size_t>(height);
    std::unique_ptr<void, Free> memory(count ? std::calloc(count, bytesPerPixel) : nullptr);
    if (count && !memory) return false;
    const Bitmap resized(memory.get(), count ? width : 0, count ? height : 0, format());
    if (hasAccess()) {
        view_.copyTo(&resized, std::min(resized.width, view_.width), std::min(resized.height, view_.height));
    }
    memory_ = std::move(memory);
    view_ = resized;
    return true;
}

bool Pixels::share(void* memory, int width, int height) {
    if (!memory || width < 1 || height < 1 || !acceptable(width, height, rowOf(format()).bytesPerPixel)) return false;
    memory_.reset();
    view_ = Bitmap(memory, width, height, format());
    return true;
}

bool Pixels::copy(const Pixels& source) {
    if (&source == this) return true;
    Pixels copied(format());
    if (!copied.resize(source.view_.width, source.view_.height)) return false;
    if (copied.hasAccess() && source.hasAccess()) {
        source.view_.copyTo(&copied.view_, copied.view_.width, copied.view_.height);
    }
    *this = std::move(copied);
    return true;
}

void Pixels::clear() {
    if (!view_.data) return;
    size_t bytes = static_cast<size_t>(view_.width) * static_cast<size_t>(view_.height) * rowOf(format()).bytesPerPixel;
    // A host's memory has no room for a fourth float.
    if (format() == PixelFloatRgb && !memory_) bytes = bytes / 4 * 3;
    std::memset(view_.data, 0, bytes);
}

const char* formatWord(_ZantPixelFormat format) {
    return rowOf(format).word;
}

_ZantPixelFormat formatOfWord(const char* word) {
    for (const FormatRow& row : formats) {
        if (std::strcmp(row.word, word) == 0) return row.format;
    }
    return _ZantPixelFormat{};
}

}  // namespace Zant::Engine
