#pragma once

#include <functional>

#include "converters/field_file_writer.h"
#include "converters/model_state.h"
#include "converters/node_mesh.h"
#include "core/block_writer.h"
#include "plxutils/math/VX4X4Matrix.h"

namespace plx {

// The files that the field files of all steps share. Each begins with a comment line; the first value stands
// on line 2.

/// "x y z" of every node, world coordinates.
void write_node_coordinates(BlockWriter& out, const NodeMesh& mesh, const ModelState& model,
                            const VX4X4Matrix& transform);
/// The layer of every node, from 0.
void write_geo_layers(BlockWriter& out, const NodeMesh& mesh, const ModelState& model);
/// The elevation of every node.
void write_elevations(BlockWriter& out, const NodeMesh& mesh, const ModelState& model);
/// Eight node numbers of every active cell: the four corners of its top, then of its bottom.
void write_connectivity(BlockWriter& out, const NodeMesh& mesh, const ModelState& model);
/// The porosity of every active cell.
void write_porosity(BlockWriter& out, const ModelState& model);

/// The cell sets of a mesh over the grid, one per layer, whose corner nodes stand in the connectivity file.
std::vector<CellSet> layer_cell_sets(const CellFlags& flags, int layers);

}  // namespace plx
