#include "engines/scene/pixmap.h"

#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <istream>
#include <limits>
#include <vector>

#include "engines/scene/pixels.h"

namespace Zant::Engine {
namespace {

float linear(unsigned char byte) {
    const float value = static_cast<float>(byte) / 255;
    return value <= 0.04045F ? value / 12.92F : std::pow((value + 0.055F) / 1.055F, 2.4F);
}

// A number of the header; -1 for anything else. Comments are skipped.
int number(std::istream& file) {
    while ((file >> std::ws).peek() == '#')
        file.ignore(std::numeric_limits<std::streamsize>::max(), '\n');
    int value = -1;
    return file >> value ? value : -1;
}

bool isSide(int side) {
    return side > 0 && side <= Pixels::largestSide;
}

// Null for what is not such a file.
std::shared_ptr<const Picture> read(std::istream& file, std::uintmax_t size) {
    char magic[2] = {};
    file.read(magic, 2);
    if (magic[0] != 'P' || magic[1] != '6') return nullptr;
    const int width = number(file);
    const int height = number(file);
    if (number(file) != 255 || !isSide(width) || !isSide(height)) return nullptr;
    file.get();
    const size_t bytes = static_cast<size_t>(width) * static_cast<size_t>(height) * 3;
    if (bytes > size) return nullptr;  // before there is memory for it
    std::vector<char> data(bytes);
    if (!file.read(data.data(), static_cast<std::streamsize>(bytes))) return nullptr;
    const auto picture = std::make_shared<Picture>(width, height);
    const auto* byte = reinterpret_cast<const unsigned char*>(data.data());
    for (Picture::Pixel& pixel : picture->pixels) {
        pixel = {linear(byte[0]), linear(byte[1]), linear(byte[2]), 1};
        byte += 3;
    }
    return picture;
}

}  // namespace

std::shared_ptr<const Picture> readPixmap(const std::string& file, const char* errorPrefix, std::string& complaints) {
    namespace files = std::filesystem;
    if (file.empty()) return nullptr;
    std::error_code error;
    const files::path path = files::u8path(file);
    const std::uintmax_t size = files::is_regular_file(path, error) ? files::file_size(path, error) : 0;
    std::ifstream stream(path, std::ios::binary);
    std::shared_ptr<const Picture> picture;
    if (stream && !error) picture = read(stream, size);
    if (!picture) {
        complaints +=
            errorPrefix + ("the picture '" + file + "' is not a binary PPM file (P6, 8 bit) that can be read\n");
    }
    return picture;
}

}  // namespace Zant::Engine
