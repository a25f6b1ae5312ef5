// Commands that declare and fill vertex maps and meshes.

#include <cmath>

#include "engines/scene/execution.h"
#include "language/numbers.h"

namespace Zant::Engine {
namespace {

const Outcome noSuchRow = {BadValue, "the row or its values are outside of the vertex map", 1};

// A map that is grabbed from a mesh is declared without rows.
Outcome declareVertexMap(Execution& execution) {
    const bool fixedSize = execution.isKeyword(2, "fixedSize");
    VertexMap map(execution.settings.doubleVertexMaps);
    const double rows = fixedSize ? execution.number(3) : 0;
    if (!map.shape(execution.number(1), fixedSize ? execution.number(4, 1) : 1, rows, fixedSize)) {
        return {BadValue, "a vertex map cannot have this size"};
    }
    execution.declare<VertexMap>(std::move(map));
    return {};
}

Outcome operateOnVertexMap(Execution& execution) {
    execution.hasEffect = execution.isKeyword(1, "resize");
    if (execution.hasEffect && !execution.vertexMap(0).resize(execution.number(2))) {
        return {BadValue, "a vertex map cannot have this number of rows", 2};
    }
    return {};
}

// One vector for each sample of the row, taking as many components as a sample holds.
Outcome setSamples(Execution& execution, const VarLenVector& samples) {
    VertexMap& map = execution.vertexMap(0);
    const auto dimension = static_cast<size_t>(map.record().dimension);
    if (samples.count > static_cast<size_t>(map.record().samples)) return noSuchRow;
    std::vector<double> row;
    for (size_t item = 0; item < samples.count; ++item) {
        const Vector& sample = samples.items[item];
        for (size_t component = 0; component < dimension; ++component) {
            row.push_back(component < static_cast<size_t>(sample.count) ? sample.values[component] : 0.0);
        }
    }
    return map.set(execution.number(1), row.data(), row.size()) ? Outcome{} : noSuchRow;
}

Outcome setVertex2d(Execution& execution) {
    return setSamples(execution, VarLenVector(&execution.vector(2), 1));
}

Outcome setVertex3d(Execution& execution) {
    return setSamples(execution, execution.vectors(2));
}

Outcome setVertexData(Execution& execution) {
    const VarLenDouble list = execution.numbers(2);
    std::vector<double> row;
    for (size_t item = 0; item < list.count; ++item)
        row.push_back(list.items[item].value);
    return execution.vertexMap(0).set(execution.number(1), row.data(), row.size()) ? Outcome{} : noSuchRow;
}

// Every polygon becomes a fan of triangles around its first point.
void addTriangles(Mesh& mesh, const Polygon& polygon) {
    for (size_t corner = 2; corner < polygon.points.size(); ++corner) {
        const std::vector<double> points = {polygon.points[0], polygon.points[corner - 1], polygon.points[corner]};
        mesh.polygons.push_back({polygon.tag, points, polygon.more});
    }
}

// Meshes that come from files, bitmaps or animated objects are declared without polygons.
Outcome declareMesh(Execution& execution) {
    Mesh mesh;
    if (execution.isKeyword(1, "fromVertexMap")) mesh.points = execution.object(2);
    if (execution.isKeyword(1, "triple")) {
        const ObjectPointer source = execution.object(2);
        mesh.points = source->as<Mesh>()->points;
        for (const Polygon& polygon : source->as<Mesh>()->polygons)
            addTriangles(mesh, polygon);
    }
    execution.declare<Mesh>(std::move(mesh));
    return {};
}

bool isPoint(double index, const Mesh& mesh) {
    if (!(index >= 0) || index != std::floor(index)) return false;
    return !mesh.points || index < static_cast<double>(mesh.points->as<VertexMap>()->record().size);
}

Outcome addPolygon(Execution& execution) {
    Mesh& mesh = execution.mesh(0);
    Polygon polygon;
    polygon.tag = execution.number(1);
    const VarLenDouble points = execution.numbers(2);
    for (size_t item = 0; item < points.count; ++item) {
        if (!isPoint(points.items[item].value, mesh)) {
            return {BadValue, "the mesh has no point " + numberText(points.items[item].value), 2};
        }
        polygon.points.push_back(points.items[item].value);
    }
    for (size_t place = 3; execution.has(place); ++place)
        polygon.more.push_back(execution.number(place));
    mesh.polygons.push_back(std::move(polygon));
    return {};
}

Outcome setTag(Execution& execution) {
    const bool isLook = execution.isKeyword(3, "material") || execution.isKeyword(3, "shader");
    if (isLook) execution.mesh(0).looks[execution.number(2)] = execution.text(4);
    execution.hasEffect = execution.isPictured = isLook;
    return {};
}

Outcome operateOnMesh(Execution& execution) {
    Mesh& mesh = execution.mesh(0);
    const auto mapOrNone = [&] { return execution.has(2) ? execution.object(2) : nullptr; };
    if (execution.isKeyword(1, "tag")) return setTag(execution);
    if (execution.isKeyword(1, "points")) {
        mesh.points = mapOrNone();
    } else if (execution.isKeyword(1, "pointNormals")) {
        mesh.normals = mapOrNone();
    } else if (execution.isKeyword(1, "flip")) {
        mesh.isFlipped = !mesh.isFlipped;
    } else {
        execution.hasEffect = execution.isPictured = false;
    }
    return {};
}

}  // namespace

const HandlerRow geometryHandlers[] = {
    {"vertexMap", declareVertexMap}, {"vertexMapOp", operateOnVertexMap}, {"vertex2d", setVertex2d},
    {"vertex3d", setVertex3d},       {"vertexData", setVertexData},       {"mesh", declareMesh},
    {"meshAddPoly", addPolygon},     {"meshOp", operateOnMesh},           {nullptr, nullptr},
};

}  // namespace Zant::Engine
