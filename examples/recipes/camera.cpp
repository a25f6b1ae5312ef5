// A camera that is kept in sync with the host's: only what has changed is sent.
//
// usage: camera ENGINE_DIRECTORY
// Exit codes: 0 fine, 1 a command was refused, 2 wrong usage, 3 no engine.

#include <cstdio>
#include <zant/zant.hpp>

namespace {

// ---- The host: a camera that tells of each redraw, whether it has changed or not

struct host_camera {
    double x, y, z;
    double heading, pitch;  // degrees
    double field_of_view;   // degrees
    int width, height;

    bool operator==(const host_camera& other) const {
        return x == other.x && y == other.y && z == other.z && heading == other.heading && pitch == other.pitch &&
               field_of_view == other.field_of_view && width == other.width && height == other.height;
    }
};

// ---- The recipe

/// Keeps the engine's camera as the host's is.
class camera_sync {
public:
    explicit camera_sync(zant::scene& scene) : scene_(scene) {}

    /// Call it at each redraw. What the engine has not taken is sent again at the next one.
    /// @return whether the engine's camera is as this one
    bool update(const host_camera& now) {
        if (is_sent_ && now == sent_) return true;
        const zant::axes direction(zant::degrees(now.heading), zant::degrees(now.pitch), zant::degrees(0));
        is_sent_ = scene_.camera3_perspective({double(now.width), double(now.height)}, now.field_of_view,
                                              {{now.x, now.y, now.z}, direction});
        sent_ = now;
        return is_sent_;
    }

private:
    zant::scene& scene_;
    host_camera sent_{};
    bool is_sent_ = false;
};

// ---- End of the recipe

/// What the host shows in a second: the camera moves, rests, turns and rests again.
int show(camera_sync& sync) {
    host_camera camera{0, 1.5, -4, 0, 0, 45, 640, 480};
    int behind = 0;
    for (int redraw = 0; redraw < 60; ++redraw) {
        if (redraw >= 10 && redraw < 20) camera.z += 0.125;
        if (redraw >= 40 && redraw < 45) camera.heading += 3;
        behind += sync.update(camera) ? 0 : 1;
    }
    return behind;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: camera ENGINE_DIRECTORY\n");
        return 2;
    }
    zant::session session(argv[1]);
    zant::scene scene(session);
    camera_sync sync(scene);
    if (show(sync) != 0) {
        std::fprintf(stderr, "camera: %s\n", scene.reason().c_str());
        return session ? 1 : 3;
    }
    std::printf("camera: in sync after 60 redraws\n");
}
