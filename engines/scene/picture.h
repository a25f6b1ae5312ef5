#ifndef ZANT_ENGINES_SCENE_PICTURE_H
#define ZANT_ENGINES_SCENE_PICTURE_H

#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

namespace Zant::Engine {

/// A part of a picture: columns and rows from the first one to before the last one.
struct Tile {
    int left = 0, top = 0, right = 0, bottom = 0;

    int width() const { return right - left; }
    int height() const { return bottom - top; }
};

/// What a camera sees: row 0 is the upper one. Threads may write different pixels at the same time.
struct Picture {
    struct Pixel {
        float red = 0, green = 0, blue = 0, alpha = 0;  ///< linear; the colours are not multiplied by alpha
    };

    static constexpr int largestSide = 16384;
    /// A gigabyte of pixels, depths and objects.
    static constexpr size_t mostPixels = (size_t{1} << 30) / (sizeof(Pixel) + sizeof(float) + sizeof(uint32_t));

    /// Whether there can be a picture of this size; what is not a number is none.
    static bool isSize(double columns, double rows) {
        return columns >= 1 && rows >= 1 && columns <= largestSide && rows <= largestSide &&
               columns * rows <= static_cast<double>(mostPixels);
    }

    int width = 0;
    int height = 0;
    std::vector<Pixel> pixels;
    std::vector<float> depths;      ///< from the eye to what the middle of the pixel meets, infinite for nothing
    std::vector<uint32_t> objects;  ///< the number of that object, from 1; 0 for nothing

    Picture() = default;
    Picture(int columns, int rows)
        : width(columns),
          height(rows),
          pixels(size()),
          depths(size(), std::numeric_limits<float>::infinity()),
          objects(size()) {}

    size_t size() const { return static_cast<size_t>(width) * static_cast<size_t>(height); }
    size_t place(int x, int y) const {
        return static_cast<size_t>(y) * static_cast<size_t>(width) + static_cast<size_t>(x);
    }
};

}  // namespace Zant::Engine

#endif
