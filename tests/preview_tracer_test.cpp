// What the preview engine's tracer hits, against a slow one that asks every surface.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cfenv>
#include <chrono>
#include <cmath>
#include <functional>
#include <random>

#include "engines/preview/embreetracer.h"
#include "engines/scene/plainfloats.h"
#include "referencetracer.h"

namespace Zant::Tests {
namespace {

using namespace Engine;

const auto always = [] { return true; };
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

std::unique_ptr<Tracer> tracerOf(Model model, int threads = 2) {
    auto tracer = Preview::createEmbreeTracer();
    EXPECT_TRUE(tracer->build(std::make_shared<const Model>(std::move(model)), threads, always));
    return tracer;
}

/// Makes scenes; the same number makes the same one.
class Chance {
public:
    explicit Chance(unsigned seed) : generator_(seed) {}

    double between(double low, double high) { return std::uniform_real_distribution<double>(low, high)(generator_); }
    size_t below(size_t count) { return std::uniform_int_distribution<size_t>(0, count - 1)(generator_); }
    Point point(double size) { return {between(-size, size), between(-size, size), between(-size, size)}; }
    Facets::Corner corner(double size) {
        const Point from = point(size);
        return {static_cast<float>(from[0]), static_cast<float>(from[1]), static_cast<float>(from[2])};
    }

    /// Sheared, stretched and mirrored, but not close to flat.
    Placement placement(double distance) {
        Placement made;
        do {
            made.axes = {point(1), point(1), point(1)};
        } while (std::fabs(volume(made)) < 0.1);
        made.origin = point(distance);
        return made;
    }

    std::shared_ptr<const Facets> facets(size_t count) {
        auto made = std::make_shared<Facets>();
        const bool isSmooth = below(2) == 0;
        for (uint32_t i = 0; i < count; ++i) {
            const Point middle = point(2);
            for (int k = 0; k < 3; ++k) {
                const auto offset = corner(0.5);
                made->points.push_back({static_cast<float>(middle[0]) + offset[0],
                                        static_cast<float>(middle[1]) + offset[1],
                                        static_cast<float>(middle[2]) + offset[2]});
                if (isSmooth) made->normals.push_back(corner(1));
            }
            made->triangles.push_back({3 * i, 3 * i + 1, 3 * i + 2});
            made->looks.push_back(i % 5);  // one more than there are
        }
        return made;
    }

    Part part(uint32_t object, size_t kind) {
        Part made;
        made.object = object;
        made.looks.assign(4, {});
        for (auto& look : made.looks)
            look = corner(1);
        if (kind == 4) {
            made.shape = facets(1 + below(80));
        } else {
            Quadric quadric;
            quadric.kind = static_cast<Quadric::Kind>(kind);
            quadric.placement = placement(2);
            quadric.first = between(0, 1);
            quadric.second = between(0, 1);
            made.shape = quadric;
        }
        return made;
    }

    /// @param kind of all its shapes; 5: every kind
    Model model(size_t kind) {
        Model made;
        uint32_t object = 0;
        for (size_t group = 0; group < 3; ++group) {
            made.groups.emplace_back();
            for (size_t i = 1 + below(4); i > 0; --i)
                made.groups.back().push_back(part(++object, kind < 5 ? kind : below(5)));
        }
        for (uint32_t i = 0; i < 6; ++i)
            made.instances.push_back({below(4), placement(3), i % 2 ? 1000 + i : 0});  // the last group is not there
        made.instances.back().placement.axes[1] = made.instances.back().placement.axes[0];
        return made;
    }

    /// Rays of a camera that looks at the scene, of different lengths.
    template <class Look>
    void lookAround(double distance, Look look) {
        const Point eye = {distance, between(-distance, distance), between(-distance, distance)};
        for (int row = 0; row < 48; ++row) {
            for (int column = 0; column < 64; ++column) {
                const Point seen = {0, (column - 31.7) / 12, (row - 23.6) / 12};
                const double scale = between(0.1, 3);
                look(Ray{eye, {(seen[0] - eye[0]) * scale, (seen[1] - eye[1]) * scale, (seen[2] - eye[2]) * scale}});
            }
        }
    }

