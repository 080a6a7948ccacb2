#include "plxutils/georef/GeoRef.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <cstring>

#include "georef/fit_types.h"

namespace {

constexpr int kFixedTerms = 3;

std::size_t index(int i) { return static_cast<std::size_t>(i); }

std::vector<double> copy_of(const double* values, int n) {
    const std::size_t count = index(std::max(n, 0));
    return values ? std::vector<double>(values, values + count) : std::vector<double>(count, 0.0);
}

int terms_of_type(int type) { return type == 3 ? 2 : (type - 2) * (type - 1) / 2; }

/// The first terms of 1, a, b, a2, ab, b2, a3, ...: at least `count` of them, by whole degrees. The terms of
/// Y are those of X with x and y exchanged. Each is multiplied from left to right.
template <class Number>
inline void basis(Number a, Number b, int count, Number* t) {
    t[0] = Number{} + 1.0;
    t[1] = a;
    t[2] = b;
    if (count <= 3) return;
    t[3] = a * a;
    t[4] = a * b;
    t[5] = b * b;
    if (count <= 6) return;
    t[6] = t[3] * a;
    t[7] = t[3] * b;
    t[8] = t[4] * b;
    t[9] = t[5] * b;
    if (count <= 10) return;
    t[10] = t[6] * a;
    t[11] = t[6] * b;
    t[12] = t[7] * b;
    t[13] = t[8] * b;
    t[14] = t[9] * b;
}

/// A number of X and one of Y, which are added and multiplied at once.
using Axes __attribute__((vector_size(2 * sizeof(double)))) = double;

/// The sums of both axes, from the first term on.
template <int kCount>
inline Axes evaluate(const std::array<double, 2>* coefficients, Axes a, Axes b) {
    Axes terms[15];
    basis(a, b, kCount, terms);
    Axes sum{};
    for (int k = 0; k < kCount; ++k) {
        Axes c;
        std::memcpy(&c, &coefficients[k], sizeof c);
        sum += c * terms[k];
    }
    return sum;
}

/// Normal equations of one axis, [AtA | Atb], solved in place.
VXMatrix solve(const std::vector<double>& first, const std::vector<double>& second,
               const std::vector<double>& wanted, int terms) {
    const std::size_t m = index(terms);
    const std::size_t width = m + 1;
    std::vector<double> sums(m * width, 0.0);
    double t[15];
    for (std::size_t g = 0; g < wanted.size(); ++g) {
        basis(first[g], second[g], terms, t);
        for (std::size_t i = 0; i < m; ++i) {
            for (std::size_t j = i; j < m; ++j) sums[i * width + j] += t[i] * t[j];
            sums[i * width + m] += t[i] * wanted[g];
        }
    }
    for (std::size_t i = 0; i < m; ++i) {
        for (std::size_t j = 0; j < i; ++j) sums[i * width + j] = sums[j * width + i];
    }
    VXMatrix system(terms, terms + 1);
    system.SetMat(terms, terms + 1, sums.data());
    system.set_to_rref();
    return system;
}

}  // namespace

void GeoRef::Polynomials::take(const VXMatrix& x, const VXMatrix& y) {
    count = std::min(x.num_cols() - 1, kMaxTerms);
    for (int k = 0; k < count; ++k) {
        coefficients[index(k)] = {x.return_elem(k, x.num_cols() - 1), y.return_elem(k, y.num_cols() - 1)};
    }
}

/// Differences between the first two points.
struct GeoRef::TwoPoints {
    explicit TwoPoints(const GeoRef& g)
        : dx(g.srcX[1] - g.srcX[0]),
          dy(g.srcY[1] - g.srcY[0]),
          dX(g.dstX[1] - g.dstX[0]),
          dY(g.dstY[1] - g.dstY[0]) {}
    bool x_equal() const { return dx == 0.0 || dX == 0.0; }
    bool y_equal() const { return dy == 0.0 || dY == 0.0; }

    double dx, dy, dX, dY;
};

GeoRef::GeoRef(int n, const double* source_x, const double* source_y, const double* world_x,
               const double* world_y)
    : xFit(kFixedTerms, kFixedTerms + 1),
      yFit(kFixedTerms, kFixedTerms + 1),
      nGCP(std::max(n, 0)),
      type(1),
      srcX(copy_of(source_x, n)),
      srcY(copy_of(source_y, n)),
      dstX(copy_of(world_x, n)),
      dstY(copy_of(world_y, n)) {}

GeoRef::GeoRef(const GeoRef& other)
    : xFit(other.xFit),
      yFit(other.yFit),
      nGCP(other.nGCP),
      type(other.type),
      srcX(other.srcX),
      srcY(other.srcY),
      dstX(other.dstX),
      dstY(other.dstY),
      polynomials_(other.polynomials_),
      message_(other.message_) {}

