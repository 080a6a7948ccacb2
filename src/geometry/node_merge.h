#pragma once

#include <vector>

#include "plxutils/geometry/cgPointList.h"

namespace plx {

/// Half-widths within which coordinates agree.
struct NodeTolerance {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

/// Replaces the nodes (one at least) by their groups of nodes with like coordinates, without data.
/// @return the new index of each old node
std::vector<int> merge_nodes(cgPointList& nodes, const NodeTolerance& tolerance);

/// Replaces the nodes (one at least) by their groups of nodes with like coordinates and data, and prints the
/// intermediate states on standard output.
/// @param data_tolerance  one for each data value of the first node
/// @return the number of each old node's group
std::vector<int> merge_nodes_with_data(cgPointList& nodes, const NodeTolerance& tolerance,
                                       const double* data_tolerance);

}  // namespace plx
