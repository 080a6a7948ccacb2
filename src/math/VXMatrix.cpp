#include "plxutils/math/VXMatrix.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <utility>

namespace {

constexpr int kMaxSweeps = 50;

/// Whether x rounds to 0 at the number of decimals that `power` (10 to that number) stands for.
bool rounds_to_zero(double x, double power) { return std::fabs(x * power) < 0.5; }

bool is_zero(double x) { return rounds_to_zero(x, 1e8); }

bool rounds_to_one(double x) {
    const double scaled = x * 1e8;
    return scaled >= 99999999.5 && scaled < 100000000.5;
}

}  // namespace

VXMatrix::VXMatrix(int rows_, int cols_) : rows(std::max(rows_, 0)), cols(std::max(cols_, 0)) {
    m = std::make_unique<double[]>(size());
    if (rows == cols) {
        for (int i = 0; i < rows; ++i) at(i, i) = 1.0;
    }
}

VXMatrix::VXMatrix(const VXMatrix& b) : rows(b.rows), cols(b.cols), m(new double[b.size()]) {
    std::copy_n(b.m.get(), size(), m.get());
}

VXMatrix& VXMatrix::operator=(const VXMatrix& b) {
    if (this == &b) return *this;
    if (size() != b.size()) m.reset(new double[b.size()]);
    rows = b.rows;
    cols = b.cols;
    std::copy_n(b.m.get(), size(), m.get());
    return *this;
}

VXMatrix VXMatrix::operator*(const VXMatrix& b) const {
    if (cols != b.rows) {
        std::fputs(
            "Multiplication error: dimension mismatch. Columns of Matrix A need to equal Rows of Matrix B.\n",
            stdout);
        return *this;
    }
    VXMatrix product(rows, b.cols);
    for (int r = 0; r < rows; ++r) {
        for (int c = 0; c < b.cols; ++c) {
            double sum = 0.0;
            for (int k = 0; k < cols; ++k) sum += at(r, k) * b.at(k, c);
            product.at(r, c) = sum;
        }
    }
    return product;
}

void VXMatrix::reset_dim(int r, int c) {
    const int new_rows = std::max(r, 0);
    const int new_cols = std::max(c, 0);
    auto old = std::move(m);
    m = std::make_unique<double[]>(static_cast<std::size_t>(new_rows) * static_cast<std::size_t>(new_cols));
    const auto kept_cols = static_cast<std::size_t>(std::min(cols, new_cols));
    for (std::size_t i = 0; i < static_cast<std::size_t>(std::min(rows, new_rows)); ++i) {
        std::copy_n(old.get() + i * static_cast<std::size_t>(cols), kept_cols,
                    m.get() + i * static_cast<std::size_t>(new_cols));
    }
    rows = new_rows;
    cols = new_cols;
}

void VXMatrix::SetMat(int r, int c, const double* values) {
    r = std::max(r, 0);
    c = std::max(c, 0);
    if (r != rows || c != cols) reset_dim(r, c);
    if (!values) return;
    for (int i = 0; i < rows; ++i) {
        set_row(i, values + static_cast<std::size_t>(i) * static_cast<std::size_t>(cols));
    }
}

void VXMatrix::set_row(int r, const double* values) {
    for (int c = 0; c < cols; ++c) at(r, c) = values[c];
}

int VXMatrix::set_element(int r, int c, double v) {
    if (!inside(r, c)) {
        std::fputs("Set Element Bounds Error: either row index or column index exceeds matrix bounds.\n",
                   stdout);
        return 0;
    }
    at(r, c) = v;
    return 1;
}

double VXMatrix::return_elem(int r, int c) const {
    if (!inside(r, c)) {
        std::printf("Return Element -  Element exceeds bounds. [%d,%d] bounds - [%d,%d]\n", r, c, rows, cols);
        return 0.0;
    }
    return at(r, c);
}

int VXMatrix::set_to_identity() {
    if (rows != cols) {
        std::fputs("Must be a square matrix.\n", stdout);
        return 0;
    }
    std::fill_n(m.get(), size(), 0.0);
    for (int i = 0; i < rows; ++i) at(i, i) = 1.0;
    return 1;
}

void VXMatrix::swap_rows(int a, int b) {
    if (a < 0 || a >= rows || b < 0 || b >= rows) {
        std::fputs("Swap Rows Bounds error: row index exceeds matrix bounds.\n", stdout);
        return;
    }
    for (int c = 0; c < cols; ++c) std::swap(at(a, c), at(b, c));
}

void VXMatrix::swap_columns(int a, int b) {
    if (a < 0 || a >= cols || b < 0 || b >= cols) {
        std::fputs("Swap Columns Bounds error:  column index exceeds matrix bounds.\n", stdout);
        return;
    }
    for (int r = 0; r < rows; ++r) std::swap(at(r, a), at(r, b));
}

void VXMatrix::divide_row(int r, double d) {
    if (r < 0 || r >= rows) {
        std::fputs("Divide Row Bounds error: row index exceeds matrix bounds.\n", stdout);
        return;
    }
    if (d == 0.0) {
        std::fputs("Divison error: cannot divide row by zero.", stdout);
        return;
    }
    for (int c = 0; c < cols; ++c) at(r, c) /= d;
}

void VXMatrix::subtract_row(int target, int source, double factor, int first_column) {
    for (int c = first_column; c < cols; ++c) at(target, c) -= factor * at(source, c);
}