GeoRef& GeoRef::operator=(const GeoRef& other) {
    if (this == &other) return *this;
    reverse_.reset();
    xFit = other.xFit;
    yFit = other.yFit;
    nGCP = other.nGCP;
    type = other.type;
    srcX = other.srcX;
    srcY = other.srcY;
    dstX = other.dstX;
    dstY = other.dstY;
    polynomials_ = other.polynomials_;
    message_ = other.message_;
    return *this;
}

GeoRef::~GeoRef() = default;

int GeoRef::set_gcp_values(int i, double sx, double sy, double dx, double dy) {
    if (!inside(i)) return 0;
    reverse_.reset();
    srcX[index(i)] = sx;
    srcY[index(i)] = sy;
    dstX[index(i)] = dx;
    dstY[index(i)] = dy;
    return 1;
}

int GeoRef::get_gcp_values(int i, double& sx, double& sy, double& dx, double& dy) const {
    if (!inside(i)) return 0;
    sx = srcX[index(i)];
    sy = srcY[index(i)];
    dx = dstX[index(i)];
    dy = dstY[index(i)];
    return 1;
}

void GeoRef::process_type(int requested) {
    reverse_.reset();
    message_ = "";
    type = plx::limited_fit_type(requested, index(nGCP));
    const bool two_points = type == 2 || (nGCP == 2 && type != 1);
    if (!two_points || !fit_two_points()) {
        if (type == 1) {
            fit_translation();
        } else {
            fit_least_squares();
        }
    }
    polynomials_.take(xFit, yFit);
}

void GeoRef::say(const char* text) {
    message_ = text;
    std::fputs(text, stdout);
}

/// False when the two points have no scale and the type has become the translation.
bool GeoRef::fit_two_points() {
    const TwoPoints d(*this);
    if (d.x_equal() && d.y_equal()) {
        say("texture_map: X and Y points are equal.  Switching to Translate.\n");
        negate_rows_of_type_3();
        type = 1;
        return false;
    }
    if (d.x_equal()) {
        fit_scale_by_y(d);
    } else if (d.y_equal()) {
        fit_scale_by_x(d);
    } else {
        fit_similarity(d);
    }
    return true;
}

/// The points keep the negated rows on purpose: hosts draw their residuals from the stored values.
void GeoRef::negate_rows_of_type_3() {
    if (type != 3) return;
    srcY[0] = -srcY[0];
    srcY[1] = -srcY[1];
}

/// X runs against x on purpose: existing projects were placed with this mirrored mapping.
void GeoRef::fit_scale_by_y(const TwoPoints& d) {
    say("texture_map: X inputs are equal.  Using Y values for scaling.\n");
    const double s = d.dY / d.dy;
    negate_rows_of_type_3();
    type = 2;
    set_fixed({dstX[0] + s * srcX[0], -s, 0.0}, {dstY[0] + s * srcY[0], s, 0.0});
}

void GeoRef::fit_scale_by_x(const TwoPoints& d) {
    say("texture_map: Y inputs are equal.  Using X values for scaling.\n");
    const double s = d.dX / d.dx;
    negate_rows_of_type_3();
    type = 2;
    set_fixed({dstX[0] - s * srcX[0], s, 0.0}, {dstY[0] - s * srcY[0], -s, 0.0});
}

/// Type 3 stays type 3 here on purpose, unlike in the fallbacks: GCP files written by hosts carry the sign of
/// the rows that goes with it.
void GeoRef::fit_similarity(const TwoPoints& d) {
    const double s = (d.dX * d.dx + d.dY * d.dy) / (d.dx * d.dx + d.dy * d.dy);
    const double b = (d.dx * s - d.dX) / d.dy;
    set_fixed({dstX[0] - s * srcX[0] + b * srcY[0], s, b}, {dstY[0] - s * srcY[0] - b * srcX[0], -s, b});
}

void GeoRef::fit_translation() {
    double sum_x = 0.0;
    double sum_y = 0.0;
    for (std::size_t i = 0; i < srcX.size(); ++i) {
        sum_x += dstX[i] - srcX[i];
        sum_y += dstY[i] - srcY[i];
    }
    set_fixed({sum_x / nGCP, 1.0, 0.0}, {sum_y / nGCP, -1.0, 0.0});
}

void GeoRef::fit_least_squares() {
    const int terms = terms_of_type(type);
    xFit = solve(srcX, srcY, dstX, terms);
    yFit = solve(srcY, srcX, dstY, terms);
    if (type != 3) return;
    for (VXMatrix* fit : {&xFit, &yFit}) {
        fit->reset_dim(kFixedTerms, kFixedTerms + 1);
        fit->swap_columns(kFixedTerms - 1, kFixedTerms);
    }
}

