#include "plxutils/geometry/cgBox.h"

#include <algorithm>
#include <cmath>
#include <typeinfo>

#include "geometry/point_copy.h"

namespace {

/// How far v lies outside [low, high]; 0 within, bounds included.
double excess(double v, double low, double high) {
    if (v < low) return low - v;
    return v > high ? v - high : 0.0;
}

bool within(double v, double low, double high) { return low <= v && v <= high; }

/// Whether two intervals meet, the ends of each in either order.
bool meet(double a0, double a1, double b0, double b1) {
    return !(std::max(a0, a1) < std::min(b0, b1)) && !(std::max(b0, b1) < std::min(a0, a1));
}

/// Whether the interval a holds all of b; never for one that lies apart, which reversed ends could hide.
bool holds(double a0, double a1, double b0, double b1) {
    return b0 <= a1 && a0 <= b1 && a0 <= b0 && b1 <= a1;
}

/// The larger distance from v to one of the two bounds.
double reach(double v, double low, double high) { return std::max(std::fabs(low - v), std::fabs(high - v)); }

double farthest_corner(const cgBox& box, const cgPoint& p) {
    if (typeid(p) == typeid(cgPoint)) {
        const double dx = reach(p.x(), box.min.x(), box.max.x());
        const double dy = reach(p.y(), box.min.y(), box.max.y());
        const double dz = reach(p.z(), box.min.z(), box.max.z());
        return std::sqrt(dx * dx + dy * dy + dz * dz);
    }
    // A host's own kind of point may measure in another way.
    double farthest = 0.0;
    for (unsigned corner = 0; corner < 8; ++corner) {
        const cgPoint q((corner & 1u ? box.max : box.min).x(), (corner & 2u ? box.max : box.min).y(),
                        (corner & 4u ? box.max : box.min).z(), 0);
        const double distance = p.GetDistance(q);
        if (distance > farthest) farthest = distance;
    }
    return farthest;
}

}  // namespace

cgBox::cgBox(double x0, double y0, double z0, double x1, double y1, double z1)
    : min(x0, y0, z0, 0), max(x1, y1, z1, 0) {}

cgBox::cgBox(const cgPoint& min_, const cgPoint& max_) : min(min_), max(max_) {}

cgBox& cgBox::operator=(const cgBox& b) {
    plx::copy_point(min, b.min);
    plx::copy_point(max, b.max);
    return *this;
}

bool cgBox::IsPoint() const { return min == max; }

bool cgBox::IsLine() const { return (min.x() == max.x()) + (min.y() == max.y()) + (min.z() == max.z()) >= 2; }

bool cgBox::IsPlane() const { return min.x() == max.x() || min.y() == max.y() || min.z() == max.z(); }

bool cgBox::ContainsPoint(const cgPoint& p) const {
    return within(p.x(), min.x(), max.x()) && within(p.y(), min.y(), max.y()) &&
           within(p.z(), min.z(), max.z());
}

bool cgBox::ContainsBox(const cgBox& b) const {
    return holds(min.x(), max.x(), b.min.x(), b.max.x()) && holds(min.y(), max.y(), b.min.y(), b.max.y()) &&
           holds(min.z(), max.z(), b.min.z(), b.max.z());
}

bool cgBox::IntersectsBox(const cgBox& b) const {
    return meet(min.x(), max.x(), b.min.x(), b.max.x()) && meet(min.y(), max.y(), b.min.y(), b.max.y()) &&
           meet(min.z(), max.z(), b.min.z(), b.max.z());
}

double cgBox::GetDistance(const cgPoint& p) const {
    const double dx = excess(p.x(), min.x(), max.x());
    const double dy = excess(p.y(), min.y(), max.y());
    const double dz = excess(p.z(), min.z(), max.z());
    // Outside on one axis at most: no square root, which would lose very large and very small distances.
    if ((dx != 0.0) + (dy != 0.0) + (dz != 0.0) <= 1) return dx + dy + dz;
    return std::sqrt(dx * dx + dy * dy + dz * dz);
}

double cgBox::GetDistance2D(const cgPoint& p) const {
    const double dx = excess(p.x(), min.x(), max.x());
    const double dy = excess(p.y(), min.y(), max.y());
    if (dx == 0.0 || dy == 0.0) return dx + dy;
    return std::sqrt(dx * dx + dy * dy);
}

void cgBox::GetMinMaxDistance(const cgPoint& p, double& minD, double& maxD) const {
    minD = GetDistance(p);
    maxD = std::max(minD, farthest_corner(*this, p));
}
