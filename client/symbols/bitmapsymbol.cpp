#include "client/symbols/bitmapsymbol.h"

#include "client/commands/commandbuffer.h"
#include "client/engine/instance.h"
#include "client/keywords/enums.h"

namespace Zant {

namespace {

constexpr int bitmapOpCommand = 55;
constexpr int bitmapCommand = 58;
constexpr int plotOperation = 1;
constexpr int loadKeyword = 1;

/// The keyword that creates a format; formats without one of their own are created as "floatRgba".
int formatKeyword(_ZantPixelFormat format) {
    switch (format) {
        case PixelCharGray:
            return 2;
        case PixelCharRgba:
            return 3;
        case PixelFloatGray:
            return 4;
        case PixelFloatRgb:
        case PixelFloatRgbx:
            return 5;
        case PixelBitPlane:
            return 12;
        default:
            return 6;
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
    define(bitmapCommand);
    registerAndLink();
}

BitmapSymbol::BitmapSymbol(const char* fileName, CommandBuffer& commands, const char* symbolName)
    : Symbol(commands, symbolName) {
    buffer->addKeyword(Enums::cmd_strings, bitmapCommand);
    buffer->addSymbol(*this);
    buffer->addKeyword(Enums::bitmaps_strings, loadKeyword);
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
    buffer->addKeyword(Enums::cmd_strings, bitmapCommand);
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
    buffer->addKeyword(Enums::cmd_strings, bitmapOpCommand);
    buffer->addSymbol(*this);
    buffer->addKeyword(Enums::bitmapOp_strings, plotOperation);
    buffer->addVector(Vector(x, y));
    buffer->addVector(colour);
    buffer->parse();
}

}  // namespace Zant
