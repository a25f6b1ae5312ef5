// The pictures of whole scenes, sent as commands: what they show, where it stands, and what becomes of bad ones.

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <random>

#include "client/encoding/commandtextbuffer.h"
#include "client/engine/instance.h"
#include "client/engine/library.h"
#include "client/engine/raytrace.h"
#include "client/listeners/linkedlisteners.h"
#include "client/symbols/bitmap.h"
#include "client/symbols/vertexmap.h"
#include "engines/records/eventrecords.h"
#include "engines/records/rayrecords.h"

#include "referencetracer.h"

namespace Zant::Tests {
namespace {

using Engine::Model;
using Engine::Part;
using Engine::Point;
using Engine::Quadric;

/// Keeps what the window shows, and the text.
class Eye : public InstanceLinkedListener {
public:
    int width = 0, height = 0;
    std::vector<float> rgba, depths;
    std::vector<uint32_t> objects;
    std::string text;

    void* createTextStream() override { return this; }
    void textLine(void*, const char* line) override { text += line; }
    void textNewLine(void*) override { text += '\n'; }
    void* createWindow() override { return this; }
    int setWindowSize(void*, const _ZantEventWindow& record) override {
        const Engine::WindowSize& size = *Engine::windowSize(instance, record);
        width = size.width, height = size.height;
        const auto pixels = static_cast<size_t>(width) * static_cast<size_t>(height);
        rgba.assign(4 * pixels, -1);
        depths.assign(pixels, -1);
        objects.assign(pixels, ~0U);
        return 1;
    }
    void setPixels(void*, const _ZantEventPixelTable& record) override {
        const Engine::PixelTable& table = *Engine::pixelTable(instance, record);
        for (int y = 0; y < table.height; ++y) {
            for (int x = 0; x < table.width; ++x) {
                const auto place = static_cast<size_t>((table.top + y) * width + table.left + x);
                const size_t given = static_cast<size_t>(y) * table.valueStride / 4 + static_cast<size_t>(x);
                std::copy_n(table.pixel(x, y), 4, &rgba[4 * place]);
                depths[place] = table.depths[given];
                objects[place] = table.objects[given];
            }
        }
    }
    std::string takeText() { return std::exchange(text, {}); }
};

/// The preview engine with one instance and its eye.
class Studio {
public:
    Eye eye;
    Library library{ZANT_PREVIEW_DIR};
    Instance* instance = library.createInstanceWithListner(&eye);

    int parse(const std::string& commands) { return instance->parse(commands.c_str(), "test", ParseText); }
    ~Studio() { library.releaseInstance(instance); }
};

std::string textOf(const Point& point) {
    char text[200];
    std::snprintf(text, sizeof text, "(%.17g,%.17g,%.17g)", point[0], point[1], point[2]);
    return text;
}

std::string textOf(double number) {
    char text[40];
    std::snprintf(text, sizeof text, "%.17g", number);
    return text;
}

/// A coordinate system as text, and as models have it.
struct Frame {
    std::string text;
    Engine::Placement placement;
};

/// Scenes by chance, as commands and as the model that they stand for.
class SceneMaker {
public:
    explicit SceneMaker(unsigned seed) : random_(seed) {}

    std::string commands;
    Model model;

    void make(size_t objects) {
        model.groups.resize(2);
        commands += "group select,\"group\";";
        for (size_t number = 0; number < objects / 2; ++number)
            addObject(1);
        commands += "group select;";
        for (size_t number = 0; number < objects / 2; ++number)
            addObject(0);
        model.instances.push_back({0, {}, 0});
        for (int number = 0; number < 3; ++number) {
            const Frame frame = frameAround(4);
            commands += "instanceAdd \"group\"," + frame.text + ";";
            model.instances.push_back({1, frame.placement, ++number_});
        }
        addCamera();
    }

private:
    double between(double low, double high) { return std::uniform_real_distribution<double>(low, high)(random_); }
    Point point(double size) { return {between(-size, size), between(-size, size), between(-size, size)}; }

