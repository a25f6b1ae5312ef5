// How a picture's snapshot is made of the scene as the commands have left it.

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

#include "engines/scene/picture.h"
#include "engines/scene/points.h"
#include "engines/scene/triangulation.h"
#include "engines/scene/world.h"

namespace Zant::Engine {
namespace {

constexpr int longestChain = 16;  // of looks that name each other
constexpr double degree = 3.14159265358979323846 / 180;

std::optional<Colour> findColour(const Objects& objects, const std::string& name, int depth = 0) {
    const ObjectPointer object = objects.resolve(objects.find(name));
    if (!object || depth == longestChain) return {};
    if (const auto* vector = object->as<Vector>()) return colourOf(*vector);
    const auto* look = object->as<Opaque>();
    if (!look || look->colour) return look ? look->colour : std::nullopt;
    for (const std::string& source : look->sources) {
        if (const auto colour = findColour(objects, source, depth + 1)) return colour;
    }
    return {};
}

// ---- Meshes -----------------------------------------------------------------------------------------------------

std::vector<Facets::Corner> rowsOf(const ObjectPointer& object) {
    const VertexMap& map = *object->as<VertexMap>();
    const size_t given = std::min<size_t>(map.rowLength(), 3);
    std::vector<Facets::Corner> rows(map.record().size);
    for (size_t row = 0; row < rows.size(); ++row) {
        for (size_t place = 0; place < given; ++place)
            rows[row][place] = static_cast<float>(map.get(row, place));
    }
    return rows;
}

// The looks of a mesh, one for each tag that its polygons have.
class TagLooks {
public:
    TagLooks(const Mesh& mesh, const Objects& objects, std::vector<Colour>& looks)
        : mesh_(mesh), objects_(objects), looks_(looks) {}

    uint32_t of(double tag) {
        const auto known = places_.find(tag);
        if (known != places_.end()) return known->second;
        const auto named = mesh_.looks.find(tag);
        const auto colour = named == mesh_.looks.end() ? std::nullopt : findColour(objects_, named->second);
        if (colour) looks_.push_back(*colour);
        return places_[tag] = colour ? static_cast<uint32_t>(looks_.size() - 1) : 0;
    }

private:
    const Mesh& mesh_;
    const Objects& objects_;
    std::vector<Colour>& looks_;
    std::map<double, uint32_t> places_;
};

class MeshMaker {
public:
    MeshMaker(const Mesh& mesh, const Objects& objects, std::vector<Colour>& looks)
        : mesh_(mesh), looks_(mesh, objects, looks) {}

    /// @param lost receives how many polygons name points that are not there
    std::shared_ptr<const Facets> make(size_t& lost) {
        if (mesh_.points) facets_.points = rowsOf(mesh_.points);
        if (mesh_.normals) facets_.normals = rowsOf(mesh_.normals);
        if (facets_.normals.size() != facets_.points.size()) facets_.normals.clear();
        for (const Polygon& polygon : mesh_.polygons) {
            if (!add(polygon)) ++lost;
        }
        const auto isFirst = [](uint32_t look) { return look == 0; };
        if (std::all_of(facets_.looks.begin(), facets_.looks.end(), isFirst)) facets_.looks.clear();
        return std::make_shared<Facets>(std::move(facets_));
    }

private:
    bool add(const Polygon& polygon) {
        corners_.clear();
        for (const double point : polygon.points) {
            if (!(point < static_cast<double>(facets_.points.size()))) return false;
            corners_.push_back(static_cast<uint32_t>(point));
        }
        if (mesh_.isFlipped) std::reverse(corners_.begin(), corners_.end());
        triangulate(facets_.points, corners_, facets_.triangles);
        facets_.looks.resize(facets_.triangles.size(), looks_.of(polygon.tag));
        return true;
    }

    const Mesh& mesh_;
    TagLooks looks_;
    Facets facets_;
    std::vector<uint32_t> corners_;
};

// ---- The whole ---------------------------------------------------------------------------------------------------

class Modeller {
public:
    Modeller(const World& world, const Objects& objects, Omissions& omissions)
        : world_(world), objects_(objects), omissions_(omissions) {}

