#ifndef ZANT_CLIENT_SYMBOLS_BITMAPSYMBOL_H
#define ZANT_CLIENT_SYMBOLS_BITMAPSYMBOL_H

#include "client/symbols/bitmap.h"
#include "client/symbols/symbol.h"

namespace Zant {

/// A bitmap of the engine, drawn into by command or, through the link, in the engine's own pixel memory.
///
/// The link shows the pixel memory as it was when it was last refreshed: after a command that resizes or loads the
/// bitmap, call refreshDirectLink(). Sizes are in pixels.
///
/// Threads: as its command buffer, one at a time; for the linked pixels see Bitmap.
class BitmapSymbol : public Symbol {
public:
    Bitmap bitmap;  ///< the link; its data is null while there is none

    /// Creates a bitmap and links it.
    BitmapSymbol(CommandBuffer& commands, int width, int height, _ZantPixelFormat format,
                 const char* symbolName = nullptr);

    /// Creates a bitmap whose pixels are the host's memory, which the host owns and keeps while the bitmap lives.
    BitmapSymbol(CommandBuffer& commands, void* memory, int width, int height, _ZantPixelFormat format,
                 const char* symbolName = nullptr);

    /// Declares a bitmap without size and links it.
    explicit BitmapSymbol(CommandBuffer& commands, const char* symbolName = nullptr);

    /// Lets the engine load an image file, and links the bitmap.
    BitmapSymbol(const char* fileName, CommandBuffer& commands, const char* symbolName = nullptr);

    /// Creates a bitmap in the format of source and, once linked, copies the upper left block of it.
    BitmapSymbol(CommandBuffer& commands, const Bitmap& source, int width, int height,
                 const char* symbolName = nullptr);

    ~BitmapSymbol() override;

    /// Sends the command that creates the bitmap, and registers it. Clears the link.
    void registerSymbol(int width, int height, _ZantPixelFormat format);

    /// Asks the engine for its pixel memory; without a handle the link is cleared.
    void refreshDirectLink();

    /// Creates, registers and links the bitmap.
    void setup(int width, int height, _ZantPixelFormat format);

    /// Creates a bitmap without pixels, then gives it the host's memory.
    void setupSharedMemory(void* memory, int width, int height, _ZantPixelFormat format);

    /// Gives the bitmap memory of the host for its pixels, and refreshes the link.
    /// @return the engine's answer, non-zero for success; 0, with nothing changed, without a handle
    int setSharedMemory(void* memory, int width, int height);

    /// Draws one pixel by command, not through the link.
    void setPixel(int x, int y, const Vector& colour);

private:
    void registerAndLink();
};

}  // namespace Zant

#endif
