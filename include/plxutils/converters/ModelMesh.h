#pragma once

#include <array>
#include <vector>

#include "plxutils/converters/ConverterFactory.h"
#include "plxutils/export.h"

namespace plx {

/// The hexahedra that field files of a model consist of, with their nodes in the world.
///
/// Nodes and cells stand in the order of the model's own mesh files, so that values computed here belong to
/// the same nodes there. Each layer has a top and a bottom plane of nodes of its own.
struct ModelMesh {
    std::vector<double> x, y, z;            ///< of each node, in the model's length unit
    std::vector<std::array<int, 8>> cells;  ///< nodes from 0: four corners of the top, then of the bottom
    std::vector<int> cells_in_layer;        ///< cells of each layer from the top; `cells` has them in turn
};

/// The mesh of a model whose parsePROJECT is done, with the factory's reading rules, crop and place.
///
/// @return an empty mesh when the model has no whole grid; the factory's report tells why.
PLX_EXPORT ModelMesh make_model_mesh(ConverterFactory& factory);

}  // namespace plx