/// Three coefficients for each axis in matrices that hold nothing of an earlier fit.
void GeoRef::set_fixed(const std::array<double, 3>& x, const std::array<double, 3>& y) {
    xFit = VXMatrix(kFixedTerms, kFixedTerms + 1);
    yFit = VXMatrix(kFixedTerms, kFixedTerms + 1);
    for (int k = 0; k < kFixedTerms; ++k) {
        xFit.set_element(k, kFixedTerms, x[index(k)]);
        yFit.set_element(k, kFixedTerms, y[index(k)]);
    }
}

void GeoRef::project_point(double x, double y, double& X, double& Y) {
    const Axes a = {x, y}, b = {y, x};
    const std::array<double, 2>* const c = polynomials_.coefficients.data();
    Axes sum;
    // Numbers of terms that the compiler knows, so that it keeps them in registers.
    switch (polynomials_.count) {
        case 3:
            sum = evaluate<3>(c, a, b);
            break;
        case 6:
            sum = evaluate<6>(c, a, b);
            break;
        case 10:
            sum = evaluate<10>(c, a, b);
            break;
        default:
            sum = evaluate<15>(c, a, b);
    }
    X = sum[0];
    Y = sum[1];
}

/// Fits three corners of the sources' bounding box to their projections, or, from the world, back. The
/// corners are projected as they are and have their rows negated as a translation expects it only in the new
/// fit.
std::unique_ptr<GeoRef> GeoRef::fit_corners(bool from_world) {
    double min_x = 0.0, min_y = 0.0, max_x = 0.0, max_y = 0.0;
    if (nGCP > 0) {
        const auto [left, right] = std::minmax_element(srcX.begin(), srcX.end());
        const auto [low, high] = std::minmax_element(srcY.begin(), srcY.end());
        min_x = *left, max_x = *right, min_y = *low, max_y = *high;
    }
    if (type != 1) {
        // Points in one row or column would give a singular system.
        if (max_x == min_x) max_x += 1.0;
        if (max_y == min_y) max_y += 1.0;
    }
    double x[3] = {min_x, max_x, min_x};
    double y[3] = {min_y, min_y, max_y};
    double X[3], Y[3];
    for (int i = 0; i < 3; ++i) {
        project_point(x[i], y[i], X[i], Y[i]);
        if (type == 1) y[i] = -y[i];
    }
    auto fit = from_world ? std::make_unique<GeoRef>(3, X, Y, x, y) : std::make_unique<GeoRef>(3, x, y, X, Y);
    fit->process_type(type == 1 ? 1 : 4);
    return fit;
}

std::unique_ptr<GeoRef> GeoRef::fit_reverse() {
    if (type <= 2) return fit_corners(true);
    auto fit = std::make_unique<GeoRef>(nGCP, dstX.data(), dstY.data(), srcX.data(), srcY.data());
    fit->process_type(type);
    return fit;
}

void GeoRef::reverse_project_point(double X, double Y, double& x, double& y) {
    if (!reverse_) reverse_ = fit_reverse();
    reverse_->project_point(X, Y, x, y);
}

std::array<std::array<double, 15>, 2> GeoRef::coefficients() const {
    std::array<std::array<double, kMaxTerms>, 2> both{};
    for (int degree = 0, first = 0; first < polynomials_.count; first += ++degree) {
        for (int k = 0; k <= degree; ++k) {
            both[0][index(first + k)] = polynomials_.coefficients[index(first + k)][0];
            both[1][index(first + k)] = polynomials_.coefficients[index(first + degree - k)][1];
        }
    }
    return both;
}

std::array<std::array<double, 15>, 2> GeoRef::reverse_coefficients() {
    if (!reverse_) reverse_ = fit_reverse();
    return reverse_->coefficients();
}

double GeoRef::error_squared(int i) {
    double X = 0.0;
    double Y = 0.0;
    project_point(srcX[index(i)], row_sign() * srcY[index(i)], X, Y);
    const double dx = dstX[index(i)] - X;
    const double dy = dstY[index(i)] - Y;
    return dx * dx + dy * dy;
}

double GeoRef::rms_error(int i) { return inside(i) ? std::sqrt(error_squared(i)) : 0.0; }

double GeoRef::rms_tot_error() {
    double sum = 0.0;
    for (int i = 0; i < nGCP; ++i) sum += error_squared(i);
    return std::sqrt(sum / nGCP);
}

void GeoRef::debug_print() {
    std::printf("GeoRef - nGCP == %d\n", nGCP);
    for (std::size_t i = 0; i < srcX.size(); ++i) {
        std::printf("   <%lf %lf> to <%lf %lf>\n", srcX[i], srcY[i], dstX[i], dstY[i]);
    }
}
