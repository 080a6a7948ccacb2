#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "converters/model_state.h"
#include "converters/node_mesh.h"
#include "plxutils/math/VX4X4Matrix.h"

namespace plx {

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

/// The nodes of a cell: the four corners of its top, then of its bottom, counter-clockwise from above for
/// rows that run south.
inline std::array<int, 8> cell_corners(const NodeMesh& mesh, int k, int r, int c) {
    return {mesh.number(k, 0, r, c),         mesh.number(k, 0, r + 1, c), mesh.number(k, 0, r + 1, c + 1),
            mesh.number(k, 0, r, c + 1),     mesh.number(k, 1, r, c),     mesh.number(k, 1, r + 1, c),
            mesh.number(k, 1, r + 1, c + 1), mesh.number(k, 1, r, c + 1)};
}

/// Calls visit(x, y, z) with the world coordinates of every node, in their order.
template <class Visit>
void each_world_node(const NodeMesh& mesh, const ModelState& model, const VX4X4Matrix& transform,
                     Visit visit) {
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
                visit(x, y, z);
            });
        }
    }
}

}  // namespace plx
