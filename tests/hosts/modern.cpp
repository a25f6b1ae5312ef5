// A plug-in that uses every part of zant.hpp, built to export all that it defines, as a compiler's defaults do, and
// unoptimised, so that inline functions are functions. It goes when it is closed.

#include <array>
#include <string>
#include <vector>

#include "modern/zant.hpp"

namespace {

struct Plugin {
    zant::session engine;
    zant::scene binary{engine}, quick{engine, zant::encoding::quick_text()}, text{engine, zant::encoding::text()};
    zant::scene_of<zant::looks_commands> looks{engine};
    std::string lines;
    std::vector<zant::symbol> surfaces;
    zant::mesh shape;

    explicit Plugin(const std::string& directory) : engine(directory) {}
};

Plugin* plugin = nullptr;

void listen(zant::scene& scene) {
    scene.on_text([](std::string_view line) { plugin->lines.append(line); });
    scene.on_question([](std::string_view, std::string& answer) { return !(answer = "yes").empty(); });
    scene.on_window_size([](const _ZantEventWindow&) { return true; });
    scene.on_window_title([](std::string_view) {});
    scene.on_pixels([](const _ZantEventPixelTable&) {});
    scene.on_copied_pixels([](const _ZantEventPixelRectangle&) {});
    scene.on_mouse([](_ZantEventMousePosition&) {});
    scene.on_key([](_ZantEventKey&) {});
}

void sendArguments(zant::scene& scene) {
    const std::vector<float> floats{0.5F, 3};
    zant::symbol red(scene, "a red one"), green(scene, "green");
    scene.surface1_color(red), scene.surface1_color(green);
    scene.lightAdd1_group({red, green});
    plugin->surfaces.push_back(std::move(red)), plugin->surfaces.push_back(std::move(green));
    scene.lightAdd1_group(plugin->surfaces);
    scene.lightAdd2_point({zant::vector(1, 2, 3)}, {1, 1, 1});
    scene.lightAdd3_rectangle({zant::coord_sys(zant::position{1, 2, 3})}, {1, 1}, {1, 1, 1});
    scene.animOb3_addAxesKey("a", 1, zant::axes(zant::degrees(90), zant::radians(0.5), zant::degrees(0)));
    scene.sett1_logFile(std::string_view("log", 2)), scene.sett1_renderInfo(std::wstring_view(L"wide", 2));
    scene.fg1_showSamples(true), scene.lw1_ignoreItemId(7);
    plugin->shape = zant::mesh(scene, "shape");
    plugin->shape.declare();
    scene.meshAddPoly3(plugin->shape, 0, floats), scene.meshAddPoly3(plugin->shape, 0, {1, 2});
    scene.run("echo \"run\";");
}

template <class Type>
void keep(zant::scene& scene, const Type& content) {
    zant::value<Type> value(scene, "value");
    if constexpr (std::is_same_v<Type, zant::coord_sys>) {
        scene.run("coordSys value;"), value.link();
    } else {
        value.declare();
    }
    value.set(content), value.get();
}

void moveData(zant::scene& scene) {
    keep<double>(scene, 1), keep<std::string>(scene, "text"), keep<zant::vector>(scene, {1, 2, 3});
    keep<zant::axes>(scene, {}), keep<zant::coord_sys>(scene, {});
    std::array<float, 12> floats{};
    std::array<double, 12> doubles{};
    const int offsets[] = {0, 3}, corners[] = {0, 1, 2}, tags[] = {1};
    zant::mesh quad(scene, "quad");
    quad.points(zant::rows(floats, 3)), quad.normals(zant::rows(doubles, 3)), quad.uv(zant::rows(floats, 2));
    quad.polygons(offsets, corners, tags), quad.polygons_of(3, corners);
    zant::vertex_map map(scene, "map");
    map.declare(4, 3), map.write(zant::rows(floats, 4)), map.read(zant::rows(doubles, 4));
    zant::bitmap picture(scene, "picture", zant::const_pixels(floats.data(), 2, 2, PixelFloatRgb));
    picture.read(zant::pixels(floats.data(), 2, 2, PixelFloatRgb));
}

void fail(zant::scene& scene) {
    zant::symbol empty;
    scene.view1_camFilter(empty);
#if defined(__cpp_exceptions)
    scene.on_failure(zant::throwing());
    try {
        scene.view1_camFilter(empty);
    } catch (const zant::error& thrown) {
        plugin->lines += thrown.what();
    }
#endif
    plugin->lines += scene.first_failure()->message() + zant::name::decode(zant::name("any text").encoded());
    scene.on_failure({});
    scene.clear();
}

}  // namespace

extern "C" int zantPluginStart(const char* engineDirectory) {
    plugin = new Plugin(engineDirectory);
    return plugin->text ? 1 : 0;
}

extern "C" void zantPluginWork() {
    for (zant::scene* const scene : {&plugin->binary, &plugin->quick, &plugin->text}) {
        const zant::scope each(*scene, zant::on_failure::go_on);
        listen(*scene), sendArguments(*scene), moveData(*scene), fail(*scene);
        plugin->surfaces.clear();
    }
    zant::symbol black(plugin->looks, "black");
    plugin->looks.surface1_black(black);
}

extern "C" void zantPluginStop() {
    delete plugin;
    plugin = nullptr;
}
