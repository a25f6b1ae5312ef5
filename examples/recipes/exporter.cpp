// An exporter with a progress bar and cancelling: once to its end, once cancelled in the middle.
//
// usage: exporter ENGINE_DIRECTORY
// Exit codes: 0 fine, 1 a command was refused, 2 wrong usage, 3 no engine.

#include "exporter.h"

#include <cstdio>
#include <string>

namespace {

/// The bar of a host, here of characters: [#########...........]  45 %
void draw_bar(std::size_t done, std::size_t all) {
    const std::size_t length = 20 * done / all;
    const std::string bar = std::string(length, '#') + std::string(20 - length, '.');
    std::printf("\r[%s] %3zu %%", bar.c_str(), 100 * done / all);
    std::fflush(stdout);
}

std::vector<host_ball> make_balls() {
    std::vector<host_ball> balls;
    for (int k = 1; k <= 40; ++k)
        balls.push_back({"Ball " + std::to_string(k), {0.5 * k, 0.25, 0}, 0.25});
    return balls;
}

const char* text_of(exporter::result result) {
    if (result == exporter::result::done) return "done";
    return result == exporter::result::cancelled ? "cancelled" : "failed";
}

/// @param cancelled_at where the user of the example presses "Cancel"
exporter::result run(exporter& to, const std::vector<host_ball>& balls, std::size_t cancelled_at) {
    const auto result = to.run(balls, [&](std::size_t done, std::size_t all) {
        draw_bar(done, all);
        return done != cancelled_at;
    });
    std::printf(" %s\n", text_of(result));
    return result;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: exporter ENGINE_DIRECTORY\n");
        return 2;
    }
    zant::session session(argv[1]);
    zant::scene scene(session);
    exporter cancelled(scene), whole(scene);
    const std::vector<host_ball> balls = make_balls();
    if (run(cancelled, balls, 18) == exporter::result::cancelled &&
        run(whole, balls, balls.size() + 1) == exporter::result::done)
        return 0;
    std::fprintf(stderr, "exporter: %s\n", scene.reason().c_str());
    return session ? 1 : 3;
}
