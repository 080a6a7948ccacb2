#include "converters/node_mesh.h"

#include <cmath>

namespace plx {
namespace {

std::vector<double> midpoints(const std::vector<double>& edges) {
    std::vector<double> out(edges.empty() ? 0 : edges.size() - 1);
    for (std::size_t i = 0; i < out.size(); ++i) out[i] = (edges[i] + edges[i + 1]) * 0.5;
    return out;
}

}  // namespace

NodeMesh::NodeMesh(const GridSize& size, const GridGeometry& geometry, const CellFlags& flags,
                   bool active_only)
    : size_(size),
      geometry_(geometry),
      flags_(flags),
      active_only_(active_only),
      centre_x_(midpoints(geometry.column_edges)),
      centre_y_(midpoints(geometry.row_edges)),
      planes_(static_cast<std::size_t>(size.layers)) {
    if (!flags_.empty()) number_nodes();
}

bool NodeMesh::takes_part(int layer, int cell) const {
    return flags_.active(static_cast<std::size_t>(layer) * size_.per_layer() +
                         static_cast<std::size_t>(cell));
}

void NodeMesh::number_nodes() {
    for (int k = 0; k < size_.layers; ++k) {
        Plane& plane = planes_[static_cast<std::size_t>(k)];
        plane.first = total_;
        if (flags_.active_in_layer(k) == 0) continue;
        plane.index.assign(line_index(size_.rows + 1, 0), -1);
        for (int r = 0; r <= size_.rows; ++r) {
            for (int c = 0; c <= size_.columns; ++c) {
                int around = 0, active = 0;
                for (int m = 0; m < 4; ++m) {
                    const int cell = cell_around(r, c, m);
                    if (cell < 0) continue;
                    ++around;
                    active += takes_part(k, cell) ? 1 : 0;
                }
                if (active == 0) continue;
                if (active_only_ && active < around) left_out_ = true;
                plane.index[line_index(r, c)] = plane.count++;
            }
        }
        total_ += 2 * plane.count;
    }
}

NodeMesh::Weights NodeMesh::weights_at(int layer, int r, int c, double z, bool in_space) const {
    const double x = geometry_.column_edges[static_cast<std::size_t>(c)];
    const double y = geometry_.row_edges[static_cast<std::size_t>(r)];
    const auto k = static_cast<std::size_t>(layer);
    Weights w{};
    std::array<bool, 4> taken{};
    double sum = 0.0;
    int count = 0;
    for (int m = 0; m < 4; ++m) {
        const int cell = cell_around(r, c, m);
        if (cell < 0 || (active_only_ && !takes_part(layer, cell))) continue;
        const double dx = x - centre_x_[static_cast<std::size_t>(c - (m >> 1))];
        const double dy = y - centre_y_[static_cast<std::size_t>(r - (m & 1))];
        double dz = 0.0;
        if (in_space) {
            const auto at = static_cast<std::size_t>(cell);
            dz = z - ((*geometry_.tops[k])[at] + (*geometry_.bottoms[k])[at]) * 0.5;
        }
        // Rooted and squared again, as the gridded interpolation does it, so that the last digits agree.
        const double d = std::sqrt(dx * dx + dy * dy + dz * dz);
        const auto i = static_cast<std::size_t>(m);
        w[i] = d * d;
        taken[i] = true;
        sum += w[i];
        ++count;
    }
    for (std::size_t i = 0; i < 4; ++i) {
        if (!taken[i]) continue;
        // Cells of no extent at all share the weight; 0/0 would spread through the outputs.
        w[i] = sum > 0.0 ? w[i] / sum : 1.0 / count;
    }
    return w;
}

void NodeMesh::elevations(int layer, int plane, std::vector<double>& z) const {
    z.clear();
    if (nodes_in_plane(layer) == 0) return;
    const auto k = static_cast<std::size_t>(layer);
    const auto& surface = plane == 0 ? *geometry_.tops[k] : *geometry_.bottoms[k];
    z.reserve(static_cast<std::size_t>(nodes_in_plane(layer)));
    each_node(layer, [&](int r, int c) {
        const Weights w = weights_at(layer, r, c, 0.0, false);
        double sum = 0.0;
        for (int m = 0; m < 4; ++m) {
            const double weight = w[static_cast<std::size_t>(m)];
            if (weight != 0.0) sum += weight * surface[static_cast<std::size_t>(cell_around(r, c, m))];
        }
        z.push_back(sum);
    });
}

void NodeMesh::build_weights() {
    weights_.clear();
    weights_.reserve(static_cast<std::size_t>(total_));
    std::vector<double> z;
    for (int k = 0; k < size_.layers; ++k) {
        for (int plane = 0; plane < 2; ++plane) {
            elevations(k, plane, z);
            std::size_t node = 0;
            each_node(k, [&](int r, int c) { weights_.push_back(weights_at(k, r, c, z[node++], true)); });
        }
    }
}

}  // namespace plx
