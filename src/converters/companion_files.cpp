#include "converters/companion_files.h"

#include "converters/mesh_walk.h"

namespace plx {

void write_node_coordinates(BlockWriter& out, const NodeMesh& mesh, const ModelState& model,
                            const VX4X4Matrix& transform) {
    out.text("# GMStoPLX generated node coordinates file\n");
    each_world_node(mesh, model, transform, [&out](double x, double y, double z) {
        out.fixed(x).put(' ').fixed(y).put(' ').fixed(z).put('\n');
    });
}

void write_geo_layers(BlockWriter& out, const NodeMesh& mesh, const ModelState& model) {
    out.text("# GMStoPLX generated geo_layer data file\n");
    for (int k = 0; k < model.factory.nlay; ++k) {
        for (int node = 0; node < 2 * mesh.nodes_in_plane(k); ++node) out.integer(k).put('\n');
    }
}

void write_elevations(BlockWriter& out, const NodeMesh& mesh, const ModelState& model) {
    out.text("# GMStoPLX generated elevation data file\n");
    std::vector<double> elevations;
    for (int k = 0; k < model.factory.nlay; ++k) {
        for (int plane = 0; plane < 2; ++plane) {
            mesh.elevations(k, plane, elevations);
            for (const double z : elevations) out.fixed(z).put('\n');
        }
    }
}

void write_connectivity(BlockWriter& out, const NodeMesh& mesh, const ModelState& model) {
    out.text("# GMStoPLX generated cell connectivity file\n");
    each_active_cell(model, [&](int k, int r, int c, std::size_t) {
        const std::array<int, 8> corners = cell_corners(mesh, k, r, c);
        for (std::size_t i = 0; i < corners.size(); ++i) {
            out.integer(corners[i]).put(i + 1 < corners.size() ? ' ' : '\n');
        }
    });
}

void write_porosity(BlockWriter& out, const ModelState& model) {
    out.text("# GMStoPLX generated cell porosity value file\n");
    const std::size_t per_layer = model.size().per_layer();
    const auto& by_layer = model.factory.default_porosity;
    each_active_cell(model, [&](int k, int, int, std::size_t in_layer) {
        const std::size_t cell = static_cast<std::size_t>(k) * per_layer + in_layer;
        const double value = cell < model.porosity.size() ? model.porosity[cell] : by_layer[k];
        out.fixed(value).put('\n');
    });
}

std::vector<CellSet> layer_cell_sets(const CellFlags& flags, int layers) {
    std::vector<CellSet> sets;
    int row = 2;
    for (int k = 0; k < layers; ++k) {
        const int cells = flags.empty() ? 0 : flags.active_in_layer(k);
        sets.push_back({"Layer_" + std::to_string(k), cells, "Hex", row});
        row += cells;
    }
    return sets;
}

}  // namespace plx
