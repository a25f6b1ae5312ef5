#ifndef ZANT_MODERN_MESH_H
#define ZANT_MODERN_MESH_H

#include <cstddef>
#include <string>
#include <vector>

#include "client/symbols/mesh.h"
#include "modern/commands/geometry.h"
#include "modern/vertexmap.h"

namespace zant {

/// A mesh, made from arrays: one call for its points, one for its polygons, one for each of what it has beside them.
///
/// The numbers go straight into vertex maps of the engine, which belong to the mesh.
///
/// Threads: as its scene.
class mesh : public symbol {
public:
    mesh() = default;
    /// Names a mesh, and sends nothing.
    mesh(const basic_scene& scene, const zant::name& called) { make<Zant::MeshSymbol>(state_of(scene), called); }

    mesh(mesh&&) = default;
    mesh& operator=(mesh&&) = default;
    ~mesh() { reset(); }

    /// Deletes the mesh, and its maps after it.
    void reset() {
        symbol::reset();
        maps_.clear();
    }

    /// Makes an empty mesh in the engine; points() does it when it has not been done.
    bool declare() {
        maps_.clear();
        return declare_by("mesh::declare", [this] { here().registerSymbol(); });
    }

    /// Takes the points from a map, which outlives the mesh.
    bool points(const vertex_map& map) {
        if (!is_ready()) return false;
        map_of(".points").reset();
        return take_points(map);
    }

    /// Positions, three numbers to a row. New ones of the same number go into the same map.
    template <class Number>
    bool points(const rows<Number>& positions) {
        return attach(".points", positions, [this](const vertex_map& map) { return take_points(map); });
    }

    /// A normal for each point, three numbers to a row.
    template <class Number>
    bool normals(const rows<Number>& directions) {
        return attach(".normals", directions, [this](const vertex_map& map) {
            return detail::send(state(), "mesh::normals", ::meshOp2_pointNormals, *this, map);
        });
    }

    /// Texture coordinates for each point.
    /// @param called their name in the engine
    template <class Number>
    bool uv(const rows<Number>& coordinates, const std::string& called = "uv") {
        return attach(".uv." + called, coordinates, [&](const vertex_map& map) {
            return detail::send(state(), "mesh::uv", ::meshOp3_pointMeta, *this, text(called), map);
        });
    }

    /// Polygons of different sizes: the points of polygon k are the indices from offsets[k] to before offsets[k + 1],
    /// so there is one offset more than there are polygons.
    /// @param tags a number for all, or a range with one for each; they pick the surfaces
    template <class Offsets, class Indices, class Tags = int>
    bool polygons(const Offsets& offsets, const Indices& indices, const Tags& tags = 0) {
        if (std::size(offsets) == 0) return true;
        const std::size_t count = std::size(offsets) - 1;
        for (std::size_t polygon = 0; polygon < count; ++polygon) {
            if (offset(offsets, polygon) > offset(offsets, polygon + 1)) return refuse("the offsets do not ascend");
        }
        if (offset(offsets, count) > std::size(indices)) return refuse("the offsets lead beyond the indices");
        return add(count, indices, tags, [&](std::size_t polygon) { return offset(offsets, polygon); });
    }

    /// Polygons with the same number of corners each: 3 for triangles, 4 for quads.
    template <class Indices, class Tags = int>
    bool polygons_of(std::size_t corners, const Indices& indices, const Tags& tags = 0) {
        if (corners == 0 || std::size(indices) % corners != 0) return refuse("the last polygon lacks corners");
        return add(std::size(indices) / corners, indices, tags, [=](std::size_t polygon) { return polygon * corners; });
    }

private:
    Zant::MeshSymbol& here() const { return handle<Zant::MeshSymbol>(); }
    bool is_ready() { return is_declared() || declare(); }
    bool refuse(const char* reason) { return *this && state()->refuse("mesh::polygons", reason); }

    template <class Offsets>
    static std::size_t offset(const Offsets& offsets, std::size_t polygon) {
        return static_cast<std::size_t>(std::data(offsets)[polygon]);
    }

    /// The tag of a polygon: the same for all, or its own.
    template <class Tags>
    static index tag(const Tags& tags, std::size_t polygon) {
        if constexpr (std::is_integral_v<Tags>) {
            return tags;
        } else {
            return std::data(tags)[polygon];
        }
    }

    template <class Indices, class Tags, class First>
    bool add(std::size_t count, const Indices& indices, const Tags& tags, const First& first) {
        if constexpr (!std::is_integral_v<Tags>) {
            if (std::size(tags) < count) return refuse("there are fewer tags than polygons");
        }
        if (!is_ready()) return false;
        bool all = true;
        for (std::size_t polygon = 0; polygon < count && (all || state()->is_open()); ++polygon) {
            const std::size_t begin = first(polygon), end = first(polygon + 1);
            const numbers corners(std::data(indices) + begin, end - begin);
            all &= detail::send(state(), "meshAddPoly3", ::meshAddPoly3, *this, tag(tags, polygon), corners);
        }
        return all;
    }

    bool take_points(const vertex_map& map) {
        return detail::send(state(), "mesh::points", ::meshOp2_points, *this, map);
    }

    /// The mesh's own map whose name is the mesh's and this, made the first time.
    vertex_map& map_of(std::string_view suffix) {
        for (vertex_map& map : maps_) {
            if (map && map.name().substr(name().size()) == suffix) return map;
        }
        maps_.push_back(vertex_map(state(), std::string(name()).append(suffix)));
        return maps_.back();
    }

    /// Writes numbers into a map of the mesh's own. One that has their size is attached already.
    template <class Number, class Attach>
    bool attach(std::string_view suffix, const rows<Number>& from, const Attach& attach_to_mesh) {
        if (!is_ready()) return false;
        vertex_map& map = map_of(suffix);
        if (map.holds(from.width(), from.count())) return map.write(from);
        const bool is_filled = map.declare(static_cast<int>(from.width()), from.count()) && map.write(from);
        if (is_filled && attach_to_mesh(map)) return true;
        map.reset();
        return false;
    }

    std::vector<vertex_map> maps_;
};

}  // namespace zant

#endif
