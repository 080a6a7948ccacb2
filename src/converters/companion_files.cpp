#include "converters/companion_files.h"

#include <array>

namespace plx {
namespace {

/// Calls visit(layer, row, column, cell within the layer) for every active cell, layer by layer.
template <class Visit>
void each_active_cell(const ModelState& model, Visit visit) {
    if (model.flags.empty()) return;
    const GridSize size = model.size();
    std::size_t cell = 0;
    for (int k = 0; k < size.layers; ++k) {
        std::size_t in_layer = 0;
        for (int r = 0; r < size.rows; ++r) {
            for (int c = 0; c < size.columns; ++c, ++cell, ++in_layer) {
                if (model.flags.active(cell)) visit(k, r, c, in_layer);
            }
        }
    }
}

}  // namespace

void write_node_coordinates(BlockWriter& out, const NodeMesh& mesh, const ModelState& model,
                            const VX4X4Matrix& transform) {
    out.text("# GMStoPLX generated node coordinates file\n");
    std::vector<double> elevations;
    for (int k = 0; k < model.factory.nlay; ++k) {
        for (int plane = 0; plane < 2; ++plane) {
            mesh.elevations(k, plane, elevations);
            std::size_t node = 0;
            mesh.each_node(k, [&](int r, int c) {
                double x = model.geometry.column_edges[static_cast<std::size_t>(c)];
                double y = model.geometry.row_edges[static_cast<std::size_t>(r)];
                double z = elevations[node++];
                transform.transformPoint(x, y, z);
                out.fixed(x).put(' ').fixed(y).put(' ').fixed(z).put('\n');
            });
        }
    }
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
        for (int plane = 0; plane < 2; ++plane) {
            out.integer(mesh.number(k, plane, r, c)).put(' ');
            out.integer(mesh.number(k, plane, r + 1, c)).put(' ');
            out.integer(mesh.number(k, plane, r + 1, c + 1)).put(' ');
            out.integer(mesh.number(k, plane, r, c + 1)).put(plane == 0 ? ' ' : '\n');
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