    static double volume(const Placement& placement) {
        const auto& [x, y, z] = placement.axes;
        return x[0] * (y[1] * z[2] - y[2] * z[1]) + x[1] * (y[2] * z[0] - y[0] * z[2]) +
               x[2] * (y[0] * z[1] - y[1] * z[0]);
    }

private:
    std::mt19937 generator_;
};

bool isClose(const Point& a, const Point& b) {
    return std::fabs(a[0] - b[0]) + std::fabs(a[1] - b[1]) + std::fabs(a[2] - b[2]) < 2e-3;
}

bool isSame(const Hit& hit, const Hit& expected) {
    if (!hit || !expected) return !hit && !expected;
    return std::fabs(hit.distance - expected.distance) <= 1e-4 * expected.distance && hit.object == expected.object &&
           hit.colour == expected.colour && isClose(hit.faceted, expected.faceted) &&
           isClose(hit.normal, expected.normal);
}

TEST(PreviewTracer, HitsWhatIsThere) {
    for (unsigned scene = 0; scene < 36; ++scene) {
        Chance chance(scene);
        const Model model = chance.model(scene % 6);
        const auto tracer = tracerOf(model);
        int rays = 0, hits = 0, different = 0, differentlyBlocked = 0;
        chance.lookAround(scene / 6 % 3 == 2 ? 3000 : 6, [&](Ray ray) {
            const Hit expected = traceSlowly(model, ray);
            different += !isSame(tracer->trace(ray), expected);
            ray.nearest = chance.between(0, 1);
            ray.farthest = chance.between(0.5, 2);
            differentlyBlocked += tracer->isBlocked(ray) != static_cast<bool>(traceSlowly(model, ray));
            hits += static_cast<bool>(expected);
            ++rays;
        });
        EXPECT_EQ(rays, 64 * 48);
        EXPECT_GT(hits, rays / 100) << scene;
        EXPECT_LE(different, rays / 200) << scene;
        EXPECT_LE(differentlyBlocked, rays / 200) << scene;
    }
}

/// The colour of triangle i is i.
Part numbered(uint32_t object, std::shared_ptr<Facets> facets) {
    Part part;
    part.object = object;
    part.looks.clear();
    for (uint32_t i = 0; i < facets->triangles.size(); ++i) {
        part.looks.push_back({static_cast<float>(i), 0, 0});
        facets->looks.push_back(i);
    }
    part.shape = std::move(facets);
    return part;
}

TEST(PreviewTracer, TakesTheFirstOfWhatCoincides) {
    constexpr uint32_t different = 5000, copies = 4;
    const auto facets = std::make_shared<Facets>(*Chance(1).facets(different));
    facets->normals.clear();
    facets->looks.clear();
    for (uint32_t i = different; i < different * copies; ++i) {
        auto [a, b, c] = facets->triangles[i % different];
        const uint32_t turn = i / different;  // other first corners, and another sense
        facets->triangles.push_back(turn == 1   ? std::array{b, c, a}
                                    : turn == 2 ? std::array{c, b, a}
                                                : std::array{a, b, c});
    }
    Model model;
    const Part part = numbered(1, facets);
    model.groups = {{part, part, part}, {part}};
    model.groups[0][1].object = 2;
    model.groups[0][2].object = 3;
    model.instances = {{0, {}, 0}, {1, {}, 7}, {0, {}, 8}};
    std::vector<Hit> first;
    for (const int threads : {1, 2, 4, 4}) {
        const auto tracer = tracerOf(model, threads);
        std::vector<Hit> hits;
        Chance(2).lookAround(6, [&](const Ray& ray) { hits.push_back(tracer->trace(ray)); });
        size_t notFirst = 0, hit = 0, changed = 0;
        if (first.empty()) first = hits;
        for (size_t i = 0; i < hits.size(); ++i) {
            hit += static_cast<bool>(hits[i]);
            notFirst += hits[i] && (hits[i].object != 1 || hits[i].colour[0] >= different);
            changed += hits[i].distance != first[i].distance || hits[i].colour != first[i].colour ||
                       hits[i].faceted != first[i].faceted;
        }
        EXPECT_GT(hit, hits.size() / 2);
        EXPECT_EQ(notFirst, 0U);
        EXPECT_EQ(changed, 0U);
    }
}

TEST(PreviewTracer, TakesTheFirstOfQuadricsThatCoincide) {
    Part triangle;
    auto facets = std::make_shared<Facets>();
    facets->points = {{-9, -9, 0}, {9, -9, 0}, {0, 9, 0}};
    facets->triangles = {{0, 1, 2}};
    triangle.shape = facets;
    Part plane = triangle, disc = triangle;
    plane.shape = Quadric{Quadric::Kind::Plane};
    disc.shape = Quadric{Quadric::Kind::Disc};
    std::array<size_t, 3> order = {0, 1, 2};
    do {
        Model model;
        model.groups.emplace_back();
        for (const size_t index : order)
            model.groups[0].push_back(std::array{triangle, plane, disc}[index]);
        for (uint32_t i = 0; i < 3; ++i)
            model.groups[0][i].object = i + 1;
        model.instances = {{0, {}, 0}};
        const auto tracer = tracerOf(model);
        for (const double x : {0.0, 0.1, 0.3})
            EXPECT_EQ(tracer->trace({{x, 0.2, 5}, {0.01, 0.02, -1}}).object, 1U) << order[0] << order[1] << order[2];
    } while (std::next_permutation(order.begin(), order.end()));
}

// A ray that leaves a convex body is never stopped by the body itself.
TEST(PreviewTracer, DoesNotHitWhereARayBegins) {
    auto sphere = std::make_shared<Facets>();
    constexpr uint32_t rows = 60, columns = 120;
    for (uint32_t row = 0; row <= rows; ++row) {
        for (uint32_t column = 0; column < columns; ++column) {
            const double tilt = M_PI * row / rows, turn = 2 * M_PI * column / columns;
            sphere->points.push_back({static_cast<float>(std::sin(tilt) * std::cos(turn)),
                                      static_cast<float>(std::sin(tilt) * std::sin(turn)),
                                      static_cast<float>(std::cos(tilt))});
            const uint32_t here = row * columns + column, right = row * columns + (column + 1) % columns;
            if (row == rows) continue;
            sphere->triangles.push_back({here, right, here + columns});
            sphere->triangles.push_back({right, right + columns, here + columns});
        }
    }
    Part mesh, ball;
    mesh.object = ball.object = 1;
    mesh.shape = sphere;
    ball.shape = Quadric{};
    for (const Part& part : {mesh, ball}) {
        for (const Point& origin : {Point{0, 0, 0}, Point{1000, -2000, 500}}) {
            Model model;
            model.groups = {{part}};
            model.instances = {{0, {}, 0}};
            model.instances[0].placement.origin = origin;
            model.instances[0].placement.axes[0] = {3, 1, 0};
            const auto tracer = tracerOf(model);
            const double room = 1e-6 * (3 + std::fabs(origin[1]));
            Chance chance(5);
            int hits = 0, blocked = 0;
            for (int i = 0; i < 20000; ++i) {
                Ray ray{chance.point(8), chance.point(1)};
                ray.origin[0] = chance.between(4, 8);
                for (size_t k = 0; k < 3; ++k) {
                    ray.direction[k] += -ray.origin[k];
                    ray.origin[k] += origin[k];
                }
                const Hit hit = tracer->trace(ray);
                if (!hit) continue;
                Ray away;
                double along = 0;
                away.direction = chance.point(1);
                for (size_t k = 0; k < 3; ++k) {
                    away.origin[k] = ray.origin[k] + ray.direction[k] * hit.distance + hit.faceted[k] * room;
                    along += away.direction[k] * hit.faceted[k];
                }
                for (double& component : away.direction)
                    component *= along < 0 ? -1 : 1;
                blocked += tracer->isBlocked(away);
                ++hits;
            }
            EXPECT_GT(hits, 5000);
            EXPECT_EQ(blocked, 0);
        }
    }
}

TEST(PreviewTracer, BearsWhatCannotBeHit) {
    const float infinite = std::numeric_limits<float>::infinity();
    auto facets = std::make_shared<Facets>();
    facets->points = {{-1, -1, 0},      {1, -1, 0}, {0, 1, 0},    {notANumber, 0, 1},
                      {infinite, 0, 1}, {0, 0, 1},  {1e30F, 0, 1}};
    facets->triangles = {{0, 1, 3}, {0, 4, 1}, {0, 1, 2}, {5, 5, 5}, {0, 1, 6}, {3, 3, 4}};
    Part mesh = numbered(1, facets), broken = mesh, nothing = mesh, flat = mesh;
    facets->normals.assign(facets->points.size(), {notANumber, 0, 0});
    broken.shape = Quadric{Quadric::Kind::Cone, {}, std::nan(""), 1};
    nothing.shape = std::shared_ptr<const Facets>();
    Quadric squashed;
    squashed.placement.axes[2] = {0, 0, 0};
    flat.shape = squashed;
    Model model;
    model.groups = {{mesh, broken, nothing, flat}, {}, {nothing}};
    Placement nan, endless, large;
    nan.origin[1] = std::nan("");
    endless.axes[0][0] = std::numeric_limits<double>::infinity();
    large.origin[0] = 1e30;
    for (const Placement& placement : {Placement(), nan, endless, large, Placement{{{{0, 0, 0}}}, {}}})
        for (size_t group = 0; group < 4; ++group)
            model.instances.push_back({group, placement, 0});
    const auto tracer = tracerOf(model);
    const Hit hit = tracer->trace({{0, 0, 5}, {0, 0, -1}});
    EXPECT_EQ(hit.distance, 5);
    EXPECT_EQ(hit.colour[0], 2);
    EXPECT_EQ(hit.normal, (Point{0, 0, 1}));
    const double bad[] = {0, std::nan(""), std::numeric_limits<double>::infinity()};
    for (const double value : bad) {
        EXPECT_FALSE(tracer->trace({{0, 0, 5}, {value, value, -value}}));
        EXPECT_FALSE(tracer->isBlocked({{0, value, 5}, {0, 0, value}}));
        EXPECT_EQ(static_cast<bool>(tracer->trace({{value, 0, 5}, {0, 0, -1}})), value == 0);
    }
    EXPECT_FALSE(tracerOf(Model())->trace({}));
    EXPECT_FALSE(Preview::createEmbreeTracer()->isBlocked({})) << "never built";
}

TEST(PreviewTracer, BearsHostsThatTrapErrors) {
    feenableexcept(FE_DIVBYZERO | FE_INVALID | FE_OVERFLOW);
    const auto tracer = tracerOf(Chance(11).model(5));
    size_t hits = 0;
    {
        const PlainFloats plain;
        Chance(11).lookAround(6, [&](const Ray& ray) { hits += static_cast<bool>(tracer->trace(ray)); });
    }
    EXPECT_EQ(fedisableexcept(FE_ALL_EXCEPT), FE_DIVBYZERO | FE_INVALID | FE_OVERFLOW) << "as the host had it";
    EXPECT_GT(hits, 100U);
}

TEST(PreviewTracer, BearsAMillionEmptyGroups) {
    Model model;
    model.groups.resize(1000000);
    for (size_t i = 0; i < model.groups.size(); ++i)
        model.instances.push_back({i, {}, 0});
    const auto begun = std::chrono::steady_clock::now();
    const auto tracer = tracerOf(model);
    EXPECT_FALSE(tracer->trace({{0, 0, 5}, {0, 0, -1}}));
    EXPECT_LT(std::chrono::steady_clock::now() - begun, std::chrono::seconds(5));
}

TEST(PreviewTracer, StopsWhenItIsTold) {
    Model model;
    model.groups = {{Chance(1).part(1, 4)}};
    auto facets = Chance(2).facets(300000);
    std::get<0>(model.groups[0][0].shape) = facets;
    model.instances = {{0, {}, 0}};
    const auto shared = std::make_shared<const Model>(model);
    const auto tracer = Preview::createEmbreeTracer();
    std::atomic<int> questions{0};
    EXPECT_TRUE(tracer->build(shared, 2, [&] { return ++questions, true; }));
    EXPECT_GT(questions, 5);
    const Ray ray{{0, 0, 9}, {0, 0, -1}};
    EXPECT_TRUE(tracer->trace(ray));
    for (const int last : {0, 2, questions / 2}) {
        std::atomic<int> left{last};
        EXPECT_FALSE(tracer->build(shared, 2, [&] { return left-- > 0; })) << last;
        EXPECT_FALSE(tracer->trace(ray));
    }
    EXPECT_TRUE(tracer->build(shared, 2, always));
    EXPECT_TRUE(tracer->trace(ray));
}

}  // namespace
}  // namespace Zant::Tests
