// Commands that declare values, and those that act on any object.

#include "engines/scene/declarations.h"
#include "engines/scene/execution.h"

namespace Zant::Engine {
namespace {

Outcome declareNumber(Execution& execution) {
    execution.declare<double>(execution.number(1, 0.0));
    return {};
}

Outcome declareString(Execution& execution) {
    execution.declare<std::string>(execution.has(1) ? execution.text(1) : "");
    return {};
}

Outcome declareVector(Execution& execution) {
    execution.declare<Vector>(execution.has(1) ? execution.vector(1) : Vector());
    return {};
}

Outcome declareAxes(Execution& execution) {
    execution.declare<Axes>(execution.has(1) ? execution.axes(1) : Axes());
    return {};
}

Outcome declareCoordSys(Execution& execution) {
    execution.declare<CoordSys>(execution.has(1) ? execution.coordSys(1) : CoordSys());
    return {};
}

Outcome declareReference(Execution& execution) {
    execution.declare<Reference>(Reference{execution.text(1)});
    return {};
}

Outcome noObject(const Execution& execution) {
    return {UnknownObject, std::string("there is no object '") + execution.text(0) + "'", 0};
}

Outcome deleteObject(Execution& execution) {
    return execution.objects.remove(execution.text(0)) ? Outcome{} : noObject(execution);
}

Outcome deleteAll(Execution& execution) {
    execution.objects.removeAll();
    return {};
}

// The content of an object that has been declared and not filled yet.
struct Clear {
    void operator()(Opaque&) const {}
    void operator()(Reference&) const {}
    void operator()(VertexMap& map) const { map.clear(); }
    void operator()(Mesh& mesh) const { mesh = {}; }
    void operator()(Pixels& pixels) const { pixels.clear(); }
    template <class Value>
    void operator()(Value& value) const {
        value = Value();
    }
};

Outcome clearObject(Execution& execution) {
    const ObjectPointer object = execution.object(0);
    if (!object) return noObject(execution);
    std::visit(Clear(), object->content);
    return {};
}

Outcome showObject(Execution& execution) {
    const ObjectPointer object = execution.object(0);
    if (!object) return noObject(execution);
    execution.lines.add(object->name + ": " + summaryOf(*object));
    return {};
}

}  // namespace

const HandlerRow valueHandlers[] = {
    {"var", declareNumber},          {"variable", declareNumber},
    {"double", declareNumber},       {"string", declareString},
    {"vector", declareVector},       {"color", declareVector},
    {"axes", declareAxes},           {"coordSys", declareCoordSys},
    {"reference", declareReference}, {"delete", deleteObject},
    {"symbolsDelete", deleteAll},    {"clear", clearObject},
    {"objectInfo", showObject},      {nullptr, nullptr},
};

}  // namespace Zant::Engine