    Frame frameAround(double size) {
        const Point place = point(size), angles = point(170),
                    scale = {between(0.3, 2), between(0.3, 2), between(0.3, 2)};
        const std::string hpb = textOf(angles), scales = textOf(scale);
        const double degree = std::acos(-1.0) / 180;
        const AxesHpb axes(angles[0] * degree, angles[1] * degree, angles[2] * degree, scale[0], scale[1], scale[2]);
        Matrix3x3 matrix;
        Axes::toMatrix(axes, matrix);
        Frame frame{textOf(place) + "@<" + hpb.substr(1, hpb.size() - 2) + ">*" + scales, {}};
        for (int axis = 0; axis < 3; ++axis) {
            for (int k = 0; k < 3; ++k)
                frame.placement.axes[static_cast<size_t>(axis)][static_cast<size_t>(k)] = matrix(axis, k);
        }
        frame.placement.origin = place;
        return frame;
    }

    void add(size_t group, const std::string& command, Engine::Shape shape) {
        commands += command + ";";
        Part part;
        part.object = ++number_;
        part.shape = std::move(shape);
        model.groups[group].push_back(std::move(part));
    }

    static Engine::Shape facets(const std::vector<Point>& points, std::vector<std::array<uint32_t, 3>> triangles) {
        auto made = std::make_shared<Engine::Facets>();
        for (const Point& at : points)
            made->points.push_back({static_cast<float>(at[0]), static_cast<float>(at[1]), static_cast<float>(at[2])});
        made->triangles = std::move(triangles);
        return std::shared_ptr<const Engine::Facets>(std::move(made));
    }

    void addObject(size_t group) {
        static constexpr void (SceneMaker::*kinds[])(size_t) = {
            &SceneMaker::addSphere,    &SceneMaker::addEllipsoid, &SceneMaker::addCone,  &SceneMaker::addTube,
            &SceneMaker::addRectangle, &SceneMaker::addTriangle,  &SceneMaker::addArrow, &SceneMaker::addMesh};
        (this->*kinds[kind_++ % std::size(kinds)])(group);
    }

    void addSphere(size_t group) {
        const Point centre = point(3);
        const double r = between(0.2, 1);
        add(group, "objectAdd sphere," + textOf(centre) + "," + textOf(r) + ",s,m",
            Quadric{Quadric::Kind::Ball, {{{{r, 0, 0}, {0, r, 0}, {0, 0, r}}}, centre}});
    }
    void addEllipsoid(size_t group) {
        const Frame frame = frameAround(3);
        const std::string name = "shape" + std::to_string(number_);
        add(group, "shape " + name + ",ellipsoid," + frame.text + "; shapeAdd " + name + ",s,m",
            Quadric{Quadric::Kind::Ball, frame.placement});
    }
    void addRound(size_t group, const std::string& word, double first, double second, const std::string& radii) {
        Frame frame = frameAround(3);
        const double length = between(0.3, 2);
        const std::string command =
            "objectAdd " + word + "," + frame.text + "," + radii + "," + textOf(length) + ",s,m";
        for (double& component : frame.placement.axes[2])
            component *= length;
        add(group, command, Quadric{Quadric::Kind::Cone, frame.placement, first, second});
    }
    void addCone(size_t group) {
        const double first = between(0.1, 1), second = between(0.1, 1);
        addRound(group, "cone", first, second, textOf(first) + "," + textOf(second));
    }
    void addTube(size_t group) {
        const double radius = between(0.1, 1);
        addRound(group, "tube", radius, radius, textOf(radius));
    }
    void addRectangle(size_t group) {
        const Point a = point(3), u = point(1.5), v = point(1.5);
        const auto at = [&](double s, double t) {
            return Point{a[0] + s * u[0] + t * v[0], a[1] + s * u[1] + t * v[1], a[2] + s * u[2] + t * v[2]};
        };
        add(group, "objectAdd rectangle," + textOf(a) + "," + textOf(u) + "," + textOf(v),
            facets({at(0, 0), at(1, 0), at(1, 1), at(0, 1)}, {{0, 1, 2}, {0, 2, 3}}));
    }
    void addTriangle(size_t group) {
        const Point a = point(3), b = point(3), c = point(3);
        add(group, "objectAdd triangle," + textOf(a) + "," + textOf(b) + "," + textOf(c) + ",s,m",
            facets({a, b, c}, {{0, 1, 2}}));
    }

