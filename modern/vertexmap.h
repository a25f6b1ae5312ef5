#ifndef ZANT_MODERN_VERTEXMAP_H
#define ZANT_MODERN_VERTEXMAP_H

#include <cstddef>
#include <cstring>

#include "client/symbols/vertexmap.h"
#include "modern/span.h"
#include "modern/symbol.h"

namespace zant {

namespace detail {

template <class From, class To>
void copy_numbers(const From* from, To* to, std::size_t count) {
    if constexpr (std::is_same_v<std::remove_const_t<From>, To>) {
        if (count != 0) std::memcpy(to, from, count * sizeof(To));
    } else {
        for (std::size_t number = 0; number < count; ++number)
            to[number] = static_cast<To>(from[number]);
    }
}

/// Copies rows of numbers, `Width` to a row, or `width` where that is 0.
template <std::size_t Width, class From, class To>
void copy_each_row(const rows<From>& from, const rows<To>& to) {
    const std::size_t width = Width != 0 ? Width : from.width();
    for (std::size_t row = 0; row < from.count(); ++row)
        copy_numbers(from[row], to[row], width);
}

template <class From, class To>
void copy_rows(const rows<From>& from, const rows<To>& to) {
    if (from.is_dense() && to.is_dense()) {
        copy_numbers(from[0], to[0], from.count() * from.width());
    } else if (from.width() == 3) {
        copy_each_row<3>(from, to);
    } else if (from.width() == 2) {
        copy_each_row<2>(from, to);
    } else {
        copy_each_row<0>(from, to);
    }
}

}  // namespace detail

/// A table of numbers in the engine, such as the points of a mesh: rows of samples of `dimension` numbers.
///
/// Threads: as its scene.
class vertex_map : public symbol {
public:
    vertex_map() = default;
    /// Names a map, and sends nothing.
    vertex_map(const basic_scene& scene, const zant::name& called) : vertex_map(state_of(scene), called) {}

    /// Makes the map in the engine, with this many rows; a map of 0 rows grows by command.
    bool declare(int dimension, std::size_t size, int samples = 1) {
        return declare_by("vertex_map::declare", [&] { here().registerSymbol(dimension, size, samples); });
    }

    /// Writes rows straight into the engine's memory, from the first row on. Their width is the dimension of the map.
    template <class Number>
    bool write(const rows<Number>& from, std::size_t first_row = 0, int sample = 0) {
        return move("vertex_map::write", from, first_row, sample, [&](const auto& to) { detail::copy_rows(from, to); });
    }

    /// Reads rows straight out of the engine's memory.
    template <class Number>
    bool read(const rows<Number>& to, std::size_t first_row = 0, int sample = 0) const {
        return move("vertex_map::read", to, first_row, sample, [&](const auto& from) { detail::copy_rows(from, to); });
    }

    /// The engine's own memory, or null while there is none.
    const Zant::VertexMapInfo* direct() const { return is_declared() ? here().direct() : nullptr; }

private:
    friend class mesh;
    vertex_map(detail::scene_state* scene, const zant::name& called) { make<Zant::VertexMapSymbol>(scene, called); }

    bool holds(std::size_t dimension, std::size_t size) const {
        const Zant::VertexMapInfo* const map = direct();
        return map && map->getSize() == size && static_cast<std::size_t>(map->getDimension()) == dimension;
    }

    Zant::VertexMapSymbol& here() const { return handle<Zant::VertexMapSymbol>(); }

    template <class Number, class Copy>
    bool move(const char* command, const rows<Number>& host, std::size_t first_row, int sample,
              const Copy& copy) const {
        if (!require_open(command)) return false;
        here().refreshDirectLink();
        const Zant::VertexMapInfo* const map = here().direct();
        if (!map) return state()->refuse(command, "the engine shows no memory of the map");
        if (host.width() != static_cast<std::size_t>(map->getDimension()))
            return state()->refuse(command, "the width of the rows is not the dimension of the map");
        if (host.count() > map->getSize() || first_row > map->getSize() - host.count() || sample < 0 ||
            sample >= map->getSamples())
            return state()->refuse(command, "the map has no such rows");
        map->isDouble ? copy(part<double>(*map, host, first_row, sample))
                      : copy(part<float>(*map, host, first_row, sample));
        return true;
    }

    /// The rows of the engine that answer to those of the host.
    template <class Stored, class Number>
    static rows<Stored> part(const Zant::VertexMapInfo& map, const rows<Number>& host, std::size_t first_row,
                             int sample) {
        const std::size_t row = host.width() * static_cast<std::size_t>(map.getSamples());
        Stored* const first = static_cast<Stored*>(map.record->values) + first_row * row +
                              static_cast<std::size_t>(sample) * host.width();
        return {first, host.count(), host.width(), row * sizeof(Stored)};
    }
};

}  // namespace zant

#endif