    std::shared_ptr<const Model> make(bool isPreview) {
        model_->groups.emplace_back();
        place("", {}, 0);
        addFreeMeshes();
        addLights();
        model_->background = world_.background.value_or(Colour{0, 0, 0});
        model_->hasBackground = world_.background.has_value();
        model_->samples = world_.samples;
        setSize(isPreview);
        setCamera();
        return model_;
    }

private:
    // ---- Groups ----

    // The parts of a group, made the first time. Only the scene itself may be empty.
    size_t groupOf(const std::string& name, const World::Group& group) {
        const auto known = places_.find(name);
        if (known != places_.end()) return known->second;
        std::vector<Part> parts;
        for (const World::Item& item : group.items)
            addItem(item, parts);
        const size_t place = name.empty() ? 0 : model_->groups.size();
        if (place != 0) model_->groups.emplace_back();
        model_->groups[place] = std::move(parts);
        return places_[name] = place;
    }

    // A group and what is seen in it. Groups that hold themselves would go on without an end, and groups that hold
    // the next one twice nearly so.
    void place(const std::string& name, const Placement& placement, uint32_t number) {
        if (++visits_ > World::mostInstances || path_.size() > deepest) {
            ++omissions_[path_.size() > deepest ? "group nested too deeply" : "instance beyond a million"];
            return;
        }
        const auto found = world_.groups.find(name);
        if (found == world_.groups.end()) {
            if (!name.empty()) ++omissions_["instance of the missing group \"" + name + "\""];
            return;
        }
        if (!path_.insert(name).second) {
            ++omissions_["group \"" + name + "\" inside itself"];
            return;
        }
        if (!found->second.items.empty())
            model_->instances.push_back({groupOf(name, found->second), placement, number});
        for (const World::Instance& instance : found->second.instances) {
            if (visits_ > World::mostInstances) break;
            const uint32_t shown = number != 0 ? number : instance.number;
            place(nameOf(instance), composed(instance.placement, placement), shown);
        }
        path_.erase(name);
    }

    // A link that does not lead to a group stands for a group of its own name, which is missing.
    std::string nameOf(const World::Instance& instance) const {
        const ObjectPointer link = instance.isLink ? objects_.resolve(objects_.find(instance.group)) : nullptr;
        const auto* content = link ? link->as<Opaque>() : nullptr;
        return content && !content->group.empty() ? content->group : instance.group;
    }

    // ---- Objects ----

    void addItem(const World::Item& item, std::vector<Part>& parts) {
        const auto* name = std::get_if<std::string>(&item.shape);
        if (!name) return addShape(item.number, std::get<Shape>(item.shape), item.look, parts);
        const ObjectPointer object = objects_.resolve(objects_.find(*name));
        if (object && object->as<Mesh>()) return addMesh(item, object, parts);
        const auto* declared = object ? object->as<Opaque>() : nullptr;
        if (declared && declared->shape) return addShape(item.number, *declared->shape, item.look, parts);
        ++omissions_["shape \"" + *name + "\""];
    }

    void addShape(uint32_t number, const Shape& shape, const std::string& look, std::vector<Part>& parts) {
        Part part{number, shape};
        if (const auto colour = findColour(objects_, look)) part.looks = {*colour};
        parts.push_back(std::move(part));
    }

    void addMesh(const World::Item& item, const ObjectPointer& object, std::vector<Part>& parts) {
        used_.insert(object.get());
        const Mesh& mesh = *object->as<Mesh>();
        if (mesh.polygons.empty()) return;
        Part part;
        part.object = item.number;
        if (const auto colour = findColour(objects_, item.look)) part.looks = {*colour};
        size_t lost = 0;
        std::shared_ptr<const Facets> facets = MeshMaker(mesh, objects_, part.looks).make(lost);
        if (lost != 0) omissions_["polygon of \"" + object->name + "\" with missing points"] += lost;
        part.shape = std::move(facets);
        parts.push_back(std::move(part));
    }

