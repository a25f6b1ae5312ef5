// Commands that say what a picture shows: the camera, its size, its samples.

#include <algorithm>
#include <cmath>

#include "engines/scene/execution.h"
#include "engines/scene/viewsettings.h"
#include "language/numbers.h"

namespace Zant::Engine {
namespace {

Outcome refusedSize(const Vector& size, size_t place) {
    return {BadValue,
            "a picture cannot have the size " + numberText(size.values[0]) + " x " + numberText(size.values[1]), place};
}

Outcome setSize(Execution& execution, size_t place, int* size) {
    const Vector& wanted = execution.vector(place);
    if (wanted.count < 2 || !Picture::isSize(wanted.values[0], wanted.values[1])) return refusedSize(wanted, place);
    size[0] = static_cast<int>(wanted.values[0]);
    size[1] = static_cast<int>(wanted.values[1]);
    return {};
}

// ---- Camera -----------------------------------------------------------------------------------------------------

Outcome setLens(Execution& execution, Camera::Kind kind) {
    World& world = execution.world;
    const Vector& size = execution.vector(1);
    const double amount = execution.number(2);
    const bool isSized = size.count >= 2 && size.values[0] > 0 && size.values[1] > 0 &&
                         Picture::isSize(std::max(size.values[0], 1.0), std::max(size.values[1], 1.0));
    if (!isSized) return refusedSize(size, 1);
    const double most = kind == Camera::Kind::Perspective ? 180 : HUGE_VAL;
    if (!(amount > 0 && amount < most)) {
        return {BadValue, "a camera cannot see " + numberText(amount) + (most == 180 ? " degrees" : ""), 2};
    }
    world.cameraKind = kind;
    std::copy_n(size.values, 2, world.cameraSize);
    world.cameraAmount = amount;
    world.eye = placementOf(execution.coordSys(3));
    return {};
}

Outcome setCamera(Execution& execution) {
    World& world = execution.world;
    if (execution.isKeyword(0, "perspective")) return setLens(execution, Camera::Kind::Perspective);
    if (execution.isKeyword(0, "parallel")) return setLens(execution, Camera::Kind::Parallel);
    if (execution.isKeyword(0, "move")) {
        world.eye = placementOf(execution.coordSys(1));
    } else if (execution.isKeyword(0, "rotate")) {
        const Point origin = world.eye.origin;
        world.eye = placementOf(CoordSys(Vector(0, 0, 0), execution.axes(1)));
        world.eye.origin = origin;
    } else if (execution.isKeyword(0, "shift")) {
        std::copy_n(execution.vector(1).values, 2, world.cameraShift);
    } else {
        execution.hasEffect = execution.isPictured = false;
    }
    return {};
}

// ---- Settings ---------------------------------------------------------------------------------------------------

Outcome setSamples(Execution& execution) {
    const double wanted = execution.isKeyword(1, "none") ? 1 : execution.number(2, 1);
    if (!(wanted >= 1 && wanted <= World::mostSamples)) {
        return {BadValue, "a pixel has 1 to " + std::to_string(World::mostSamples) + " samples", 2};
    }
    execution.world.samples = static_cast<int>(wanted);
    return {};
}

Outcome setSetting(Execution& execution) {
    if (execution.isKeyword(0, "previewSize")) return setSize(execution, 1, execution.world.previewSize);
    if (execution.isKeyword(0, "imageSampler")) return setSamples(execution);
    if (execution.isKeyword(0, "outputTo") && execution.profile.writePicture) return setOutput(execution);
    execution.hasEffect = execution.isPictured = false;
    return {};
}

}  // namespace

Outcome setView(Execution& execution) {
    if (execution.isKeyword(0, "size")) return setSize(execution, 1, execution.world.viewSize);
    const double aspect = execution.number(1);
    if (!(aspect >= 0.01 && aspect <= 100)) return {BadValue, "a pixel cannot have this aspect", 1};
    execution.world.pixelAspect = aspect;
    return {};
}

Outcome checkFormat(const Execution& execution, size_t format) {
    if (!execution.has(format) || execution.isKeyword(format, "png")) return {};
    return {BadValue, std::string("this engine writes PNG, and no ") + execution.command.keywordText(format), format};
}

Outcome setOutput(Execution& execution) {
    Outcome outcome = checkFormat(execution, 2);
    if (outcome.code == Fine) execution.world.output = execution.has(1) ? execution.text(1) : "";
    return outcome;
}

const HandlerRow viewHandlers[] = {
    {"camera", setCamera},
    {"sett", setSetting},
    {nullptr, nullptr},
};

}  // namespace Zant::Engine
