#ifndef ZANT_CLIENT_SYMBOLS_BITMAP_H
#define ZANT_CLIENT_SYMBOLS_BITMAP_H

#include "client/records/zant_records.h"
#include "client/values/vector.h"

namespace Zant {

/// A description of pixel memory, and access to its pixels. It owns nothing.
///
/// Colours are red, green, blue and alpha, from 0 to 1, in that order. Bytes hold a component clamped to that range,
/// multiplied by 255 and cut; a NaN is stored as 0. Gray formats store the mean of red, green and blue. Nothing checks
/// coordinates, memory or format. Formats without pixel access read as no values and are never written.
///
/// Threads: any number, as long as each byte of pixel memory is touched by one of them (eight pixels of a bit plane
/// share one) and the engine does not change the bitmap meanwhile.
class Bitmap : public ZantBitmapCore {
public:
    /// No pixel memory.
    Bitmap() : ZantBitmapCore{} {}

    /// Describes memory that the caller owns.
    Bitmap(void* pixels, int pixelWidth, int pixelHeight, _ZantPixelFormat pixelFormat);

    /// Reads one pixel.
    /// @param out room for four values
    /// @return the number of values written: 3 without alpha, 4 with it, 0 for a format without pixel access
    int getPixel(int x, int y, double* out, _ZantPixelFormat pixelFormat) const;
    int getPixel(int x, int y, float* out, _ZantPixelFormat pixelFormat) const;

    /// Writes one pixel from three colour values and an alpha, which formats without alpha leave out.
    void setPixel(int x, int y, const double* in, double alpha, _ZantPixelFormat pixelFormat) const;
    void setPixel(int x, int y, const float* in, float alpha, _ZantPixelFormat pixelFormat) const;

    /// Reads one pixel in the record's own format; sets the count of out to the number of values.
    void getPixel(int x, int y, Vector& out) const;

    /// Writes one pixel in the record's own format; alpha is the fourth component when there are four, otherwise 1.
    void setPixel(int x, int y, const Vector& colour) const;

    /// Copies the upper left block of pixels, converting between the formats; a source without alpha copies as 1.
    /// The fourth float of PixelFloatRgbx stays as it is in the target. The two blocks must not overlap.
    /// @param blockWidth, blockHeight in pixels; nothing happens when one is 0 or less
    void copyTo(const Bitmap* target, int blockWidth, int blockHeight) const;
};
static_assert(sizeof(Bitmap) == sizeof(ZantBitmapCore), "the engine fills the record in place");

}  // namespace Zant

#endif
