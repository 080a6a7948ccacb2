#include "plxutils/geometry/cgLine.h"

#include <cmath>

#include "geometry/closest_point.h"

cgLine::cgLine(double x, double y, double z) : p1(x, y, z, 0) {}

cgLine::cgLine(double x0, double y0, double z0, double x1, double y1, double z1)
    : p0(x0, y0, z0, 0), p1(x1, y1, z1, 0) {}

cgLine::cgLine(const cgPoint& a, const cgPoint& b) : p0(a), p1(b) {}

cgLine& cgLine::operator=(const cgLine& b) {
    plx::copy_point(p0, b.p0);
    plx::copy_point(p1, b.p1);
    return *this;
}

double cgLine::GetDistance(const cgPoint& p) const { return GetDistance(p, nullptr); }

double cgLine::GetDistance(const cgPoint& p, cgPoint* closest) const {
    const cgVector d = p1 - p0;
    const plx::Foot foot = plx::foot_along(*this, d, (p - p0).DotProduct(d) / d.SquaredLength());
    const double distance = std::sqrt(foot.squared_distance(p));
    foot.store(closest);
    return distance;
}
