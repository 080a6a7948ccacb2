#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace plx {

/// Extents of a MODFLOW grid.
struct GridSize {
    int layers = 0, rows = 0, columns = 0;
    std::size_t per_layer() const {
        return static_cast<std::size_t>(rows) * static_cast<std::size_t>(columns);
    }
    std::size_t cells() const { return per_layer() * static_cast<std::size_t>(layers); }
};

/// A model grid above this many cells is taken for a damaged file.
inline constexpr long long kMaxCells = 100'000'000;

/// Why the size cannot be that of a model grid: an extent below 1 or above ten million, more than
/// `most_cells` or kMaxCells cells, or more layers than `bytes_left`, the rest of the file, could describe;
/// empty when it can.
std::string grid_size_fault(const GridSize& size, std::int64_t bytes_left, long long most_cells = kMaxCells);

/// Cell edges and layer surfaces of a grid, in model length units and grid coordinates.
struct GridGeometry {
    std::vector<double> column_edges;  ///< columns + 1
    std::vector<double> row_edges;     ///< rows + 1, in row order
    /// Surfaces, row * columns + column. A layer's bottom is shared with the next layer's top where no
    /// confining bed lies between.
    using Surface = std::shared_ptr<const std::vector<double>>;
    std::vector<Surface> tops, bottoms;  ///< one per layer
};

/// True when edges and every layer's surfaces are there in the grid's size.
bool is_whole(const GridGeometry& geometry, const GridSize& size);

/// 0 followed by the running sums of the widths.
std::vector<double> running_sums(std::span<const double> widths);

/// Row-edge positions of the row widths `delc`.
///
/// @param reversed  row 0 lies at the largest y.
/// @param true_rows edge i is the total less the widths of the rows before it; otherwise the list of running
/// sums
///                  turned around, which differs when the widths do.
std::vector<double> row_edges(std::span<const double> delc, bool reversed, bool true_rows);

}  // namespace plx
