// A C++ host in one file: a listener of its own is the window of a picture in the making, says how far it is, and
// writes what it has been shown as a PNG file.
//
// usage: window ENGINE_DIRECTORY PICTURE.png FILE...      (the directory with its final separator)
// Exit codes: 0 fine, 1 a command was refused or the picture was not written, 2 wrong usage, 3 no engine.

#include <png.h>
#include <zant/engines/eventrecords.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

#include "client/zant.h"

namespace {

/// A part of a picture is linear light, a PNG file is sRGB.
unsigned char byteOf(float linear) {
    const double value = linear > 0 ? std::min(linear, 1.0F) : 0;  // and 0 for what is no number
    const double encoded = value <= 0.0031308 ? value * 12.92 : 1.055 * std::pow(value, 1 / 2.4) - 0.055;
    return static_cast<unsigned char>(encoded * 255 + 0.5);
}

/// The window: keeps the pixels as bytes.
class Window : public Zant::InstanceLinkedListener {
public:
    void* createWindow() override { return this; }

    int setWindowSize(void*, const _ZantEventWindow& record) override {
        const Zant::Engine::WindowSize* size = Zant::Engine::windowSize(instance, record);
        if (!size) return 0;  // another engine: no window
        width = size->width;
        height = size->height;
        pixels.assign(4 * static_cast<std::size_t>(width) * static_cast<std::size_t>(height), 0);
        return 1;
    }

    void setPixels(void*, const _ZantEventPixelTable& record) override {
        const Zant::Engine::PixelTable* table = Zant::Engine::pixelTable(instance, record);
        for (int y = 0; table && y < table->height; ++y) {
            for (int x = 0; x < table->width; ++x)
                setPixel(table->left + x, table->top + y, table->pixel(x, y));
        }
    }

    void setWindowTitle(void*, const char* title) override { std::cout << '\r' << title << std::flush; }
    void destroyWindow(void*) override { std::cout << '\n'; }
    void textLine(void*, const char* text) override { std::cout << text; }
    void textNewLine(void*) override { std::cout << '\n'; }

    /// @return false when there was no picture, or the file cannot be written
    bool write(const char* file) const {
        png_image image{};
        image.version = PNG_IMAGE_VERSION;
        image.width = static_cast<png_uint_32>(width);
        image.height = static_cast<png_uint_32>(height);
        image.format = PNG_FORMAT_RGBA;
        return width > 0 && png_image_write_to_file(&image, file, 0, pixels.data(), 0, nullptr);
    }

private:
    void setPixel(int x, int y, const float* rgba) {
        unsigned char* pixel =
            &pixels[4 * (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x))];
        for (int part = 0; part < 3; ++part)
            pixel[part] = byteOf(rgba[part]);
        pixel[3] = static_cast<unsigned char>(std::clamp(rgba[3], 0.0F, 1.0F) * 255 + 0.5F);
    }

    int width = 0;
    int height = 0;
    std::vector<unsigned char> pixels;
};

int parseFile(Zant::Instance& instance, const char* name) {
    std::ifstream file(name, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    return instance.parse(text.c_str(), name, Zant::ParseText);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::cerr << "usage: window ENGINE_DIRECTORY PICTURE.png FILE...\n";
        return 2;
    }
    Window window;
    Zant::Library* library = Zant::getLibrary(argv[1]);
    Zant::Instance* instance = library->createInstanceWithListner(&window);
    if (!instance) {
        std::cerr << "window: no engine: " << library->getLoadError() << "\n";
        return 3;
    }
    int code = 0;
    for (int i = 3; i < argc; ++i)
        code |= parseFile(*instance, argv[i]);
    code |= instance->parse("render;", "window", Zant::ParseText);
    library->releaseInstance(instance);
    if (!window.write(argv[2])) {
        std::cerr << "window: no picture in " << argv[2] << "\n";
        return 1;
    }
    return code ? 1 : 0;
}
