// What zant.hpp costs: a command beside its typed function, a polygon beside the typed function in a loop, rows of
// numbers beside memcpy(). The engine keeps the memory of maps; its parser does nothing.
#include <cstring>
#include <numeric>

#include "bench/contest.h"
#include "client/protos/protos.h"
#include "modern/zant.hpp"

namespace {

constexpr size_t commandsPerTurn = 1000;

/// Takes the engine's part out of the commands of a scene, as long as it lives.
class WithoutParser {
public:
    explicit WithoutParser(const zant::scene& of)
        : library_(of.instance()->library), engine_(library_->vtables.parser) {
        table_ = *engine_;
        table_.parse = [](void*, const void* data, const char*, int) {
            keep(*static_cast<const char*>(data));
            return 0;
        };
        library_->vtables.parser = &table_;
    }
    WithoutParser(const WithoutParser&) = delete;
    WithoutParser& operator=(const WithoutParser&) = delete;
    ~WithoutParser() { library_->vtables.parser = engine_; }

private:
    Zant::Library* library_;
    const Zant::ParserFunctionsVtable* engine_;
    Zant::ParserFunctionsVtable table_;
};

Zant::Symbol& old(const zant::symbol& of) {
    return *zant::detail::access::of(of)->symbol;
}

/// Both sides of one command, in one encoding.
template <class Face, class Typed>
bool compare(const std::string& name, const Face& face, const Typed& typed) {
    Contest contest(name, commandsPerTurn);
    contest.ours(
        "zant::scene",
        [&] {
            for (size_t k = 0; k < commandsPerTurn; ++k)
                face();
        },
        1.03);
    contest.peer("typed function", [&] {
        for (size_t k = 0; k < commandsPerTurn; ++k)
            typed();
    });
    return contest.run();
}

bool compareCommands(zant::session& engine, zant::encoding commands, Zant::Prototyper& typed, const std::string& name) {
    zant::scene scene(engine, commands);
    zant::symbol sky(scene, "sky");
    scene.surface1_color(sky);
    const WithoutParser quiet(scene);
    void* const protos = typed.protos();
    const zant::vector place(0, 10, 0), white(1, 1, 1), down(0, -1, 0);
    const double some[] = {0, 1, 2, 3};
    zant::mesh shape(scene, "shape");
    auto& oldShape = static_cast<Zant::MeshSymbol&>(old(shape));
    oldShape.registered = old(sky).registered;
    bool met = compare(
        "face: fg gradients, " + name, [&] { scene.fg2_gradients(0.5, 2); }, [&] { fg2_gradients(protos, 0.5, 2); });
    met &= compare(
        "face: lightAdd adaptive, " + name, [&] { scene.lightAdd7_adaptive(place, white, down, sky, 0.5, 16, 2); },
        [&] { lightAdd7_adaptive(protos, place, white, down, old(sky), 0.5, 16, 2); });
    met &= compare(
        "face: meshAddPoly of doubles, " + name, [&] { scene.meshAddPoly3(shape, 0, some); },
        [&] {
            meshAddPoly3(protos, oldShape, 0, {static_cast<const Zant::Double*>(static_cast<const void*>(some)), 4});
        });
    oldShape.registered = 0;
    return met;
}

bool compareAllCommands(zant::session& engine) {
    const zant::scene around(engine);
    Zant::Instance* const instance = around.instance();
    Zant::Prototyper text(new Zant::CommandTextBuffer(instance)), quick(instance);
    Zant::DirectPrototyper binary(instance);
    bool met = compareCommands(engine, zant::encoding::binary(), binary, "binary");
    met &= compareCommands(engine, zant::encoding::text(), text, "text");
    return compareCommands(engine, zant::encoding::quick_text(), quick, "quick text") && met;
}

bool comparePolygons(zant::session& engine) {
    constexpr size_t count = 1000;
    std::vector<int> indices(4 * count);
    std::iota(indices.begin(), indices.end(), 0);
    zant::scene scene(engine);
    zant::mesh shape(scene, "shape");
    shape.declare();
    const WithoutParser quiet(scene);
    Zant::DirectPrototyper typed(scene.instance());
    auto& oldShape = static_cast<Zant::MeshSymbol&>(old(shape));
    Contest contest("face: a quad of 32-bit indices, binary", count);
    contest.ours("mesh::polygons_of", [&] { shape.polygons_of(4, indices); });
    contest.peer("meshAddPoly3 in a loop", [&] {
        for (size_t k = 0; k < indices.size(); k += 4) {
            const Zant::Double corners[] = {indices[k], indices[k + 1], indices[k + 2], indices[k + 3]};
            meshAddPoly3(typed.protos(), oldShape, 0, corners);
        }
    });
    return contest.run();
}

template <class Number>
bool compareRows(zant::vertex_map& map, const std::string& name, size_t stride) {
    constexpr size_t count = 100000;
    std::vector<Number> source(count * stride, Number(0.5));
    std::vector<Number> copy(count * stride);
    Contest contest("face: " + name, count);
    contest.ours(
        "vertex_map::write",
        [&] { keep(map.write(zant::rows<const Number>(source.data(), count, 3, stride * sizeof(Number)))); }, 2);
    contest.peer("memcpy of the source", [&] {
        std::memcpy(copy.data(), source.data(), copy.size() * sizeof(Number));
        keep(copy[0]);
    });
    return contest.run();
}

bool compareMaps(zant::session& engine) {
    zant::scene scene(engine);
    zant::vertex_map map(scene, "map");
    map.declare(3, 100000);
    bool met = compareRows<float>(map, "a row of three floats, dense", 3);
    met &= compareRows<float>(map, "a row of three floats of eight", 8);
    return compareRows<double>(map, "a row of three doubles to floats", 3) && met;
}

}  // namespace

int main() {
    zant::session engine(ZANT_LOOPBACK_DIR);
    const bool areCommandsMet = compareAllCommands(engine);
    const bool arePolygonsMet = comparePolygons(engine);
    return compareMaps(engine) && areCommandsMet && arePolygonsMet ? 0 : 1;
}
