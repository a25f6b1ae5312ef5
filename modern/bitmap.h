#ifndef ZANT_MODERN_BITMAP_H
#define ZANT_MODERN_BITMAP_H

#include <cstddef>

#include "client/symbols/bitmapsymbol.h"
#include "modern/symbol.h"

namespace zant {

using pixel_format = _ZantPixelFormat;

/// Pixels in memory: rows of `width` pixels, `stride` bytes from one row to the next, which may be negative. The memory
/// stays the caller's. Byte is const for pixels that are only read.
template <class Byte>
class basic_pixels {
public:
    using memory = std::conditional_t<std::is_const_v<Byte>, const void, void>;

    /// Rows that stand one after the other, unless a stride says more.
    basic_pixels(memory* first, int width, int height, pixel_format format, std::ptrdiff_t stride = 0)
        : first_(static_cast<Byte*>(first)),
          width_(width),
          height_(height),
          format_(format),
          stride_(stride != 0 ? stride : width * bytes(format)) {}
    /// What can be written can be read.
    template <class Other, class = std::enable_if_t<std::is_convertible_v<Other*, Byte*>>>
    basic_pixels(const basic_pixels<Other>& other)
        : basic_pixels(other.row(0), other.width(), other.height(), other.format(), other.stride()) {}

    int width() const { return width_; }
    int height() const { return height_; }
    pixel_format format() const { return format_; }
    std::ptrdiff_t stride() const { return stride_; }
    Byte* row(int y) const { return first_ + y * stride_; }

    /// The bytes of a pixel; 0 for a format without pixel access.
    static int bytes(pixel_format format) {
        switch (format) {
            case PixelCharGray:
                return 1;
            case PixelFloatRgb:
                return 12;
            case PixelFloatRgbx:
            case PixelFloatRgba:
                return 16;
            case PixelFloatGray:
            case PixelCharRgba:
                return 4;
            default:
                return 0;
        }
    }

private:
    Byte* first_;
    int width_;
    int height_;
    pixel_format format_;
    std::ptrdiff_t stride_;
};

using pixels = basic_pixels<char>;
using const_pixels = basic_pixels<const char>;

/// A bitmap of the engine.
///
/// Threads: as its scene.
class bitmap : public symbol {
public:
    bitmap() = default;
    /// Makes a bitmap without a size, for a command that loads or creates it.
    bitmap(const basic_scene& scene, const zant::name& called) { create(state_of(scene), called); }
    /// Makes a bitmap of this size.
    bitmap(const basic_scene& scene, const zant::name& called, int width, int height, pixel_format format) {
        create(state_of(scene), called, width, height, format);
    }
    /// Makes a bitmap with a copy of these pixels.
    bitmap(const basic_scene& scene, const zant::name& called, const const_pixels& from)
        : bitmap(scene, called, from.width(), from.height(), from.format()) {
        write(from);
    }

    int width() const { return link() ? here().bitmap.width : 0; }
    int height() const { return link() ? here().bitmap.height : 0; }

    /// Copies pixels into the upper left of the bitmap, and converts their format.
    bool write(const const_pixels& from) {
        return move("bitmap::write", from, [&] { copy(from, of_engine(from)); });
    }

    /// Copies the upper left pixels of the bitmap, as many as there is room for, and converts their format.
    bool read(const pixels& to) const {
        return move("bitmap::read", to, [&] { copy(of_engine(to), to); });
    }

    /// The engine's own pixels, or null. They are the engine's; they may move with the next command on the bitmap.
    const Zant::Bitmap* direct() const { return link() ? &here().bitmap : nullptr; }

private:
    Zant::BitmapSymbol& here() const { return handle<Zant::BitmapSymbol>(); }

    template <class... Size>
    void create(detail::scene_state* scene, const zant::name& called, Size... size) {
        if (scene) scene->perform("bitmap", [&] { make<Zant::BitmapSymbol>(scene, called, size...); });
    }

    /// Asks the engine where the pixels are: a command may have changed that.
    bool link() const {
        if (!is_declared()) return false;
        here().Symbol::registerSymbol(HandleBitmap, nullptr);
        here().refreshDirectLink();
        return here().bitmap.data != nullptr;
    }

    template <class Pixels, class Copy>
    bool move(const char* command, const Pixels& host, const Copy& copy) const {
        if (!require_open(command)) return false;
        if (!link()) return state()->refuse(command, "the engine shows no pixels of the bitmap");
        const Zant::Bitmap& own = here().bitmap;
        if (host.width() < 0 || host.height() < 0 || host.width() > own.width || host.height() > own.height)
            return state()->refuse(command, "the bitmap is smaller than the pixels");
        if (pixels::bytes(host.format()) == 0 || pixels::bytes(static_cast<pixel_format>(own.format)) == 0)
            return state()->refuse(command, "the format has no pixel access");
        copy();
        return true;
    }

    /// The engine's pixels that answer to those of the host.
    template <class Pixels>
    pixels of_engine(const Pixels& host) const {
        const Zant::Bitmap& own = here().bitmap;
        const auto format = static_cast<pixel_format>(own.format);
        return {own.data, host.width(), host.height(), format, std::ptrdiff_t{own.width} * pixels::bytes(format)};
    }

    static void copy(const const_pixels& from, const pixels& to) {
        for (int y = 0; y < from.height(); ++y) {
            const Zant::Bitmap target(to.row(y), to.width(), 1, to.format());
            Zant::Bitmap(const_cast<char*>(from.row(y)), from.width(), 1, from.format())
                .copyTo(&target, from.width(), 1);
        }
    }
};

}  // namespace zant

#endif
