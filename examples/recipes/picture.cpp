// The pixels of a bitmap of the engine, in a picture file (a binary PPM).
//
// usage: picture ENGINE_DIRECTORY [PICTURE_FILE]
// Exit codes: 0 fine, 1 a command was refused or the file was not written, 2 wrong usage, 3 no engine.

#include <cstddef>
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>
#include <zant/zant.hpp>

namespace {

// ---- The recipe

/// Writes the pixels of a bitmap, whatever their format is in the engine.
/// @return what is wrong, or an empty text
std::string write_picture(const zant::scene& scene, const zant::bitmap& bitmap, const std::string& file_name) {
    const int width = bitmap.width(), height = bitmap.height();
    std::vector<char> bytes(4 * static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    if (!bitmap.read({bytes.data(), width, height, PixelCharRgba})) return scene.reason();
    std::ofstream file(file_name, std::ios::binary);
    file << "P6\n" << width << ' ' << height << "\n255\n";
    for (std::size_t pixel = 0; pixel < bytes.size(); pixel += 4)
        file.write(&bytes[pixel], 3);  // a PPM has no alpha
    file.close();
    return file ? "" : "cannot write " + file_name;
}

// ---- End of the recipe

/// A picture for the example. After scene.render0(), scene.bitmap1_copyView(picture) takes the one that was rendered.
void draw(zant::scene& scene, const zant::bitmap& picture) {
    scene.bitmapOp2_clear(picture, {0, 0, 0.25});
    scene.bitmapOp4_circle(picture, {32, 24}, 16, {1, 0.5, 0});
    scene.bitmapOp4_line(picture, {0, 47}, {63, 47}, {1, 1, 1});
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: picture ENGINE_DIRECTORY [PICTURE_FILE]\n");
        return 2;
    }
    zant::session session(argv[1]);
    zant::scene scene(session);
    const zant::bitmap picture(scene, "picture", 64, 48, PixelFloatRgb);
    draw(scene, picture);
    const std::string file = argc > 2 ? argv[2] : "picture.ppm";
    const std::string fault = write_picture(scene, picture, file);
    if (!fault.empty()) {
        std::fprintf(stderr, "picture: %s\n", fault.c_str());
        return session ? 1 : 3;
    }
    std::printf("picture: written to %s\n", file.c_str());
}
