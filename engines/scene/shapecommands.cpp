// Commands that put objects into the scene: shapes, groups and their instances.

#include <cmath>
#include <cstring>

#include "engines/scene/execution.h"
#include "engines/scene/shapes.h"
#include "engines/scene/world.h"

namespace Zant::Engine {
namespace {

std::string textOr(const Execution& execution, size_t place, const char* otherwise) {
    return execution.has(place) ? execution.text(place) : otherwise;
}

bool isSymbol(const Execution& execution, size_t place) {
    return execution.has(place) && execution.command.values()[place].kind == ValueKind::Symbol;
}

// ---- Shapes -----------------------------------------------------------------------------------------------------

Outcome declareShape(Execution& execution) {
    Opaque* const content = declareOpaque(execution);
    content->shape = readShape(execution, 1);
    execution.isPictured = content->shape.has_value();
    return {};
}

// The last two symbols of a form are the look and the mapping.
Outcome addObject(Execution& execution) {
    execution.hasEffect = false;
    const auto shape = readShape(execution, 0);
    execution.isPictured = shape.has_value();
    if (!shape) return {};
    const size_t last = execution.places() - 1;
    const bool hasLook = last >= 2 && isSymbol(execution, last) && isSymbol(execution, last - 1);
    execution.world.add(*shape, hasLook ? execution.text(last - 1) : "");
    execution.hasEffect = true;
    return {};
}

Outcome addDeclaredShape(Execution& execution) {
    execution.world.add(std::string(execution.text(0)), execution.text(1));
    return {};
}

// ---- Groups -----------------------------------------------------------------------------------------------------

void removeGroup(World& world, const std::string& name) {
    world.groups.erase(name);
    if (world.selected == name) world.selected.clear();
}

Outcome attachMesh(Execution& execution) {
    World& world = execution.world;
    if (!execution.has(3)) {
        world.add(std::string(execution.text(2)), "");
        return {};
    }
    // A mesh in a place of its own is the one instance of a group that no command can name.
    const std::string selected = world.selected;
    const std::string group = '\0' + std::to_string(world.lastNumber + 1);
    world.selected = group;
    world.add(std::string(execution.text(2)), "");
    world.selected = selected;
    world.addInstance(group, placementOf(execution.coordSys(3)));
    return {};
}

struct GroupRow {
    const char* word;
    Outcome (*handle)(Execution&);
};
const GroupRow groupRows[] = {
    {"select",
     [](Execution& e) {
         e.world.selected = textOr(e, 1, "");
         e.world.current();
         return Outcome{};
     }},
    {"clear",
     [](Execution& e) {
         e.world.current() = {};
         return Outcome{};
     }},
    {"remove",
     [](Execution& e) {
         removeGroup(e.world, textOr(e, 1, e.world.selected.c_str()));
         return Outcome{};
     }},
    {"removeAll",
     [](Execution& e) {
         e.world.groups.clear();
         e.world.selected.clear();
         return Outcome{};
     }},
    {"addInstance",
     [](Execution& e) {
         e.world.addInstance(textOr(e, 1, ""), {});
         return Outcome{};
     }},
};

Outcome operateOnGroup(Execution& execution) {
    for (const GroupRow& row : groupRows) {
        if (execution.isKeyword(0, row.word)) return row.handle(execution);
    }
    if (execution.isKeyword(0, "attachSet") && execution.isKeyword(1, "mesh")) return attachMesh(execution);
    execution.hasEffect = execution.isPictured = false;
    return {};
}

Outcome addInstance(Execution& execution) {
    execution.world.addInstance(execution.text(0), placementOf(execution.coordSys(1)));
    return {};
}

// A link to a group or to an instance of one.
Outcome declareGroupLink(Execution& execution) {
    Opaque* const content = declareOpaque(execution);
    const bool isGroup = execution.isKeyword(1, "group") || execution.isKeyword(1, "attachGroup") ||
                         execution.isKeyword(1, "instance") || execution.isKeyword(1, "attachInstance");
    if (isGroup) content->group = textOr(execution, 2, execution.world.selected.c_str());
    return {};
}

Outcome addLinkedInstance(Execution& execution) {
    execution.world.addInstance(execution.text(0), placementOf(execution.coordSys(1)), true);
    return {};
}

}  // namespace

const HandlerRow shapeHandlers[] = {
    {"shape", declareShape},
    {"objectAdd", addObject},
    {"shapeAdd", addDeclaredShape},
    {"group", operateOnGroup},
    {"instanceAdd", addInstance},
    {"groupLink", declareGroupLink},
    {"instanceLinkAdd", addLinkedInstance},
    {nullptr, nullptr},
};

}  // namespace Zant::Engine
