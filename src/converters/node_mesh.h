#pragma once

#include <array>
#include <iterator>
#include <vector>

#include "converters/cell_flags.h"
#include "formats/grid_geometry.h"

namespace plx {

/// The nodes of a hexahedral mesh over a model grid, with their elevations and their weights over the cells
/// around.
///
/// Every layer has two node planes of its own, its top and its bottom; a node stands where row line r (0 to
/// rows) and column line c (0 to columns) cross when one of the up to four cells around is active. Nodes
/// count from 0: layer, plane (top first), row line, column line.
///
/// A node's elevation and head are weighted sums over the cells around it, in the order (r, c), (r-1, c), (r,
/// c-1), (r-1, c-1). The weights grow with the square of the distance from the node to the cell's centre, as
/// VXInterpolateGrid gives them: in the plane for elevations, in space for heads.
class NodeMesh {
public:
    /// @param active_only  inactive cells have no weight; otherwise all cells around a node do.
    NodeMesh(const GridSize& size, const GridGeometry& geometry, const CellFlags& flags, bool active_only);

    int nodes() const { return total_; }
    int nodes_in_plane(int layer) const { return planes_[static_cast<std::size_t>(layer)].count; }
    /// Number of the node on a layer's top (plane 0) or bottom (plane 1); -1 where there is none.
    int number(int layer, int plane, int r, int c) const {
        const Plane& p = planes_[static_cast<std::size_t>(layer)];
        const int n = p.index.empty() ? -1 : p.index[line_index(r, c)];
        return n < 0 ? -1 : p.first + plane * p.count + n;
    }
    /// True when inactive cells were left out of a node's weights.
    bool left_out_inactive() const { return left_out_; }

    /// Elevations of a plane's nodes, in their order.
    void elevations(int layer, int plane, std::vector<double>& z) const;

    /// Calls visit(r, c) for each node of a layer's planes, in their order.
    template <class Visit>
    void each_node(int layer, Visit visit) const {
        const Plane& p = planes_[static_cast<std::size_t>(layer)];
        if (p.count == 0) return;
        for (int r = 0; r <= size_.rows; ++r) {
            for (int c = 0; c <= size_.columns; ++c) {
                if (p.index[line_index(r, c)] >= 0) visit(r, c);
            }
        }
    }

    /// Weights of a node over the cells around it, 0 for a cell that has none.
    using Weights = std::array<double, 4>;
    /// Computes the weights in space of all nodes; weights() may be used afterwards.
    void build_weights();
    bool has_weights() const { return std::ssize(weights_) == total_; }
    const Weights& weights(int node) const { return weights_[static_cast<std::size_t>(node)]; }

    /// Index within a layer of the m-th cell around row line r and column line c; -1 outside the grid.
    int cell_around(int r, int c, int m) const {
        r -= m & 1;
        c -= m >> 1;
        if (r < 0 || c < 0 || r >= size_.rows || c >= size_.columns) return -1;
        return r * size_.columns + c;
    }

private:
    struct Plane {
        int first = 0;  ///< number of its top plane's first node
        int count = 0;  ///< nodes of one plane
        std::vector<int>
            index;  ///< by row line and column line: place in the plane, -1 for none; empty without nodes
    };
    std::size_t line_index(int r, int c) const {
        return static_cast<std::size_t>(r) * static_cast<std::size_t>(size_.columns + 1) +
               static_cast<std::size_t>(c);
    }
    bool takes_part(int layer, int cell) const;
    void number_nodes();
    Weights weights_at(int layer, int r, int c, double z, bool in_space) const;

    GridSize size_;
    const GridGeometry& geometry_;
    const CellFlags& flags_;
    bool active_only_;
    bool left_out_ = false;
    int total_ = 0;
    std::vector<double> centre_x_, centre_y_;
    std::vector<Plane> planes_;
    std::vector<Weights> weights_;
};

}  // namespace plx
