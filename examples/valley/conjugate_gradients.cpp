#include "conjugate_gradients.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace valley {
namespace {

using Vector = std::vector<double>;

double dot(const Vector& a, const Vector& b) {
    return std::inner_product(a.begin(), a.end(), b.begin(), 0.0);
}

/// Sum over the links of a cell to the cells before it of link * value(cell there).
template <typename Value>
double before(const SevenPointMatrix& m, std::size_t cell, Value value) {
    double sum = 0.0;
    if (cell >= 1) sum += value(m.right[cell - 1], cell - 1);
    if (cell >= m.columns) sum += value(m.front[cell - m.columns], cell - m.columns);
    if (cell >= m.layer_cells) sum += value(m.lower[cell - m.layer_cells], cell - m.layer_cells);
    return sum;
}

double after(const SevenPointMatrix& m, std::size_t cell, const Vector& x) {
    const std::size_t n = x.size();
    double sum = 0.0;
    if (cell + 1 < n) sum += m.right[cell] * x[cell + 1];
    if (cell + m.columns < n) sum += m.front[cell] * x[cell + m.columns];
    if (cell + m.layer_cells < n) sum += m.lower[cell] * x[cell + m.layer_cells];
    return sum;
}

void multiply(const SevenPointMatrix& m, const Vector& x, Vector& result) {
    for (std::size_t cell = 0; cell < x.size(); ++cell) {
        const double linked = before(m, cell, [&](double c, std::size_t at) { return c * x[at]; });
        result[cell] = m.diagonal[cell] * x[cell] - linked - after(m, cell, x);
    }
}

Vector pivots(const SevenPointMatrix& m) {
    Vector d(m.diagonal.size());
    for (std::size_t cell = 0; cell < d.size(); ++cell) {
        d[cell] = m.diagonal[cell] - before(m, cell, [&](double c, std::size_t at) { return c * c / d[at]; });
    }
    return d;
}

/// Solves L D^-1 L' z = r with the factor's diagonal d and the matrix's own links.
void precondition(const SevenPointMatrix& m, const Vector& d, const Vector& r, Vector& z) {
    for (std::size_t cell = 0; cell < r.size(); ++cell) {
        z[cell] = (r[cell] + before(m, cell, [&](double c, std::size_t at) { return c * z[at]; })) / d[cell];
    }
    for (std::size_t cell = r.size(); cell-- > 0;) z[cell] += after(m, cell, z) / d[cell];
}

double largest(const Vector& values) {
    return std::accumulate(values.begin(), values.end(), 0.0,
                           [](double most, double value) { return std::max(most, std::fabs(value)); });
}

}  // namespace

bool solve(const SevenPointMatrix& matrix, const Vector& right_side, double tolerance, int most, Vector& x) {
    const std::size_t n = x.size();
    const Vector d = pivots(matrix);
    Vector r(n), z(n), p(n), q(n);
    multiply(matrix, x, q);
    for (std::size_t i = 0; i < n; ++i) r[i] = right_side[i] - q[i];
    double rho = 0.0;
    for (int iteration = 0; iteration <= most; ++iteration) {
        if (largest(r) <= tolerance) return true;
        precondition(matrix, d, r, z);
        const double previous = std::exchange(rho, dot(r, z));
        for (std::size_t i = 0; i < n; ++i) p[i] = z[i] + (iteration == 0 ? 0.0 : rho / previous) * p[i];
        multiply(matrix, p, q);
        const double alpha = rho / dot(p, q);
        for (std::size_t i = 0; i < n; ++i) {
            x[i] += alpha * p[i];
            r[i] -= alpha * q[i];
        }
    }
    return false;
}

}  // namespace valley
