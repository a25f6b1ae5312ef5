#include "client/symbols/bitmapsymbol.h"

#include "client/commands/commandbuffer.h"
#include "client/engine/instance.h"
#include "client/keywords/enums.h"
#include "client/keywords/numbers.h"

namespace Zant {

namespace {

/// The keyword that creates a format; formats without one of their own are created as "floatRgba".
int formatKeyword(_ZantPixelFormat format) {
    switch (format) {
        case PixelCharGray:
            return Enums::bitmaps_charGray;
        case PixelCharRgba:
            return Enums::bitmaps_charRgba;
        case PixelFloatGray:
            return Enums::bitmaps_floatGray;
        case PixelFloatRgb:
        case PixelFloatRgbx:
            return Enums::bitmaps_floatRgb;
        case PixelBitPlane:
            return Enums::bitmaps_bitPlane;
        default:
            return Enums::bitmaps_floatRgba;
    }
}

void* asPointer(uint64_t handle) {
    return reinterpret_cast<void*>(handle);
}

}  // namespace

BitmapSymbol::BitmapSymbol(CommandBuffer& commands, int width, int height, _ZantPixelFormat format,
                           const char* symbolName)
    : Symbol(commands, symbolName) {
    setup(width, height, format);
}

BitmapSymbol::BitmapSymbol(CommandBuffer& commands, void* memory, int width, int height, _ZantPixelFormat format,
                           const char* symbolName)
    : Symbol(commands, symbolName) {
    setupSharedMemory(memory, width, height, format);
}

BitmapSymbol::BitmapSymbol(CommandBuffer& commands, const char* symbolName) : Symbol(commands, symbolName) {
    define(Enums::cmd_bitmap);
    registerAndLink();
}

BitmapSymbol::BitmapSymbol(const char* fileName, CommandBuffer& commands, const char* symbolName)
    : Symbol(commands, symbolName) {
    buffer->addKeyword(Enums::cmd_strings, Enums::cmd_bitmap);
    buffer->addSymbol(*this);
    buffer->addKeyword(Enums::bitmaps_strings, Enums::bitmaps_load);
    buffer->addString(fileName);
    buffer->parse();
    registerAndLink();
}

BitmapSymbol::BitmapSymbol(CommandBuffer& commands, const Bitmap& source, int width, int height, const char* symbolName)
    : Symbol(commands, symbolName) {
    setup(width, height, static_cast<_ZantPixelFormat>(source.format));
    if (bitmap.data) source.copyTo(&bitmap, width, height);
}

BitmapSymbol::~BitmapSymbol() = default;

void BitmapSymbol::registerSymbol(int width, int height, _ZantPixelFormat format) {
    buffer->addKeyword(Enums::cmd_strings, Enums::cmd_bitmap);
    buffer->addSymbol(*this);
    buffer->addKeyword(Enums::bitmaps_strings, formatKeyword(format));
    bitmap.data = nullptr;
    buffer->addVector(Vector(width, height));
    buffer->parse();
    Symbol::registerSymbol(HandleBitmap, nullptr);
}

void BitmapSymbol::registerAndLink() {
    Symbol::registerSymbol(HandleBitmap, nullptr);
    refreshDirectLink();
}

void BitmapSymbol::refreshDirectLink() {
    if (handle == 0) {
        bitmap.data = nullptr;
    } else {
        buffer->instance->library->vtables.bitmap->linkBitmap(asPointer(handle), &bitmap);
    }
}

void BitmapSymbol::setup(int width, int height, _ZantPixelFormat format) {
    registerSymbol(width, height, format);
    refreshDirectLink();
}

void BitmapSymbol::setupSharedMemory(void* memory, int width, int height, _ZantPixelFormat format) {
    setup(0, 0, format);
    setSharedMemory(memory, width, height);
}

int BitmapSymbol::setSharedMemory(void* memory, int width, int height) {
    if (handle == 0) return 0;
    const int answer =
        buffer->instance->library->vtables.bitmap->setSharedMemory(asPointer(handle), memory, width, height);
    refreshDirectLink();
    return answer;
}

void BitmapSymbol::setPixel(int x, int y, const Vector& colour) {
    buffer->addKeyword(Enums::cmd_strings, Enums::cmd_bitmapOp);
    buffer->addSymbol(*this);
    buffer->addKeyword(Enums::bitmapOp_strings, Enums::bitmapOp_plot);
    buffer->addVector(Vector(x, y));
    buffer->addVector(colour);
    buffer->parse();
}

}  // namespace Zant
