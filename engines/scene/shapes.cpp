#include "engines/scene/shapes.h"

#include <cmath>
#include <memory>

#include "engines/scene/points.h"
#include "engines/scene/triangulation.h"
#include "engines/scene/world.h"

namespace Zant::Engine {
namespace {

Facets::Corner cornerOf(const Point& point) {
    return {static_cast<float>(point[0]), static_cast<float>(point[1]), static_cast<float>(point[2])};
}

using namespace Points;

// A flat one whose z is a normal; x and y are as long as the radius.
Placement facing(const Point& centre, const Point& normal, double radius) {
    const Point z = unit(normal);
    const bool isUpright = std::fabs(z[1]) > 0.9;
    const Point x = unit(cross(isUpright ? Point{1, 0, 0} : Point{0, 1, 0}, z));
    return {{x * radius, cross(z, x) * radius, z}, centre};
}

/// What follows the keyword.
class ShapeReader {
public:
    ShapeReader(const Execution& execution, size_t keyword) : execution_(execution), first_(keyword + 1) {}

    Point point(size_t place) const { return pointOf(execution_.vector(first_ + place)); }
    double number(size_t place) const { return execution_.number(first_ + place); }
    Placement placement() const { return placementOf(execution_.coordSys(first_)); }

    Shape sphere() const {
        const double radius = number(1);
        return Quadric{Quadric::Kind::Ball, {{{{radius, 0, 0}, {0, radius, 0}, {0, 0, radius}}}, point(0)}};
    }
    Shape ellipsoid() const { return Quadric{Quadric::Kind::Ball, placement()}; }
    Shape circle() const { return Quadric{Quadric::Kind::Disc, facing(point(0), point(1), number(2))}; }
    Shape wall() const { return Quadric{Quadric::Kind::Plane, facing(point(0), point(1), 1)}; }
    Shape tube() const { return cone(number(1), number(1), number(2)); }
    Shape cone() const { return cone(number(1), number(2), number(3)); }
    Shape triangle() const { return facets({cornerOf(point(0)), cornerOf(point(1)), cornerOf(point(2))}); }

    Shape rectangle() const {
        const Point corner = point(0), width = point(1), height = point(2);
        const auto at = [&](double u, double v) { return cornerOf(corner + width * u + height * v); };
        return facets({at(0, 0), at(1, 0), at(1, 1), at(0, 1)});
    }

    Shape polygon() const {
        const VarLenVector list = execution_.vectors(first_);
        std::vector<Facets::Corner> points;
        for (size_t item = 0; item < list.count; ++item)
            points.push_back(cornerOf(pointOf(list.items[item])));
        return facets(std::move(points));
    }

private:
    Shape cone(double first, double second, double length) const {
        Placement place = placement();
        place.axes[2] = place.axes[2] * length;
        return Quadric{Quadric::Kind::Cone, place, first, second};
    }

    // One polygon.
    static Shape facets(std::vector<Facets::Corner> points) {
        auto result = std::make_shared<Facets>();
        result->points = std::move(points);
        std::vector<uint32_t> corners(result->points.size());
        for (size_t corner = 0; corner < corners.size(); ++corner)
            corners[corner] = static_cast<uint32_t>(corner);
        triangulate(result->points, corners, result->triangles);
        return std::shared_ptr<const Facets>(std::move(result));
    }

    const Execution& execution_;
    size_t first_;
};

struct ShapeRow {
    const char* word;
    Shape (ShapeReader::*read)() const;
};
const ShapeRow shapeRows[] = {
    {"sphere", &ShapeReader::sphere},
    {"ellipsoid", &ShapeReader::ellipsoid},
    {"circle", &ShapeReader::circle},
    {"wall", &ShapeReader::wall},
    {"tube", &ShapeReader::tube},
    {"cone", &ShapeReader::cone},
    {"rectangle", &ShapeReader::rectangle},
    {"polygon", &ShapeReader::polygon},
    {"triangle", &ShapeReader::triangle},
    {"triangleSs", &ShapeReader::triangle},
    {"uvTriangle", &ShapeReader::triangle},
    {"uvTriangleSs", &ShapeReader::triangle},
    {"intTriangle", &ShapeReader::triangle},
    {"intTriangleSs", &ShapeReader::triangle},
    {"dTriangle", &ShapeReader::triangle},
    {"dTriangleSs", &ShapeReader::triangle},
    {"dIntTriangle", &ShapeReader::triangle},
    {"dIntTriangleSs", &ShapeReader::triangle},
};

}  // namespace

std::optional<Shape> readShape(const Execution& execution, size_t keyword) {
    for (const ShapeRow& row : shapeRows) {
        if (execution.isKeyword(keyword, row.word)) return (ShapeReader(execution, keyword).*row.read)();
    }
    return {};
}

}  // namespace Zant::Engine
