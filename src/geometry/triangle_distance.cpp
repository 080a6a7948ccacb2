#include "geometry/triangle_distance.h"

#include <cmath>

namespace plx {

namespace {

/// Nearest on one edge from B: `length` its squared length, `slope` its product with D.
double edge_from_corner(double length, double slope, double f) {
    if (slope >= 0.0) return f;
    if (-slope >= length) return length + 2.0 * slope + f;
    return f - slope * slope / length;
}

/// Nearest on the edge opposite of B; s is the share of E0, from (0, 1) to (1, 0). With the roles of the two
/// edges exchanged it starts at the other corner.
double opposite_edge(double a, double b, double c, double d, double e, double f) {
    const double numerator = (c + e) - (b + d);
    if (numerator <= 0.0) return c + 2.0 * e + f;
    const double denominator = a - 2.0 * b + c;
    if (numerator >= denominator) return a + 2.0 * d + f;
    const double s = numerator / denominator;
    const double t = 1.0 - s;
    return s * (a * s + b * t + 2.0 * d) + t * (b * s + c * t + 2.0 * e) + f;
}

}  // namespace

double triangle_squared_distance(double a, double b, double c, double d, double e, double f) {
    const double det = std::fabs(a * c - b * b);
    double s = b * e - c * d;
    double t = b * d - a * e;
    if (s + t <= det) {
        if (s < 0.0) {  // regions 4 (t < 0) and 3
            return t < 0.0 && d < 0.0 ? edge_from_corner(a, d, f) : edge_from_corner(c, e, f);
        }
        if (t < 0.0) return edge_from_corner(a, d, f);  // region 5
        const double inverse = 1.0 / det;               // region 0
        s *= inverse;
        t *= inverse;
        return s * (a * s + b * t + 2.0 * d) + t * (b * s + c * t + 2.0 * e) + f;
    }
    // Regions 2 and 6 lie at a corner: one of its two edges is nearest.
    if (s < 0.0 && (c + e) <= (b + d)) return edge_from_corner(c, e, f);
    if (s >= 0.0 && t < 0.0) {
        return (a + d) <= (b + e) ? edge_from_corner(a, d, f) : opposite_edge(c, b, a, e, d, f);
    }
    return opposite_edge(a, b, c, d, e, f);
}

}  // namespace plx