    // An arrow, which is concave: a fan around its first point would fill its notch.
    std::vector<Point> arrow() {
        const Point a = point(2), u = point(2), v = point(2);
        const double outline[][2] = {{0, 0}, {2, 1}, {0, 2}, {0.7, 1}};
        std::vector<Point> points;
        for (const auto& [s, t] : outline)
            points.push_back({a[0] + s * u[0] + t * v[0], a[1] + s * u[1] + t * v[1], a[2] + s * u[2] + t * v[2]});
        return points;
    }
    void addArrow(size_t group) {
        const std::vector<Point> points = arrow();
        std::string list;
        for (const Point& at : points)
            list += (list.empty() ? "{" : ",") + textOf(at);
        add(group, "objectAdd polygon," + list + "},s,m", facets(points, {{0, 1, 3}, {1, 2, 3}}));
    }
    void addMesh(size_t group) {
        const std::vector<Point> points = arrow();
        const std::string name = "mesh" + std::to_string(number_);
        commands += "vertexMap p" + name + ",3,fixedSize,4,1;";
        for (size_t row = 0; row < points.size(); ++row)
            commands += "vertex3d p" + name + "," + std::to_string(row) + "," + textOf(points[row]) + ";";
        commands += "mesh " + name + "; meshOp " + name + ",points,p" + name + "; meshAddPoly " + name +
                    ",0,{3,2,1,0}; meshOp " + name + ",flip;";
        add(group, "group attachSet,mesh," + name, facets(points, {{0, 1, 3}, {1, 2, 3}}));
    }

    void addCamera() {
        const bool isParallel = number_ % 2 == 0;
        const Frame frame = frameAround(1);
        const double amount = isParallel ? between(4, 9) : between(30, 100);
        const Point shift = point(0.2);
        commands += std::string("camera ") + (isParallel ? "parallel" : "perspective") + ",(64,48)," + textOf(amount) +
                    "," + frame.text + "; camera shift," + textOf(shift) + ";";
        Engine::Camera& camera = model.camera;
        camera.kind = isParallel ? Engine::Camera::Kind::Parallel : Engine::Camera::Kind::Perspective;
        camera.placement = frame.placement;
        camera.width = isParallel ? amount : 2 * std::tan(amount * std::acos(-1.0) / 360);
        camera.height = camera.width * 48 / 64;
        camera.shift[0] = shift[0] * camera.width, camera.shift[1] = shift[1] * camera.height;
    }

