#pragma once

#include <algorithm>
#include <cmath>
#include <limits>

#include "plxutils/geometry/cgBox.h"
#include "plxutils/geometry/cgPoint.h"

namespace plx {

/// Bit of an octant number for the upper half in x, y and z.
inline constexpr int kOctantBits[3] = {2, 1, 4};

/// Centre of an interval. Every division of a box must come from this one expression: a point on a mid plane
/// belongs to the lower half.
inline double middle(double low, double high) { return (low + high) * 0.5; }

/// Box of a tree node by value. The region of a node without a box is unknown: it is 0 away from everything.
struct TreeRegion {
    double low[3];
    double high[3];
    bool known;

    static TreeRegion of(const cgBox* box) {
        if (!box) return {{}, {}, false};
        return {{box->min.x(), box->min.y(), box->min.z()}, {box->max.x(), box->max.y(), box->max.z()}, true};
    }

    int octant(const double* p) const {
        int octant = 0;
        for (int axis = 0; known && axis < 3; ++axis) {
            if (p[axis] > middle(low[axis], high[axis])) octant |= kOctantBits[axis];
        }
        return octant;
    }

    int octant(const cgPoint& p) const {
        const double place[3] = {p.x(), p.y(), p.z()};
        return octant(place);
    }

    TreeRegion child(int octant) const {
        TreeRegion half = *this;
        for (int axis = 0; axis < 3; ++axis) {
            (octant & kOctantBits[axis] ? half.low : half.high)[axis] = middle(low[axis], high[axis]);
        }
        return half;
    }

    /// Whether numbers have run out: below the children every box is the child's again, and a point keeps its
    /// octant all the way down, so that one more level stands for all of them.
    bool exhausted() const {
        for (int axis = 0; axis < 3; ++axis) {
            const double mid = middle(low[axis], high[axis]);
            if (mid != low[axis] && mid != high[axis] && !std::isnan(mid)) return false;
        }
        return true;
    }

    /// Depth of the children of a node of the given depth.
    int child_depth(int depth) const { return depth > 1 && exhausted() ? 0 : depth - 1; }

    /// Whether two points fall into the same leaf, `depth` levels down.
    bool same_leaf(int depth, const cgPoint& a, const cgPoint& b) const {
        const double places[2][3] = {{a.x(), a.y(), a.z()}, {b.x(), b.y(), b.z()}};
        TreeRegion region = *this;
        while (depth > 0) {
            const int octant_a = region.octant(places[0]);
            if (octant_a != region.octant(places[1])) return false;
            depth = region.child_depth(depth);
            region = region.child(octant_a);
        }
        return true;
    }

    /// False for everything when the region is unknown.
    bool contains(const cgPoint& p) const {
        const double place[3] = {p.x(), p.y(), p.z()};
        bool inside = known;
        for (int axis = 0; axis < 3; ++axis) {
            inside = inside && low[axis] <= place[axis] && place[axis] <= high[axis];
        }
        return inside;
    }

    /// As cgBox::GetDistance.
    double distance(const double* p) const {
        if (!known) return 0.0;
        double d[3];
        for (int axis = 0; axis < 3; ++axis) {
            d[axis] = p[axis] < low[axis]    ? low[axis] - p[axis]
                      : p[axis] > high[axis] ? p[axis] - high[axis]
                                             : 0.0;
        }
        if ((d[0] != 0.0) + (d[1] != 0.0) + (d[2] != 0.0) <= 1) return d[0] + d[1] + d[2];
        return std::sqrt(d[0] * d[0] + d[1] * d[1] + d[2] * d[2]);
    }

    /// Distance to the farthest corner, at least the given nearest one; as cgBox::GetMinMaxDistance.
    double farthest(const double* p, double nearest) const {
        if (!known) return std::numeric_limits<double>::infinity();
        double d[3];
        for (int axis = 0; axis < 3; ++axis) {
            d[axis] = std::max(std::fabs(low[axis] - p[axis]), std::fabs(high[axis] - p[axis]));
        }
        return std::max(nearest, std::sqrt(d[0] * d[0] + d[1] * d[1] + d[2] * d[2]));
    }

    /// Distance to the nearest of the six face planes.
    double to_face(const double* p) const {
        double nearest = std::fabs(low[0] - p[0]);
        for (int axis = 0; axis < 3; ++axis) {
            nearest = std::min({nearest, std::fabs(low[axis] - p[axis]), std::fabs(high[axis] - p[axis])});
        }
        return nearest;
    }
};

}  // namespace plx
