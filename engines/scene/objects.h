#ifndef ZANT_ENGINES_SCENE_OBJECTS_H
#define ZANT_ENGINES_SCENE_OBJECTS_H

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "client/values/coordsys.h"
#include "engines/scene/model.h"
#include "engines/scene/pixels.h"
#include "engines/scene/vertexmaps.h"

namespace Zant::Engine {

struct Object;
using ObjectPointer = std::shared_ptr<Object>;

/// Of an object whose content the engine does not keep: a surface, a light, a texture.
struct Opaque {
    std::string declaration;  ///< the command that declared it, as text

    // What a picture takes from it:
    std::optional<Colour> colour{};      ///< of a look, where it has one of its own
    std::vector<std::string> sources{};  ///< of a look: other looks, the first of which with a colour counts
    std::optional<Shape> shape{};        ///< of a shape that the engine can show
    std::vector<Light> lights{};         ///< of a light
    std::string group{};                 ///< of a link to a group
};

/// Another name for an object.
struct Reference {
    std::string target;
};

/// A polygon: the indices of its points, and the numbers that stood around them in the command.
struct Polygon {
    double tag = 0;
    std::vector<double> points;
    std::vector<double> more;  ///< none, one or two
};

struct Mesh {
    ObjectPointer points;   ///< the vertex map that holds them, kept alive by the mesh; may be null
    ObjectPointer normals;  ///< of the points, in the same way
    std::vector<Polygon> polygons;
    std::map<double, std::string> looks;  ///< by tag
    bool isFlipped = false;
};

/// One named object. It stays at its address for life, and keeps its number when it is declared again as the same kind.
struct Object {
    using Content =
        std::variant<Opaque, double, std::string, Vector, Axes, CoordSys, Reference, Pixels, VertexMap, Mesh>;

    std::string name;
    uint32_t number = 0;
    int command = 0;  ///< number of the command word that declared it
    Content content;

    template <class Kind>
    Kind* as() {
        return std::get_if<Kind>(&content);
    }
    template <class Kind>
    const Kind* as() const {
        return std::get_if<Kind>(&content);
    }
    template <class... Kinds>
    bool isOneOf() const {
        return (std::holds_alternative<Kinds>(content) || ...);
    }
    /// Number, text, vector, axes or coordinate system.
    bool isValue() const { return isOneOf<double, std::string, Vector, Axes, CoordSys>(); }
};

/// The objects of one instance, by name and by number. Not locked: the instance's lock guards it.
class Objects {
public:
    using Names = std::map<std::string, ObjectPointer, std::less<>>;

    /// Null when there is no such object.
    ObjectPointer find(std::string_view name) const;
    ObjectPointer find(uint32_t number) const;
    /// The vertex map with this record, looked up without reading the record.
    ObjectPointer findRecord(const void* record) const;
    /// What a reference leads to, through other references; any other object is itself. Null for a dead end.
    ObjectPointer resolve(const ObjectPointer& object) const;

    /// Declares an object: content of the kind is made from the arguments. An object of the same name and kind keeps
    /// its number and its address, one of another kind is replaced.
    template <class Kind, class... Arguments>
    Object& declare(std::string_view name, int command, Arguments&&... arguments) {
        Object& object = place(name, command, sameKind<Kind>(name));
        object.content.template emplace<Kind>(std::forward<Arguments>(arguments)...);
        remember(object);
        return object;
    }
    /// @return whether there was such an object.
    bool remove(std::string_view name);
    void removeAll();

    /// All of them, in the order of their names.
    const Names& all() const { return names_; }

private:
    template <class Kind>
    bool sameKind(std::string_view name) const {
        const ObjectPointer object = find(name);
        return object && std::holds_alternative<Kind>(object->content);
    }
    Object& place(std::string_view name, int command, bool keep);
    void remember(Object& object);
    void forget(const Object& object);

    Names names_;
    std::map<uint32_t, ObjectPointer> numbers_;
    std::map<const void*, ObjectPointer> records_;
    uint32_t lastNumber_ = 0;
};

}  // namespace Zant::Engine

#endif
