#include "plxutils/geometry/cgRay.h"

#include <cmath>

#include "geometry/closest_point.h"

double cgRay::GetDistance(const cgPoint& p) const { return GetDistance(p, nullptr); }

double cgRay::GetDistance(const cgPoint& p, cgPoint* closest) const {
    const cgVector d = p1 - p0;
    const double t = (p - p0).DotProduct(d);
    const plx::Foot foot = t <= 0.0 ? plx::foot_at(p0) : plx::foot_along(*this, d, t / d.SquaredLength());
    const double distance = std::sqrt(foot.squared_distance(p));
    foot.store(closest);
    return distance;
}
