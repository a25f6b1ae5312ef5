#include "client/symbols/bitmap.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace Zant {

namespace {

using Byte = unsigned char;

/// The larger of 0 and v, then the smaller of 1 and that. Both comparisons are false for a NaN, which gives 0.
template <class Real>
constexpr Real clamped(Real v) {
    const Real low = v > 0 ? v : 0;
    return low < 1 ? low : 1;
}

template <class Real>
constexpr Byte toByte(Real v) {
    return static_cast<Byte>(static_cast<int>(clamped(v) * Real(255)));
}

/// A byte divided by 255 in double, then narrowed. For floats the quotient of floats is the same, for every byte.
template <class Real>
constexpr Real fromByte(Byte b) {
    return static_cast<Real>(b) / Real(255);
}

template <class Real>
constexpr Real mean(const Real* colour) {
    return (colour[0] + colour[1] + colour[2]) / Real(3);
}

// ---- Formats --------------------------------------------------------------------------------------------------------
// Each format: its elements per pixel, how one pixel is read into three or four values, and how it is written.

struct FloatGray {
    using Element = float;
    static constexpr int elements = 1;
    static constexpr int values = 3;
    template <class Real>
    static void load(const float* pixel, Real* out) {
        out[0] = out[1] = out[2] = *pixel;
    }
    template <class Real>
    static void store(float* pixel, const Real* in, Real) {
        *pixel = static_cast<float>(mean(in));
    }
};

/// Three of `stride` floats.
template <int stride>
struct FloatColour {
    using Element = float;
    static constexpr int elements = stride;
    static constexpr int values = 3;
    template <class Real>
    static void load(const float* pixel, Real* out) {
        for (int i = 0; i < 3; ++i)
            out[i] = pixel[i];
    }
    template <class Real>
    static void store(float* pixel, const Real* in, Real) {
        for (int i = 0; i < 3; ++i)
            pixel[i] = static_cast<float>(in[i]);
    }
};

struct FloatRgba {
    using Element = float;
    static constexpr int elements = 4;
    static constexpr int values = 4;
    template <class Real>
    static void load(const float* pixel, Real* out) {
        for (int i = 0; i < 4; ++i)
            out[i] = pixel[i];
    }
    template <class Real>
    static void store(float* pixel, const Real* in, Real alpha) {
        for (int i = 0; i < 3; ++i)
            pixel[i] = static_cast<float>(in[i]);
        pixel[3] = static_cast<float>(alpha);
    }
};

struct CharGray {
    using Element = Byte;
    static constexpr int elements = 1;
    static constexpr int values = 3;
    template <class Real>
    static void load(const Byte* pixel, Real* out) {
        out[0] = out[1] = out[2] = fromByte<Real>(*pixel);
    }
    template <class Real>
    static void store(Byte* pixel, const Real* in, Real) {
        *pixel = toByte(mean(in));
    }
};

struct CharRgba {
    using Element = Byte;
    static constexpr int elements = 4;
    static constexpr int values = 4;
    template <class Real>
    static void load(const Byte* pixel, Real* out) {
        for (int i = 0; i < 4; ++i)
            out[i] = fromByte<Real>(pixel[i]);
    }
    template <class Real>
    static void store(Byte* pixel, const Real* in, Real alpha) {
        for (int i = 0; i < 3; ++i)
            pixel[i] = toByte(in[i]);
        pixel[3] = toByte(alpha);
    }
};

/// Calls with the format's class, or not at all when the format has no pixel access.
template <class Call>
void withFormat(int format, const Call& call) {
    switch (format) {
        case PixelFloatGray:
            return call(FloatGray());
        case PixelFloatRgb:
            return call(FloatColour<3>());
        case PixelFloatRgbx:
            return call(FloatColour<4>());
        case PixelFloatRgba:
            return call(FloatRgba());
        case PixelCharGray:
            return call(CharGray());
        case PixelCharRgba:
            return call(CharRgba());
        default:
            return;
    }
}

template <class Format>
typename Format::Element* pixelAt(const ZantBitmapCore& bitmap, int x, int y, Format) {
    const ptrdiff_t index = ptrdiff_t{y} * bitmap.width + x;
    return static_cast<typename Format::Element*>(bitmap.data) + index * Format::elements;
}

template <class Real>
int load(const ZantBitmapCore& bitmap, int x, int y, Real* out, int format) {
    int values = 0;
    withFormat(format, [&](auto pixels) {
        pixels.load(pixelAt(bitmap, x, y, pixels), out);
        values = pixels.values;
    });
    return values;
}

template <class Real>
void store(const ZantBitmapCore& bitmap, int x, int y, const Real* in, Real alpha, int format) {
    withFormat(format, [&](auto pixels) { pixels.store(pixelAt(bitmap, x, y, pixels), in, alpha); });
}

// ---- Rows of pixels -------------------------------------------------------------------------------------------------
// The row as it is defined, then the pairs of formats for which the same result comes faster.

template <class From, class To>
void copyRow(From, To, const typename From::Element* __restrict source, typename To::Element* __restrict target,
             size_t count) {
    for (size_t i = 0; i < count; ++i) {
        float colour[4] = {0, 0, 0, 1};
        From::load(source + i * From::elements, colour);
        To::store(target + i * To::elements, colour, colour[3]);
    }
}

void copyRow(FloatColour<3>, FloatColour<3>, const float* source, float* target, size_t count) {
    std::memcpy(target, source, count * 3 * sizeof(float));
}

void copyRow(FloatRgba, FloatRgba, const float* source, float* target, size_t count) {
    std::memcpy(target, source, count * 4 * sizeof(float));
}

void copyRow(CharRgba, CharRgba, const Byte* source, Byte* target, size_t count) {
    std::memcpy(target, source, count * 4);
}

/// What becomes of a gray byte that is read and written: in the upper third, the mean of three equal values comes out
/// below them for one byte in eight. (168 stands for all bytes below; it is not one of them.)
constexpr Byte copiedGray(Byte b) {
    return static_cast<Byte>(b - ((std::max<Byte>(b, 168) & 7) == 5));
}

void copyRow(CharGray, CharGray, const Byte* __restrict source, Byte* __restrict target, size_t count) {
    for (size_t i = 0; i < count; ++i) {
        target[i] = copiedGray(source[i]);
    }
}

constexpr bool shortcutsHoldForEveryByte() {
    for (int i = 0; i < 256; ++i) {
        const Byte b = static_cast<Byte>(i);
        const float unit = static_cast<float>(b / 255.0);
        const float colour[3] = {unit, unit, unit};
        if (fromByte<float>(b) != unit || toByte(unit) != b || toByte(mean(colour)) != copiedGray(b)) return false;
    }
    return true;
}
static_assert(shortcutsHoldForEveryByte(), "the shortcuts give the defined bytes");

template <class From, class To>
void copyRows(From from, To to, const ZantBitmapCore& source, const ZantBitmapCore& target, int width, int height) {
    const bool contiguous = width == source.width && width == target.width;
    const int rows = contiguous ? 1 : height;
    const size_t count = static_cast<size_t>(width) * static_cast<size_t>(contiguous ? height : 1);
    for (int y = 0; y < rows; ++y) {
        copyRow(from, to, pixelAt(source, 0, y, from), pixelAt(target, 0, y, to), count);
    }
}

}  // namespace