    std::mt19937 random_;
    uint32_t number_ = 0;
    size_t kind_ = 0;
};

Point unit(const Point& a) {
    const double length = std::sqrt(a[0] * a[0] + a[1] * a[1] + a[2] * a[2]);
    return {a[0] / length, a[1] / length, a[2] / length};
}

Engine::Hit expectedHit(const Model& model, int x, int y) {
    const Engine::Camera& camera = model.camera;
    const double right = ((x + 0.5) / 64 - 0.5) * camera.width + camera.shift[0];
    const double up = (0.5 - (y + 0.5) / 48) * camera.height + camera.shift[1];
    const auto& axes = camera.placement.axes;
    Engine::Ray ray;
    ray.origin = camera.placement.origin;
    ray.direction = axes[2];
    Point& moved = camera.kind == Engine::Camera::Kind::Parallel ? ray.origin : ray.direction;
    for (size_t k = 0; k < 3; ++k)
        moved[k] += right * axes[0][k] + up * axes[1][k];
    ray.direction = unit(ray.direction);
    return traceSlowly(model, ray);
}

TEST(PreviewScenes, StandWhereTheirCommandsSay) {
    size_t differing = 0, hits = 0;
    constexpr unsigned scenes = 24;
    for (unsigned seed = 0; seed < scenes; ++seed) {
        SceneMaker scene(seed);
        scene.make(16);
        Studio studio;
        ASSERT_EQ(studio.parse(scene.commands + "render;"), 0) << studio.eye.text << scene.commands;
        ASSERT_EQ(studio.eye.width, 64);
        for (int y = 0; y < 48; ++y) {
            for (int x = 0; x < 64; ++x) {
                const Engine::Hit hit = expectedHit(scene.model, x, y);
                const auto place = static_cast<size_t>(y * 64 + x);
                const double depth = studio.eye.depths[place];
                const bool isSame = studio.eye.objects[place] == hit.object &&
                                    (!hit || std::fabs(depth - hit.distance) <= 1e-4 * hit.distance);
                differing += !isSame;
                hits += hit.object != 0;
            }
        }
    }
    constexpr size_t pixels = scenes * 64 * 48;
    EXPECT_GT(hits, pixels / 3);
    EXPECT_LE(differing, pixels / 200);
}

// Two meshes in the same place, and triangles beside each other: which one is seen is not a matter of chance.
TEST(PreviewScenes, AreTheSameForEveryNumberOfThreads) {
    std::string commands = "sett imageSampler,uniform,3; view size,(150,110); lightAdd point,{(1,3,-3)},(1,1,1);";
    commands += "vertexMap points,3,fixedSize,400,1;";
    for (int row = 0; row < 400; ++row)
        commands += "vertex3d points," + std::to_string(row) + ",(" + std::to_string(row % 20 - 10) + "," +
                    std::to_string(row / 20 - 10) + "," + std::to_string(14 + row * 7 % 5) + ");";
    for (const std::string name : {"a", "b", "c"}) {
        commands += "mesh " + name + "; meshOp " + name + ",points,points; material m" + name + "; materialSet m" +
                    name + ",color,(" +
                    (name == "a"   ? "1,0,0"
                     : name == "b" ? "0,1,0"
                                   : "0,0,1") +
                    "); meshOp " + name + ",tag,0,material,m" + name + ";";
        for (int row = 0; row < 379; ++row)
            commands += "meshAddPoly " + name + ",0,{" + std::to_string(row) + "," + std::to_string(row + 1) + "," +
                        std::to_string(row + 20) + "};";
    }
    std::vector<float> first;
    for (const int threads : {1, 2, 4, 1}) {
        Studio studio;
        ASSERT_EQ(studio.parse(commands + "threads " + std::to_string(threads) + "; render;"), 0) << studio.eye.text;
        if (first.empty()) first = studio.eye.rgba;
        EXPECT_TRUE(std::memcmp(first.data(), studio.eye.rgba.data(), first.size() * sizeof(float)) == 0) << threads;
    }
}

uint32_t middle(const Studio& studio) {
    return studio.eye.objects[static_cast<size_t>(studio.eye.height / 2 * studio.eye.width + studio.eye.width / 2)];
}

TEST(PreviewScenes, SeeWhatHasChangedBetweenPictures) {
    Studio studio;
    const std::string mesh =
        "view size,(20,20); vertexMap map,3,fixedSize,3,1; vertex3d map,0,(-1,-1,5); vertex3d map,1,(1,-1,5);"
        "vertex3d map,2,(0,1,5); mesh mesh; meshOp mesh,points,map; meshAddPoly mesh,0,{0,1,2};";
    ASSERT_EQ(studio.parse(mesh + "render;"), 0);
    EXPECT_EQ(middle(studio), 1U);
    const size_t place = 10 * 20 + 10;
    EXPECT_NEAR(studio.eye.depths[place], 5, 0.1);

    CommandTextBuffer buffer(studio.instance);
    VertexMapSymbol map(buffer, "map");
    map.Symbol::registerSymbol();
    map.refreshDirectLink();
    ASSERT_NE(map.direct(), nullptr);
    auto* const values = static_cast<float*>(map.direct()->record->values);
    for (int row = 0; row < 3; ++row)
        values[3 * row + 2] = 9;  // by the engine's own memory
    ASSERT_EQ(studio.parse("render;"), 0);
    EXPECT_NEAR(studio.eye.depths[place], 9, 0.1);

    ASSERT_EQ(studio.parse("objectAdd sphere,(0,0,3),1,s,m; render;"), 0);
    EXPECT_NEAR(studio.eye.depths[place], 2, 0.1);
    values[2] = std::numeric_limits<float>::quiet_NaN();
    map.registered = 0;
    ASSERT_EQ(studio.parse("group clear; render;"), 0);
    EXPECT_EQ(middle(studio), 0U);
}

// The middle of a wall that is looked at straight on.
TEST(PreviewScenes, LookAsTheirCommandsSay) {
    const std::string wall = "objectAdd rectangle,(-9,-9,5),(18,0,0),(0,18,0),1,";
    const std::string grey = wall + "none,none;", paint = "color paint,(0.2,0.4,0.6);";
    const std::string lamp = grey + "objectAdd sphere,(1.5,0,2.5),0.3,none,none; light lamp,point,{(3,0,0)},(1,1,1);";
    const double slant = 0.8 * 5 / std::sqrt(34.0);
    const struct {
        std::string commands;
        Vector colour;  // with alpha
    } rows[] = {
        {"", Vector(0, 0, 0, 0)},
        {"background color,(0.1,0.2,0.3);", Vector(0.1, 0.2, 0.3, 1)},
        {grey, Vector(0.8, 0.8, 0.8, 1)},
        {paint + wall + "paint,none;", Vector(0.2, 0.4, 0.6, 1)},
        {paint + "surface s,diffuse,paint;" + wall + "s,none;", Vector(0.2, 0.4, 0.6, 1)},
        {"surface s,black;" + wall + "s,none;", Vector(0, 0, 0, 1)},
        {wall + "m,none; material m; materialSet m,color,(0.5,0.25,1);", Vector(0.5, 0.25, 1, 1)},
        {"material m; materialSet m,color,(1,0,0); texture t,color,(0,0,1); materialSet m,texture,color,t;" + wall +
             "m,none;",
         Vector(0, 0, 1, 1)},
        {"surface s,diffuse,t; surface t,diffuse,s;" + wall + "s,none;", Vector(0.8, 0.8, 0.8, 1)},
        {grey + "lightAdd ambient,(0.5,0.25,1);", Vector(0.4, 0.2, 0.8, 1)},
        {grey + "lightAdd parallel,{(0,0,1)},(0.5,0.5,0.5);", Vector(0.4, 0.4, 0.4, 1)},
        {grey + "lightAdd parallel,{(0,0,-1)},(1,1,1);", Vector(0, 0, 0, 1)},
        {grey + "lightAdd spot,{(0,0,0)},{(0,0,1)},(1,1,1),20;", Vector(0.8, 0.8, 0.8, 1)},
        {grey + "lightAdd spot,{(0,0,0)},{(0,1,4)},(1,1,1),20;", Vector(0, 0, 0, 1)},
        {lamp + "lightAdd symbol,lamp;", Vector(0, 0, 0, 1)},
        {lamp + "lightOp lamp,shadow,0; lightAdd group,{lamp};", Vector(slant, slant, slant, 1)},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.commands);
        Studio studio;
        ASSERT_EQ(studio.parse("view size,(5,5);" + row.commands + "render;"), 0) << studio.eye.text;
        for (size_t part = 0; part < 4; ++part)
            EXPECT_NEAR(studio.eye.rgba[12 * 4 + part], row.colour.values[part], 2e-5);
    }
}

TEST(PreviewScenes, ThatAreBadEndWithALineAndAnAnswer) {
    std::string million, chain;
    for (int number = 0; number < 20000; ++number)
        million += "group select,\"g" + std::to_string(number) + "\"; group select; instanceAdd \"g" +
                   std::to_string(number) + "\",(0,0,0)@<>;";
    for (int number = 0; number < 60; ++number)
        chain += "group select,\"g" + std::to_string(number) + "\"; instanceAdd \"g" + std::to_string(number + 1) +
                 "\",(0,0,0)@<>; instanceAdd \"g" + std::to_string(number + 1) + "\",(0,0,1)@<>;";
    const struct {
        const char* name;
        std::string commands;
        bool isFine;
        const char* line;
    } rows[] = {
        {"nothing", "", true, ""},
        {"no camera", "objectAdd sphere,(0,0,5),1,s,m;", true, ""},
        {"no size", "view size,(0,10);", false, "a picture cannot have the size 0 x 10"},
        {"a large size", "view size,(100000,100000);", false, "a picture cannot have the size 100000 x 100000"},
        {"a camera without a size", "camera perspective,(0,0),45,(0,0,0)@<>;", false, "cannot have the size 0 x 0"},
        {"half a turn", "camera perspective,(64,48),180,(0,0,0)@<>;", false, "a camera cannot see 180 degrees"},
        {"samples", "sett imageSampler,uniform,0;", false, "a pixel has 1 to 256 samples"},
        {"aspect", "view camAspect,0;", false, "a pixel cannot have this aspect"},
        {"a missing group", "instanceAdd \"nobody\",(0,0,0)@<>;", true, "instance of the missing group \"nobody\" 1"},
        {"itself",
         "group select,\"a\"; objectAdd sphere,(0,0,5),1,s,m; instanceAdd \"a\",(0,0,1)@<>; group select;"
         "instanceAdd \"a\",(0,0,0)@<>;",
         true, "group \"a\" inside itself 1"},
        {"empty groups", million, true, ""},
        {"twice sixty times", chain + "group select; instanceAdd \"g0\",(0,0,0)@<>;", true,
         "instance beyond a million"},
        {"a flat place", "objectAdd ellipsoid,(0,0,5)@<>*(0,0,0),s,m; objectAdd cone,(0,0,5)@<>,0,0,0,s,m;", true, ""},
        {"no direction", "objectAdd circle,(0,0,5),(0,0,0),1,s,m; objectAdd wall,(0,0,5),(0,0,0),s,m;", true, ""},
        {"points that are gone",
         "vertexMap p,3; vertex3d p,0,(0,0,5); vertex3d p,1,(1,0,5); vertex3d p,2,(0,1,5); mesh m; meshOp m,points,p;"
         "meshAddPoly m,0,{0,1,2}; vertexMapOp p,resize,2;",
         true, "polygon of \"m\" with missing points 1"},
        {"two corners", "objectAdd polygon,{(0,0,5),(1,0,5)},s,m; objectAdd polygon,{},s,m;", true, ""},
        {"another format", "view save,\"x\",jpg;", false, "this engine writes PNG, and no jpg"},
        {"no picture", "view save,\"x\",png;", false, "there is no picture yet"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Studio studio;
        EXPECT_EQ(studio.parse("view size,(16,12);" + row.commands) == 0, row.isFine) << studio.eye.text;
        EXPECT_EQ(studio.parse("render;"), 0);
        EXPECT_NE(studio.eye.text.find(row.line), std::string::npos) << studio.eye.text;
    }
}

TEST(PreviewScenes, SayOnceWhatTheyDoNotShow) {
    Studio studio;
    ASSERT_EQ(studio.parse("view size,(8,8); fg gradients,0.5,2; fg reset; fg reset; objectAdd testShape,s,m; render;"),
              0);
    EXPECT_EQ(studio.eye.takeText(), "Not shown: fg gradients 1, fg reset 2, objectAdd testShape 1\n");
    ASSERT_EQ(studio.parse("render;"), 0);
    EXPECT_EQ(studio.eye.takeText(), "");
}

TEST(PreviewScenes, AnswerTheRaysOfHosts) {
    Studio studio;
    ASSERT_EQ(studio.parse("objectAdd sphere,(0,0,5),1,s,m; objectAdd sphere,(0,0,-5),2,s,m;"), 0);
    const std::unique_ptr<RaytraceAccess> access(studio.instance->createRaytraceAccess());
    const size_t dims[3] = {4, 1, 1};
    ASSERT_TRUE(access->allocBuffer(dims));
    auto* const rays = reinterpret_cast<zl_ray_input*>(access->input.blocks[0]);
    rays[0] = {{0, 0, 0}, {0, 0, 2}};
    rays[1] = {{0, 0, 0}, {0, 0, -1}};
    rays[2] = {{0, 0, 0}, {1, 0, 0}};
    rays[3] = {{0, 0, 0}, {0, 0, 0}};
    ASSERT_EQ(studio.parse("rayCast init;"), 0);
    const auto* const hits = reinterpret_cast<const zl_ray_output*>(access->output.blocks[0]);
    EXPECT_NEAR(hits[0].distance, 2, 1e-5);
    EXPECT_NEAR(hits[0].normal[2], -1, 1e-5);
    EXPECT_EQ(hits[0].object, 1U);
    EXPECT_NEAR(hits[1].distance, 3, 1e-5);
    EXPECT_EQ(hits[1].object, 2U);
    for (const int miss : {2, 3}) {
        EXPECT_EQ(hits[miss].hit, 0);
        EXPECT_TRUE(std::isinf(hits[miss].distance));
    }
}

TEST(PreviewScenes, FillBitmapsWithWhatTheCameraMeets) {
    Studio studio;
    ASSERT_EQ(studio.parse("objectAdd sphere,(0,0,5),1,s,m; camera perspective,(9,9),45,(0,0,0)@<>;"
                           "bitmap z,floatGray; bitmap hit,floatRgb; bitmap normal,floatRgb;"
                           "rayCast camera,(9,9),z,hit,normal;"),
              0);
    const struct {
        const char* name;
        double component;  // the last one, in the middle
    } rows[] = {{"z", 4}, {"hit", 4}, {"normal", -1}};
    for (const auto& row : rows) {
        Bitmap bitmap;
        studio.library.vtables.bitmap->linkBitmap(studio.instance->findObject(row.name, HandleBitmap), &bitmap);
        ASSERT_EQ(bitmap.width, 9) << row.name;
        Vector pixel;
        bitmap.getPixel(4, 4, pixel);
        EXPECT_NEAR(pixel.values[2], row.component, 1e-4) << row.name;
        bitmap.getPixel(0, 0, pixel);
        EXPECT_EQ(pixel.values[2], 0) << row.name;
    }
}

}  // namespace
}  // namespace Zant::Tests
