#ifndef ZANT_ENGINES_SCENE_PIXELS_H
#define ZANT_ENGINES_SCENE_PIXELS_H

#include <cstdlib>
#include <memory>

#include "client/symbols/bitmap.h"

namespace Zant::Engine {

/// The pixel memory of a bitmap object: its own, or a host's that it shares. A format is for life.
class Pixels {
public:
    static constexpr int largestSide = 65536;
    static constexpr size_t mostBytes = size_t{1} << 30;

    /// A side of a command as an int; one outside of every limit stays outside.
    static int sideOf(double side) { return side >= 0 && side <= largestSide ? static_cast<int>(side) : -1; }

    explicit Pixels(_ZantPixelFormat format) : view_(nullptr, 0, 0, format) {}

    /// Gives the bitmap memory of its own. Pixels inside both sizes are kept, new ones are 0. A size of 0 leaves no
    /// memory.
    /// @return false when the size is refused or there is no memory for it; then nothing has changed.
    bool resize(int width, int height);
    /// Uses memory of the host, laid out in the bitmap's format, until the next resize or share.
    /// @return false for no memory or a size that is refused; then nothing has changed.
    bool share(void* memory, int width, int height);
    /// Takes size and pixels of another bitmap, converted to this one's format. @return as resize().
    bool copy(const Pixels& source);

    /// Sets every pixel to 0.
    void clear();

    /// The memory as it is now.
    const Bitmap& bitmap() const { return view_; }
    _ZantPixelFormat format() const { return static_cast<_ZantPixelFormat>(view_.format); }
    bool hasAccess() const { return view_.data != nullptr && format() != PixelBitPlane; }

private:
    struct Free {
        void operator()(void* memory) const { std::free(memory); }
    };

    std::unique_ptr<void, Free> memory_;
    Bitmap view_;
};

/// The keyword under which a format is created: "charGray" and so on.
const char* formatWord(_ZantPixelFormat format);
/// The format of a creation keyword, or 0 when it names none.
_ZantPixelFormat formatOfWord(const char* word);

}  // namespace Zant::Engine

#endif
