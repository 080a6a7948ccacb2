#pragma once

#include <cstddef>
#include <vector>

namespace valley {

/// Symmetric matrix of a layered grid: a diagonal and, with negative sign, what links each cell to the next
/// one along the row, the column and the vertical (`right`, `front`, `lower`, all >= 0).
struct SevenPointMatrix {
    std::size_t columns = 0;      ///< cells to the next row
    std::size_t layer_cells = 0;  ///< cells to the next layer
    std::vector<double> diagonal, right, front, lower;
};

/// Conjugate gradients, preconditioned by an incomplete Cholesky factor without fill. `x` holds the first
/// guess and receives the solution. False when the largest residual stays above `tolerance` for `most`
/// iterations.
bool solve(const SevenPointMatrix& matrix, const std::vector<double>& right_side, double tolerance, int most,
           std::vector<double>& x);

}  // namespace valley