    // What nobody has attached stands where its points are.
    void addFreeMeshes() {
        uint32_t number = world_.lastNumber;
        std::vector<Part>& parts = model_->groups[0];
        for (const auto& [name, object] : objects_.all()) {
            if (!object->as<Mesh>() || used_.count(object.get()) != 0) continue;
            World::Item item;
            item.number = ++number;
            addMesh(item, object, parts);
        }
        const bool isPlaced = places_.count("") != 0;
        if (!isPlaced && !parts.empty()) model_->instances.push_back({0, {}, 0});
    }

    // ---- Lights, size and camera ----

    void addLights() {
        model_->lights = world_.lights;
        for (const std::string& name : world_.lightNames) {
            const ObjectPointer object = objects_.resolve(objects_.find(name));
            const auto* light = object ? object->as<Opaque>() : nullptr;
            if (!light || light->lights.empty())
                ++omissions_["light \"" + name + "\""];
            else
                model_->lights.insert(model_->lights.end(), light->lights.begin(), light->lights.end());
        }
    }

    void setSize(bool isPreview) {
        const bool hasOwn = isPreview && world_.previewSize[0] != 0;
        const int* const size = hasOwn ? world_.previewSize : world_.viewSize;
        if (size[0] != 0) {
            model_->width = size[0];
            model_->height = size[1];
        } else if (world_.cameraSize[0] >= smallestCamera && world_.cameraSize[1] >= smallestCamera) {
            model_->width = static_cast<int>(world_.cameraSize[0]);
            model_->height = static_cast<int>(world_.cameraSize[1]);
        } else {
            const double height = model_->width * world_.cameraSize[1] / world_.cameraSize[0];
            model_->height = static_cast<int>(std::clamp(height, 1.0, double{Picture::largestSide}));
        }
    }

    void setCamera() {
        Camera& camera = model_->camera;
        camera.kind = world_.cameraKind;
        camera.placement = world_.eye;
        camera.width = camera.kind == Camera::Kind::Parallel ? world_.cameraAmount
                                                             : 2 * std::tan(world_.cameraAmount * degree / 2);
        camera.height = camera.width * model_->height / (model_->width * world_.pixelAspect);
        camera.shift[0] = world_.cameraShift[0] * camera.width;
        camera.shift[1] = world_.cameraShift[1] * camera.height;
    }

    static constexpr size_t deepest = 256;
    static constexpr double smallestCamera = 16;  // smaller numbers are proportions, not pixels

    const World& world_;
    const Objects& objects_;
    Omissions& omissions_;
    std::shared_ptr<Model> model_ = std::make_shared<Model>();
    std::map<std::string, size_t> places_;
    std::set<std::string> path_;
    std::set<const Object*> used_;
    size_t visits_ = 0;
};

}  // namespace

Colour colourOf(const Vector& vector) {
    return {static_cast<float>(vector.values[0]), static_cast<float>(vector.values[1]),
            static_cast<float>(vector.values[2])};
}

Point pointOf(const Vector& vector) {
    return {vector.values[0], vector.values[1], vector.values[2]};
}

std::shared_ptr<const Model> modelOf(const World& world, const Objects& objects, bool isPreview, Omissions& omissions) {
    return Modeller(world, objects, omissions).make(isPreview);
}

Placement placementOf(const CoordSys& place) {
    Matrix3x3 matrix;
    Axes::toMatrix(place.axes, matrix);
    Placement placement;
    for (int axis = 0; axis < 3; ++axis) {
        for (int k = 0; k < 3; ++k)
            placement.axes[static_cast<size_t>(axis)][static_cast<size_t>(k)] = matrix(axis, k);
    }
    const Vector origin = place.getVector();
    placement.origin = {origin.values[0], origin.values[1], origin.values[2]};
    return placement;
}

Placement composed(const Placement& inner, const Placement& outer) {
    Placement result;
    for (size_t axis = 0; axis < 3; ++axis)
        result.axes[axis] = Points::placeVector(outer, inner.axes[axis]);
    result.origin = Points::placePoint(outer, inner.origin);
    return result;
}

}  // namespace Zant::Engine
