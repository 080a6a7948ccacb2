#include "plxutils/geometry/cgSegment.h"

#include <algorithm>
#include <cmath>

#include "geometry/closest_point.h"

namespace {

/// The point for the product t = (p - p0).d, held between the ends.
plx::Foot clamped_foot(const cgSegment& s, const cgVector& d, double t, double squared_length) {
    if (t <= 0.0) return plx::foot_at(s.p0);
    if (squared_length <= t) return plx::foot_at(s.p1);
    return plx::foot_along(s, d, t / squared_length);
}

/// Squared distance in plan view to a segment along one axis. `along` and `across` read a point's coordinates
/// along that axis and across it.
template <class Along, class Across>
double aligned_squared(const cgSegment& s, const cgPoint& p, Along along, Across across) {
    const bool ordered = along(s.p0) <= along(s.p1);
    const cgPoint& low = ordered ? s.p0 : s.p1;
    const cgPoint& high = ordered ? s.p1 : s.p0;
    if (along(p) < along(low)) return p.GetDistance2DSquared(low);
    if (along(p) > along(high)) return p.GetDistance2DSquared(high);
    const double offset = across(s.p0) - across(p);
    return offset * offset;
}

}  // namespace

cgSegment& cgSegment::operator=(const cgSegment& b) = default;

double cgSegment::GetDistanceSquared(const cgPoint& p, cgPoint* closest) const {
    const cgVector d = p1 - p0;
    const plx::Foot foot = clamped_foot(*this, d, (p - p0).DotProduct(d), d.SquaredLength());
    const double squared = foot.squared_distance(p);
    foot.store(closest);
    return squared;
}

double cgSegment::GetDistance(const cgPoint& p, cgPoint* closest) const {
    return std::sqrt(GetDistanceSquared(p, closest));
}

double cgSegment::GetDistance2DSquared(const cgPoint& p, cgPoint* closest) const {
    const auto x = [](const cgPoint& q) { return q.x(); };
    const auto y = [](const cgPoint& q) { return q.y(); };
    if (p0.x() == p1.x()) return aligned_squared(*this, p, y, x);
    if (p0.y() == p1.y()) return aligned_squared(*this, p, x, y);
    const cgVector d = p1 - p0;
    const plx::Foot foot = clamped_foot(*this, d, (p - p0).DotProduct2D(d), d.DotProduct2D(d));
    const double squared = foot.squared_distance_2d(p);
    foot.store(closest);
    return squared;
}

double cgSegment::GetDistance2D(const cgPoint& p, cgPoint* closest) const {
    return std::sqrt(GetDistance2DSquared(p, closest));
}

double cgSegment::Length() const { return (p1 - p0).Length(); }

cgBox cgSegment::GetExtents() const {
    return {std::min(p0.x(), p1.x()), std::min(p0.y(), p1.y()), std::min(p0.z(), p1.z()),
            std::max(p0.x(), p1.x()), std::max(p0.y(), p1.y()), std::max(p0.z(), p1.z())};
}

cgSegment cgSegment::ProjectBy(const cgVector& v) const { return {p0 + v, p1 + v}; }
