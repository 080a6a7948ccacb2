#pragma once

#include "geometry/point_copy.h"
#include "plxutils/geometry/cgLine.h"
#include "plxutils/geometry/cgPoint.h"
#include "plxutils/geometry/cgVector.h"

namespace plx {

/// A point on a line, and the point whose data it carries.
struct Foot {
    double x;
    double y;
    double z;
    const cgPoint* source;

    double squared_distance(const cgPoint& p) const {
        const double dx = p.x() - x, dy = p.y() - y, dz = p.z() - z;
        return dx * dx + dy * dy + dz * dz;
    }
    double squared_distance_2d(const cgPoint& p) const {
        const double dx = p.x() - x, dy = p.y() - y;
        return dx * dx + dy * dy;
    }
    void store(cgPoint* closest) const {
        if (closest) closest->SetPoint(x, y, z, source->num_data(), source->data());
    }
};

inline Foot foot_at(const cgPoint& p) { return {p.x(), p.y(), p.z(), &p}; }

/// p0 + d * t
inline Foot foot_along(const cgLine& line, const cgVector& d, double t) {
    return {line.p0.x() + d.x * t, line.p0.y() + d.y * t, line.p0.z() + d.z * t, &line.p0};
}

}  // namespace plx
