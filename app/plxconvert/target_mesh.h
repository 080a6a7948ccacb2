#pragma once

#include <array>
#include <filesystem>
#include <memory>
#include <vector>

#include "plxutils/converters/FieldFile.h"

namespace plx::tool {

/// A mesh of hexahedra more than this many nodes is refused: its field file would be of many gigabytes.
constexpr long long kMostNodes = 100'000'000;

/// Where values are wanted: the nodes of a mesh of hexahedra, and its cells.
class TargetMesh {
public:
    virtual ~TargetMesh() = default;
    virtual int nodes() const = 0;
    virtual int cells() const = 0;
    virtual std::array<double, 3> node(int i) const = 0;
    /// Four corners of the top, then of the bottom.
    virtual std::array<int, 8> cell(int i) const = 0;
    virtual std::vector<CellSet> cell_sets() const = 0;
};

using Box = std::array<double, 6>;  ///< xmin, ymin, zmin, xmax, ymax, zmax

/// A regular grid over a box. Nothing is kept of its nodes, so that size costs no memory. The caller has
/// checked that it has no more than kMostNodes nodes.
std::unique_ptr<TargetMesh> make_grid_mesh(const std::array<int, 3>& cells, const Box& box);

/// The mesh of a model, at its place in the world.
///
/// @throws InputFault when it cannot be read; the text holds a line for each fault.
std::unique_ptr<TargetMesh> read_model_mesh(const std::filesystem::path& project);

}  // namespace plx::tool