int VXMatrix::set_to_ref() {
    int r = 0;
    for (int c = 0; r < rows && c < cols; ++c) {
        // The first candidate is taken, not the largest: fits rely on the exact digits this gives.
        for (int k = r + 1; k < rows && is_zero(at(r, c)); ++k) {
            if (!is_zero(at(k, c))) swap_rows(r, k);
        }
        if (is_zero(at(r, c))) continue;
        divide_row(r, at(r, c));
        for (int i = r + 1; i < rows; ++i) subtract_row(i, r, at(i, c), 0);
        ++r;
    }
    return 1;
}

int VXMatrix::set_to_rref() {
    if (rows == 0 || cols == 0) return 1;
    set_to_ref();
    int r = std::min(rows, cols) - 1;
    if (rows == cols) {
        // A square matrix loses its last diagonal element on purpose; callers of the reduction expect that.
        at(r, r) = 0.0;
        --r;
    }
    int c = r;
    while (r >= 0 && c >= 0) {
        while (r >= 1 && c >= 1 && rounds_to_zero(at(r, c), 1e4)) {
            --r;
            --c;
        }
        for (int i = r - 1; i >= 0; --i) subtract_row(i, r, at(i, c), c);
        --r;
        --c;
    }
    return 1;
}

VXMatrix VXMatrix::inverse() const {
    VXMatrix work(*this);
    work.reset_dim(rows, 2 * cols);
    for (int i = 0; i < rows; ++i) work.set_element(i, cols + i, 1.0);
    work.set_to_rref();
    for (int i = 0; i < cols; ++i) work.swap_columns(i, cols + i);
    work.reset_dim(rows, cols);
    if (!(*this * work).is_identity()) {
        std::fputs("Warning! Matrix has no real inverse solution!\n", stdout);
    }
    return work;
}

bool VXMatrix::is_identity() const {
    if (rows != cols) {
        std::fputs("Is_Identity Error : The number of rows in the matrix must equal the number of columns.\n",
                   stdout);
        return false;
    }
    for (int r = 0; r < rows; ++r) {
        for (int c = 0; c < cols; ++c) {
            if (r == c ? !rounds_to_one(at(r, c)) : !is_zero(at(r, c))) return false;
        }
    }
    return true;
}

void VXMatrix::display() const {
    for (int r = 0; r < rows; ++r) {
        for (int c = 0; c < cols; ++c) std::printf("%.8lf ", at(r, c));
        std::fputs("\n", stdout);
    }
}

/// What the rotations of one jacobi() call share.
struct VXMatrix::JacobiState {
    VXMatrix& v;
    double* d;
    double z[3];
    double threshold;
    int sweep;
};

void VXMatrix::rot(double s, double tau, int i, int j, int k, int l) {
    const double g = return_elem(i, j);
    const double h = return_elem(k, l);
    set_element(i, j, g - s * (h + g * tau));
    set_element(k, l, h + s * (g - h * tau));
}

void VXMatrix::jacobi_pair(JacobiState& state, int p, int q) {
    const double off = return_elem(p, q);
    // Absolute limits, not relative to the diagonal: results at the scale of the callers depend on them.
    const double g = 100.0 * std::fabs(off);
    if (state.sweep > 4 && g < 1e-20) {
        set_element(p, q, 0.0);
        return;
    }
    if (std::fabs(off) <= state.threshold) return;
    const double difference = state.d[q] - state.d[p];
    double t;
    if (g < 1e-5 && difference != 0.0) {
        t = off / difference;
    } else {
        const double theta = 0.5 * difference / off;
        t = 1.0 / (std::fabs(theta) + std::sqrt(theta * theta + 1.0));
        if (theta < 0.0) t = -t;
    }
    const double c = 1.0 / std::sqrt(t * t + 1.0);
    const double s = t * c;
    const double tau = s / (1.0 + c);
    const double h = t * off;
    state.z[p] -= h;
    state.z[q] += h;
    state.d[p] -= h;
    state.d[q] += h;
    set_element(p, q, 0.0);
    for (int j = 0; j < p; ++j) rot(s, tau, j, p, j, q);
    for (int j = p + 1; j < q; ++j) rot(s, tau, p, j, j, q);
    for (int j = q + 1; j < 3; ++j) rot(s, tau, p, j, q, j);
    for (int j = 0; j < 3; ++j) state.v.rot(s, tau, j, p, j, q);
}

void VXMatrix::jacobi(VXMatrix& v, double* d) {
    if (!d) return;
    v.set_to_identity();
    JacobiState state{v, d, {0.0, 0.0, 0.0}, 0.0, 0};
    double b[3];
    for (int i = 0; i < 3; ++i) b[i] = d[i] = return_elem(i, i);
    for (state.sweep = 1; state.sweep <= kMaxSweeps; ++state.sweep) {
        const double sum =
            std::fabs(return_elem(0, 1)) + std::fabs(return_elem(0, 2)) + std::fabs(return_elem(1, 2));
        if (sum < 1e-12) return;
        state.threshold = state.sweep <= 3 ? 0.2 * sum / 9.0 : 0.0;
        jacobi_pair(state, 0, 1);
        jacobi_pair(state, 0, 2);
        jacobi_pair(state, 1, 2);
        for (int i = 0; i < 3; ++i) {
            b[i] += state.z[i];
            d[i] = b[i];
            state.z[i] = 0.0;
        }
    }
    std::fputs("ERROR: Matrix reduction took more than 50 iterations.  Aborting.\n", stdout);
}
