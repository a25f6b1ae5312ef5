// How long the preview engine takes for whole pictures, as a host waits for them; the best of five of each.
// usage: picture_times ENGINE_DIRECTORY FILE...      (command files, drawn with one and with four samples)
// Exit code 1: one took longer than it should.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "modern/zant.hpp"

namespace {

template <class Work>
double secondsOf(Work work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

bool report(const std::string& what, double seconds, double most) {
    std::printf("%-52s %6.3f s   at most %.1f s   %s\n", what.c_str(), seconds, most,
                seconds <= most ? "met" : "MISSED");
    return seconds <= most;
}

bool draw(zant::scene& scene, const std::string& what, double most) {
    double least = most * 1000;
    for (int round = 0; round < 5; ++round)
        least = std::min(least, secondsOf([&] { scene.render0(); }));
    return report(what, least, most) && scene.first_failure() == nullptr;
}

bool drawFile(const char* directory, const std::string& name) {
    std::ifstream file(name, std::ios::binary);
    const std::string commands{std::istreambuf_iterator<char>(file), {}};
    zant::session engine(directory);
    zant::scene scene(engine);
    scene.on_text([](std::string_view) {});
    scene.run(commands);
    scene.view1_size(zant::vector(640, 480, 0));
    scene.sett1_imageSampler_uniform(1);
    bool met = draw(scene, name + ", 640 x 480, one sample", 0.5);
    scene.sett1_imageSampler_uniform(4);
    return draw(scene, name + ", 640 x 480, four samples", 1.5) && met;
}

bool drawTriangles(const char* directory) {
    constexpr int side = 708;
    std::vector<float> points;
    std::vector<int> corners;
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            const float bump = static_cast<float>((x * 7 + y * 13) % 11) * 0.03F;
            points.insert(points.end(),
                          {static_cast<float>(x - side / 2) / 100, static_cast<float>(y - side / 2) / 100, 6 + bump});
            if (x == 0 || y == 0) continue;
            const int last = y * side + x;
            corners.insert(corners.end(), {last - side - 1, last - side, last - 1, last - side, last, last - 1});
        }
    }
    zant::session engine(directory);
    zant::scene scene(engine);
    zant::mesh mesh(scene, "mesh");
    const double transfer = secondsOf([&] {
        mesh.points(zant::rows<const float>(points.data(), points.size() / 3, 3));
        mesh.polygons_of(3, corners);
    });
    std::printf("%-52s %6.3f s\n", "the transfer of 999698 triangles", transfer);
    return draw(scene, "their tree and picture, 640 x 480", 1.5);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) return std::fputs("usage: picture_times ENGINE_DIRECTORY FILE...\n", stderr), 2;
    bool met = true;
    for (int file = 2; file < argc; ++file)
        met &= drawFile(argv[1], argv[file]);
    return drawTriangles(argv[1]) && met ? 0 : 1;
}
