// Textures from memory: pictures of the host become bitmaps, textures and surfaces, without a file in between.
//
// usage: textures ENGINE_DIRECTORY
// Exit codes: 0 fine, 1 a command was refused, 2 wrong usage, 3 no engine.

#include <cstddef>
#include <cstdio>
#include <string>
#include <vector>
#include <zant/zant.hpp>

namespace {

// ---- The host: pictures in its memory, their last row first, as many hosts have them

struct host_picture {
    std::string name;  // what the user has called it
    int width, height;
    std::vector<unsigned char> rgba;
};

host_picture make_checks(const std::string& name, int side, unsigned char shade) {
    host_picture picture{name, side, side, {}};
    for (int k = 0; k < side * side; ++k) {
        const unsigned char value = (k % side + k / side) % 2 == 0 ? shade : 255;
        picture.rgba.insert(picture.rgba.end(), {value, value, 255, 255});
    }
    return picture;
}

// ---- The recipe

/// Everything that a picture of the host is in the engine. Members go last declared, first deleted.
struct textured_surface {
    zant::bitmap bitmap;
    zant::symbol texture, surface;
};

/// The rows of a picture from its last one to its first: a negative stride. The bitmap copies them.
zant::const_pixels upside_down(const host_picture& picture) {
    const std::ptrdiff_t stride = std::ptrdiff_t{4} * picture.width;
    return {picture.rgba.data() + (picture.height - 1) * stride, picture.width, picture.height, PixelCharRgba, -stride};
}

textured_surface make_surface(zant::scene& scene, const zant::symbol& mapping, const host_picture& picture) {
    textured_surface made{{scene, picture.name + " pixels", upside_down(picture)},
                          {scene, picture.name + " texture"},
                          {scene, picture.name}};
    scene.texture3_bitmap(made.texture, mapping, made.bitmap);
    scene.surface2_diffuse(made.surface, made.texture);
    return made;
}

/// The surfaces, for as long as the host shows them: they can stand in a vector, and the engine's go with them.
std::vector<textured_surface> make_surfaces(zant::scene& scene, const zant::symbol& mapping,
                                            const std::vector<host_picture>& pictures) {
    std::vector<textured_surface> surfaces;
    for (const host_picture& picture : pictures)
        surfaces.push_back(make_surface(scene, mapping, picture));
    return surfaces;
}

// ---- End of the recipe

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: textures ENGINE_DIRECTORY\n");
        return 2;
    }
    zant::session session(argv[1]);
    zant::scene scene(session);
    zant::symbol mapping(scene, "planar");
    scene.mapping4_rect(mapping, {1, 0, 0}, {0, 1, 0}, {0, 0, 1});
    const auto surfaces =
        make_surfaces(scene, mapping,
                      {make_checks("Tiles 1", 16, 64), make_checks("Tiles 2", 8, 128), make_checks("Fußboden", 4, 0)});
    for (const textured_surface& made : surfaces)
        std::printf("textures: %s, %d x %d pixels\n", std::string(made.surface.name()).c_str(), made.bitmap.width(),
                    made.bitmap.height());
    if (scene.failed()) {
        std::fprintf(stderr, "textures: %s\n", scene.reason().c_str());
        return session ? 1 : 3;
    }
}
