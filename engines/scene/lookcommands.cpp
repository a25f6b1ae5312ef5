// Commands that say how a picture looks: looks of objects, lights, the background.

#include <cmath>
#include <cstring>

#include "engines/scene/execution.h"
#include "engines/scene/world.h"

namespace Zant::Engine {
namespace {

constexpr double degree = 3.14159265358979323846 / 180;

// ---- Looks ------------------------------------------------------------------------------------------------------

Outcome declareLook(Execution& execution) {
    Opaque* const look = declareOpaque(execution);
    if (execution.isKeyword(1, "black")) look->colour = Colour{0, 0, 0};
    return {};
}

Outcome setMaterial(Execution& execution) {
    const ObjectPointer object = execution.object(0);
    auto* material = object ? object->as<Opaque>() : nullptr;
    const bool isColour = execution.isKeyword(1, "color");
    const bool isTexture = execution.isKeyword(1, "texture") && execution.isKeyword(2, "color");
    execution.hasEffect = execution.isPictured = material && (isColour || isTexture);
    if (!execution.hasEffect) return {};
    material->colour.reset();
    material->sources.clear();
    if (isColour) material->colour = colourOf(execution.vector(2));
    if (isTexture && execution.has(3)) material->sources.emplace_back(execution.text(3));
    return {};
}

// ---- Lights -----------------------------------------------------------------------------------------------------

/// Reads the lights of a command from the keyword at a place on; none for a kind that is not shown.
class LightReader {
public:
    LightReader(const Execution& execution, size_t keyword) : execution_(execution), keyword_(keyword) {}

    std::vector<Light> read() const {
        if (is("point")) return oneForEach(Light::Kind::Positional, &Light::position);
        if (is("parallel")) return oneForEach(Light::Kind::Directional, &Light::direction);
        if (is("spot")) return spots();
        if (is("ambient")) return {light(Light::Kind::Ambient, 1)};
        return {};
    }

private:
    bool is(const char* word) const { return execution_.isKeyword(keyword_, word); }

    /// @param colour the place of the colour after the keyword
    Light light(Light::Kind kind, size_t colour) const {
        Light result;
        result.kind = kind;
        result.colour = colourOf(execution_.vector(keyword_ + colour));
        return result;
    }

    /// One light for each vector of a list, with one colour.
    std::vector<Light> oneForEach(Light::Kind kind, Point Light::*vector) const {
        std::vector<Light> lights;
        const VarLenVector list = execution_.vectors(keyword_ + 1);
        for (size_t item = 0; item < list.count; ++item) {
            lights.push_back(light(kind, 2));
            lights.back().*vector = pointOf(list.items[item]);
        }
        return lights;
    }

    // Places and directions in pairs; the last direction is that of all places after it.
    std::vector<Light> spots() const {
        std::vector<Light> lights;
        const VarLenVector places = execution_.vectors(keyword_ + 1), directions = execution_.vectors(keyword_ + 2);
        for (size_t item = 0; item < places.count && directions.count != 0; ++item) {
            lights.push_back(light(Light::Kind::Spot, 3));
            lights.back().position = pointOf(places.items[item]);
            lights.back().direction = pointOf(directions.items[item < directions.count ? item : directions.count - 1]);
            lights.back().angle = execution_.number(keyword_ + 4) * degree / 2;
            lights.back().softness = execution_.number(keyword_ + 5, 0) * degree;
        }
        return lights;
    }

    const Execution& execution_;
    size_t keyword_;
};

Outcome declareLight(Execution& execution) {
    Opaque* const content = declareOpaque(execution);
    content->lights = LightReader(execution, 1).read();
    execution.isPictured = !content->lights.empty();
    return {};
}

Outcome addLight(Execution& execution) {
    World& world = execution.world;
    const size_t before = world.lights.size() + world.lightNames.size();
    const bool isNamed = execution.isKeyword(0, "symbol") || execution.isKeyword(0, "group");
    const Value* const names = isNamed ? &execution.command.values()[1] : nullptr;
    for (uint32_t item = 0; names && item < names->count; ++item)
        world.lightNames.emplace_back(execution.command.text(*names, item));
    for (const Light& light : LightReader(execution, 0).read())
        world.lights.push_back(light);
    execution.hasEffect = execution.isPictured = world.lights.size() + world.lightNames.size() != before;
    return {};
}

Outcome operateOnLight(Execution& execution) {
    const ObjectPointer object = execution.object(0);
    auto* content = object ? object->as<Opaque>() : nullptr;
    execution.hasEffect = execution.isPictured = content && !content->lights.empty();
    if (!execution.hasEffect) return {};
    for (Light& light : content->lights)
        light.castsShadow = execution.number(2) != 0;
    return {};
}

Outcome setBackground(Execution& execution) {
    execution.hasEffect = execution.isPictured = execution.isKeyword(0, "color");
    if (execution.hasEffect) execution.world.background = colourOf(execution.vector(1));
    return {};
}

}  // namespace

const HandlerRow lookHandlers[] = {
    {"surface", declareLook},    {"texture", declareLook},     {"material", declareLook},
    {"blend", declareLook},      {"metaSurface", declareLook}, {"metaTexture", declareLook},
    {"shaderNode", declareLook}, {"materialSet", setMaterial}, {"light", declareLight},
    {"lightAdd", addLight},      {"lightOp", operateOnLight},  {"background", setBackground},
    {nullptr, nullptr},
};

}  // namespace Zant::Engine
