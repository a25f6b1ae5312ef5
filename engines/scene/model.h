#ifndef ZANT_ENGINES_SCENE_MODEL_H
#define ZANT_ENGINES_SCENE_MODEL_H

#include <array>
#include <cstdint>
#include <memory>
#include <variant>
#include <vector>

namespace Zant::Engine {

using Point = std::array<double, 3>;
using Colour = std::array<float, 3>;  // linear

/// Where a coordinate system stands: p lies at p.x * axes[0] + p.y * axes[1] + p.z * axes[2] + origin. The axes hold
/// the scale.
struct Placement {
    std::array<Point, 3> axes = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
    Point origin = {0, 0, 0};
};

/// Triangles.
struct Facets {
    using Corner = std::array<float, 3>;

    std::vector<Corner> points;
    std::vector<Corner> normals;                     ///< one for each point, or none
    std::vector<std::array<uint32_t, 3>> triangles;  ///< indices of points, all of them there
    std::vector<uint32_t> looks;                     ///< of each triangle, an index; or none: all have the first look
};

/// A curved surface in its own coordinate system.
struct Quadric {
    enum class Kind {
        Ball,  ///< radius 1 around the origin
        Cone,  ///< open, around z from 0 to 1; its radii there are `first` and `second`
        Disc,  ///< radius 1 around the origin, in the plane of x and y
        Plane  ///< of x and y, without an end
    };

    Kind kind = Kind::Ball;
    Placement placement{};
    double first = 1;
    double second = 1;
};

using Shape = std::variant<std::shared_ptr<const Facets>, Quadric>;

/// One object that can be hit.
struct Part {
    uint32_t object = 0;  ///< its number, from 1
    Shape shape{};
    std::vector<Colour> looks = {{0.8F, 0.8F, 0.8F}};  ///< at least one
};

struct Light {
    enum class Kind { Positional, Directional, Spot, Ambient };

    Kind kind = Kind::Positional;
    Engine::Point position = {0, 0, 0};
    Engine::Point direction = {0, 0, 1};  ///< that the light goes in
    Colour colour = {1, 1, 1};
    double angle = 0;     ///< of a spot, from its middle to its edge, in radians
    double softness = 0;  ///< of a spot, how far inside of the edge it begins to fade, in radians
    bool castsShadow = true;
};

struct Camera {
    enum class Kind { Perspective, Parallel };

    Kind kind = Kind::Perspective;
    Placement placement{};  ///< looks along z, y is up, x is to the right
    double width = 1;       ///< of the picture at distance 1; of a parallel camera, at every distance
    double height = 1;
    double shift[2] = {0, 0};  ///< of the middle of the picture, in the same units
};

/// All that a picture is made of. Nothing in it leads back to the instance, so that it stays as it is while commands
/// go on.
struct Model {
    struct Instance {
        size_t group = 0;  ///< the group that is seen in another place
        Placement placement{};
        uint32_t object = 0;  ///< the number of all that it shows; 0: each part has its own
    };

    std::vector<std::vector<Part>> groups;
    std::vector<Instance> instances;  ///< of groups; the scene is made of these alone
    std::vector<Light> lights;        ///< none: a light at the eye
    Colour background = {0, 0, 0};
    bool hasBackground = false;  ///< otherwise what shows nothing is transparent
    Camera camera{};
    int width = 640;
    int height = 480;
    int samples = 1;  ///< of each pixel
};

}  // namespace Zant::Engine

#endif
