// An animation of a hundred frames: a mesh with keys, and one picture for each frame.
//
// usage: animation ENGINE_DIRECTORY
// Exit codes: 0 fine, 1 a command was refused, 2 wrong usage, 3 no engine.

#include <array>
#include <cstdio>
#include <zant/zant.hpp>

namespace {

constexpr int frames = 100;
constexpr double frames_per_second = 25;

// ---- The recipe

/// A door that opens: two keys, a quarter turn apart.
void add_keys(zant::scene& scene, const char* door) {
    const double end = frames / frames_per_second;
    const zant::axes open(zant::degrees(90), zant::degrees(0), zant::degrees(0));
    scene.anim1_setFps(frames_per_second);
    scene.animOb3_addKey(door, 0, {{1, 0, 0}});
    scene.animOb3_addKey(door, end, {{1, 0, 0}, open});
}

/// Renders each frame into a file of its own. A frame that the engine refuses does not hold back the next one.
/// @return how many frames were rendered
int render(zant::scene& scene) {
    const zant::scope each_on_its_own(scene, zant::on_failure::go_on);
    int rendered = 0;
    for (int frame = 0; frame < frames; ++frame) {
        std::array<char, 32> file{};
        std::snprintf(file.data(), file.size(), "door%04d.png", frame);
        rendered += scene.sett1_outputTo_png(file.data()) && scene.anim1_renderFrame(frame) ? 1 : 0;
    }
    return rendered;
}

// ---- End of the recipe

void make_door(zant::scene& scene, zant::mesh& door) {
    const float corners[] = {0, 0, 0, 1, 0, 0, 1, 2, 0, 0, 2, 0};
    door.points(zant::rows(corners, 3));
    door.polygons_of(4, std::array<int, 4>{0, 1, 2, 3});
    scene.animOb2_typeMesh("door", door);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: animation ENGINE_DIRECTORY\n");
        return 2;
    }
    zant::session session(argv[1]);
    zant::scene scene(session);
    zant::mesh door(scene, "door");
    make_door(scene, door);
    add_keys(scene, "door");
    const int rendered = scene.failed() ? 0 : render(scene);
    if (rendered != frames) {
        std::fprintf(stderr, "animation: %d of %d frames: %s\n", rendered, frames, scene.reason().c_str());
        return session ? 1 : 3;
    }
    std::printf("animation: %d frames were rendered\n", rendered);
}
