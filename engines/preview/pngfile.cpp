#include "engines/preview/pngfile.h"

#include <png.h>

#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <vector>

namespace Zant::Preview {
namespace {

namespace fs = std::filesystem;

struct ClosesFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, ClosesFile>;

uint8_t byteOf(double value) {
    return static_cast<uint8_t>(std::lround(value * 255));
}

// 0 for a NaN as well.
double clamped(float value) {
    return value > 0 ? std::fmin(value, 1) : 0;
}

uint8_t sRgbOf(float linear) {
    const double value = clamped(linear);
    return byteOf(value <= 0.0031308 ? value * 12.92 : 1.055 * std::pow(value, 1 / 2.4) - 0.055);
}

std::vector<uint8_t> bytesOf(const Engine::Picture& picture) {
    std::vector<uint8_t> bytes;
    bytes.reserve(picture.size() * 4);
    for (const auto& pixel : picture.pixels) {
        for (const float colour : {pixel.red, pixel.green, pixel.blue})
            bytes.push_back(sRgbOf(colour));
        bytes.push_back(byteOf(clamped(pixel.alpha)));
    }
    return bytes;
}

/// @return what went wrong; empty for nothing
std::string write(const Engine::Picture& picture, File file) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(picture.width);
    image.height = static_cast<png_uint_32>(picture.height);
    image.format = PNG_FORMAT_RGBA;
    if (!png_image_write_to_stdio(&image, file.get(), 0, bytesOf(picture).data(), 0, nullptr)) return image.message;
    return std::fclose(file.release()) == 0 ? std::string() : std::strerror(errno);
}

/// A new file beside another one. @return null with errno
File openBeside(const fs::path& target, fs::path& name) {
    for (int number = 0; number < 1000; ++number) {
        name = target;
        name += ".part" + std::to_string(number);
        if (File file{std::fopen(name.string().c_str(), "wbx")}) return file;
        if (errno != EEXIST) return nullptr;
    }
    return nullptr;
}

// The program's own way takes signals of the process over, which are the host's here.
std::string replace(const Engine::Picture& picture, const fs::path& target) {
    fs::path name;
    File file = openBeside(target, name);
    if (!file) return std::strerror(errno);
    std::string wrong = write(picture, std::move(file));
    std::error_code error;
    if (wrong.empty()) fs::rename(name, target, error);
    if (error) wrong = error.message();
    if (!wrong.empty()) fs::remove(name, error);
    return wrong;
}

// Devices and pipes are written to, and never replaced.
std::string writeTo(const Engine::Picture& picture, const fs::path& place) {
    std::error_code error;
    const fs::path target = fs::weakly_canonical(place, error);  // where links lead
    if (error) return error.message();
    const fs::file_type type = fs::status(target, error).type();
    if (type == fs::file_type::not_found || type == fs::file_type::regular || type == fs::file_type::directory)
        return replace(picture, target);
    File file(std::fopen(target.string().c_str(), "wb"));
    return file ? write(picture, std::move(file)) : std::strerror(errno);
}

}  // namespace

std::string writePng(const Engine::Picture& picture, const std::string& file) {
    const std::string wrong = writeTo(picture, file);
    return wrong.empty() ? wrong : "cannot write " + file + ": " + wrong;
}

}  // namespace Zant::Preview