Bitmap::Bitmap(void* pixels, int pixelWidth, int pixelHeight, _ZantPixelFormat pixelFormat)
    : ZantBitmapCore{pixels, pixelWidth, pixelHeight, pixelFormat, {}} {}

int Bitmap::getPixel(int x, int y, double* out, _ZantPixelFormat pixelFormat) const {
    return load(*this, x, y, out, pixelFormat);
}

int Bitmap::getPixel(int x, int y, float* out, _ZantPixelFormat pixelFormat) const {
    return load(*this, x, y, out, pixelFormat);
}

void Bitmap::setPixel(int x, int y, const double* in, double alpha, _ZantPixelFormat pixelFormat) const {
    store(*this, x, y, in, alpha, pixelFormat);
}

void Bitmap::setPixel(int x, int y, const float* in, float alpha, _ZantPixelFormat pixelFormat) const {
    store(*this, x, y, in, alpha, pixelFormat);
}

void Bitmap::getPixel(int x, int y, Vector& out) const {
    out.count = load(*this, x, y, out.values, format);
}

void Bitmap::setPixel(int x, int y, const Vector& colour) const {
    store(*this, x, y, colour.values, colour.count == 4 ? colour.values[3] : 1.0, format);
}

void Bitmap::copyTo(const Bitmap* target, int blockWidth, int blockHeight) const {
    if (blockWidth <= 0 || blockHeight <= 0) return;
    withFormat(format, [&](auto from) {
        withFormat(target->format, [&](auto to) { copyRows(from, to, *this, *target, blockWidth, blockHeight); });
    });
}

}  // namespace Zant
