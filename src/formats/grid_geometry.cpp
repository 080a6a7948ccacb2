#include "formats/grid_geometry.h"

#include <algorithm>
#include <numeric>

namespace plx {

std::string grid_size_fault(const GridSize& size, std::int64_t bytes_left, long long most_cells) {
    constexpr int kMaxExtent = 10'000'000;
    const bool possible = std::min({size.layers, size.rows, size.columns}) >= 1 &&
                          std::max({size.layers, size.rows, size.columns}) <= kMaxExtent &&
                          size.per_layer() <= static_cast<std::size_t>(kMaxCells) &&
                          size.cells() <= static_cast<std::size_t>(kMaxCells);
    if (!possible) {
        return std::to_string(size.layers) + " layers, " + std::to_string(size.rows) + " rows and " +
               std::to_string(size.columns) + " columns are no grid";
    }
    if (static_cast<long long>(size.cells()) > most_cells) {
        return std::to_string(size.cells()) + " cells, which the model's files are too small for";
    }
    // Each layer takes up a line at least.
    if (size.layers <= bytes_left) return {};
    return std::to_string(size.layers) + " layers, but only " + std::to_string(bytes_left) + " bytes follow";
}

bool is_whole(const GridGeometry& geometry, const GridSize& size) {
    const auto fits = [&](const std::vector<GridGeometry::Surface>& surfaces) {
        return std::ssize(surfaces) == size.layers &&
               std::all_of(surfaces.begin(), surfaces.end(), [&](const GridGeometry::Surface& surface) {
                   return surface != nullptr && surface->size() == size.per_layer();
               });
    };
    return fits(geometry.tops) && fits(geometry.bottoms) &&
           std::ssize(geometry.column_edges) == size.columns + 1 &&
           std::ssize(geometry.row_edges) == size.rows + 1;
}

std::vector<double> running_sums(std::span<const double> widths) {
    std::vector<double> sums(widths.size() + 1, 0.0);
    std::partial_sum(widths.begin(), widths.end(), sums.begin() + 1);
    return sums;
}

std::vector<double> row_edges(std::span<const double> delc, bool reversed, bool true_rows) {
    std::vector<double> edges = running_sums(delc);
    if (!reversed) return edges;
    if (!true_rows) {
        std::reverse(edges.begin(), edges.end());
        return edges;
    }
    const double total = edges.back();
    for (double& edge : edges) edge = total - edge;
    return edges;
}

}  // namespace plx
