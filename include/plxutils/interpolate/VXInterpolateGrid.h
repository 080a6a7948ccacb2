#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "plxutils/export.h"
#include "plxutils/geometry/cgPointList.h"

/// Values at the nodes of a structured ni x nj x nk grid; answers which corner nodes of a cell carry a value,
/// with their distances and weights, and leaves the weighted sum to the caller.
///
/// A node value of exactly -1.0 means "no value"; every node starts that way.
class PLX_EXPORT VXInterpolateGrid {
public:
    /// Extents below 0 count as 0; a grid of more nodes than an int can count is empty.
    ///
    /// @param useLowerLayer  queries also look at layer k - 1.
    VXInterpolateGrid(int ni, int nj, int nk, bool useLowerLayer);

    /// Stores a node. An index outside the grid prints a message and changes node (0, 0, 0) instead.
    void set_point(double value, int i, int j, int k, double x, double y, double z);

    /// Gathers the valued nodes (i, j), (i-1, j), (i, j-1), (i-1, j-1) of layer k, then of layer k - 1, as
    /// far as they lie in the grid.
    ///
    /// @param[out] out  emptied first; each point has the node's coordinates and three values: [0] distance
    ///                  from (x, y, z), [1] node value, [2] weight. The weights sum to 1 and grow with the
    ///                  square of the distance; they are NaN when all distances are 0.
    /// @return always true
    bool project_point(int i, int j, int k, double x, double y, double z, cgPointList& out);

private:
    struct Node {
        double x = 0.0;
        double y = 0.0;
        double z = 0.0;
        double value = -1.0;
    };

    const Node* find(std::int64_t i, std::int64_t j, std::int64_t k) const;
    static cgPoint createPoint(double x, double y, double z, const Node& node);
    std::size_t slot(std::int64_t i, std::int64_t j, std::int64_t k) const;

    std::vector<Node> nodes;
    int ni, nj, nk;
    bool useLowerLayer;
};
