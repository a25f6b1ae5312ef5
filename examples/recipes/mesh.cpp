// A mesh from arrays: points, normals, texture coordinates and polygons of the host, each sent in one call.
//
// usage: mesh ENGINE_DIRECTORY
// Exit codes: 0 fine, 1 a command was refused, 2 wrong usage, 3 no engine.

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <vector>
#include <zant/zant.hpp>

namespace {

// ---- The host: a height field in arrays of its own

struct vertex {
    float position[3];
    float normal[3];
    float uv[2];
};

struct height_field {
    std::vector<vertex> vertices;
    std::vector<std::uint32_t> quads;  // four indices each
};

vertex vertex_at(float u, float v) {
    const float slope = 0.3F * std::cos(6 * u);
    return {{u, 0.05F * std::sin(6 * u), v}, {-slope, 1, 0}, {u, v}};
}

height_field make_height_field(std::uint32_t side) {
    height_field field;
    for (std::uint32_t k = 0; k < side * side; ++k)
        field.vertices.push_back(vertex_at(static_cast<float>(k % side) / 316, static_cast<float>(k / side) / 316));
    for (std::uint32_t k = 0; k < side * (side - 1); ++k) {
        if (k % side != side - 1) field.quads.insert(field.quads.end(), {k, k + 1, k + side + 1, k + side});
    }
    return field;
}

// ---- The recipe

/// The three numbers (or two) that stand at the same place of every vertex.
template <std::size_t Width>
zant::rows<const float> each(const std::vector<vertex>& vertices, const float (vertex::*member)[Width]) {
    return {vertices.front().*member, vertices.size(), Width, sizeof(vertex)};
}

/// Sends a mesh. Nothing of it is copied on the way: the numbers are written into the engine's memory.
bool send_mesh(zant::scene& scene, zant::mesh& mesh, const height_field& field) {
    mesh.points(each<3>(field.vertices, &vertex::position));
    mesh.normals(each<3>(field.vertices, &vertex::normal));
    mesh.uv(each<2>(field.vertices, &vertex::uv));
    mesh.polygons_of(4, field.quads);
    return !scene.failed();
}

// ---- End of the recipe

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: mesh ENGINE_DIRECTORY\n");
        return 2;
    }
    zant::session session(argv[1]);
    zant::scene scene(session);
    zant::mesh mesh(scene, "Height field 1");
    const height_field field = make_height_field(317);
    if (!send_mesh(scene, mesh, field)) {
        std::fprintf(stderr, "mesh: %s\n", scene.reason().c_str());
        return session ? 1 : 3;
    }
    std::printf("mesh: %zu points and %zu quads are in the engine as %.*s\n", field.vertices.size(),
                field.quads.size() / 4, static_cast<int>(mesh.engine_name().size()), mesh.engine_name().data());
}
