#ifndef ZANT_ENGINES_SCENE_WORLD_H
#define ZANT_ENGINES_SCENE_WORLD_H

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "client/values/coordsys.h"
#include "engines/scene/model.h"
#include "engines/scene/objects.h"
#include "engines/scene/rays.h"

namespace Zant::Engine {

/// What a picture does not show, with how often.
using Omissions = std::map<std::string, size_t>;

/// What commands have put into the scene of an instance, by names: an object that changes later is seen as it is when
/// a picture is made. Not locked: the instance's lock guards it.
struct World {
    static constexpr int mostSamples = 256;
    static constexpr size_t mostInstances = 1000000;

    /// An object that can be hit, with the name of its look.
    struct Item {
        uint32_t number = 0;
        std::variant<Shape, std::string> shape{};  ///< the name of a mesh or of a declared shape
        std::string look{};
    };
    /// A group that is seen in another place.
    struct Instance {
        uint32_t number = 0;
        std::string group{};
        Placement placement{};
        bool isLink = false;  ///< the name is that of a link to the group
    };
    struct Group {
        std::vector<Item> items;
        std::vector<Instance> instances;
    };

    std::map<std::string, Group> groups;  ///< "" is the scene itself
    std::string selected;                 ///< the group that objects are added to
    uint32_t lastNumber = 0;              ///< objects are numbered in the order in which they are added

    std::vector<Light> lights;
    std::vector<std::string> lightNames;  ///< of declared lights that were added
    std::optional<Colour> background;

    Camera::Kind cameraKind = Camera::Kind::Perspective;
    double cameraSize[2] = {640, 480};  ///< of its picture, in whatever unit
    double cameraAmount = 45;           ///< degrees from left to right; of a parallel camera, the width that it sees
    Placement eye{};
    double cameraShift[2] = {0, 0};  ///< in widths and heights of the picture
    double pixelAspect = 1;          ///< the width of a pixel by its height
    int viewSize[2] = {0, 0};        ///< in pixels; 0: that of the camera
    int previewSize[2] = {0, 0};     ///< of the pictures that go on beside the commands; 0: that of the view
    int samples = 1;                 ///< of each pixel
    std::string output;              ///< the file that a picture is written to; empty for none

    RayContexts rays;

    Omissions omissions;            ///< commands that pictures do not show
    bool hasToldOmissions = false;  ///< whether the host has been told

    Group& current() { return groups[selected]; }
    /// Adds an object to the selected group.
    void add(std::variant<Shape, std::string> shape, std::string look) {
        current().items.push_back({++lastNumber, std::move(shape), std::move(look)});
    }
    /// Shows a group in another place.
    void addInstance(std::string group, const Placement& placement, bool isLink = false) {
        current().instances.push_back({++lastNumber, std::move(group), placement, isLink});
    }
};

/// The snapshot that a picture is made of.
/// @param isPreview takes the size of the preview
/// @param omissions receives what is not in it
std::shared_ptr<const Model> modelOf(const World& world, const Objects& objects, bool isPreview, Omissions& omissions);

/// Values as pictures use them.
Colour colourOf(const Vector& vector);
Point pointOf(const Vector& vector);
Placement placementOf(const CoordSys& place);
/// A point of `inner`'s system as the outer one has it.
Placement composed(const Placement& inner, const Placement& outer);

}  // namespace Zant::Engine

#endif
