#pragma once

namespace plx {

/// Squared distance from a point to a triangle with corner B and edges E0, E1, by the seven-region method of
/// D. Eberly ("Distance Between Point and Triangle in 3D").
///
/// With D = B - point: a = E0.E0, b = E0.E1, c = E1.E1, d = E0.D, e = E1.D, f = D.D. The result may be
/// slightly negative for a point on the triangle, and is NaN for a degenerate one.
double triangle_squared_distance(double a, double b, double c, double d, double e, double f);

}  // namespace plx
