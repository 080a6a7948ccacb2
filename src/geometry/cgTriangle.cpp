#include "plxutils/geometry/cgTriangle.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <utility>

#include "geometry/float_transform.h"
#include "geometry/point_copy.h"
#include "geometry/triangle_distance.h"

bool longestEdgeFirst = true;

/// The triangle in a frame where V0 is the origin, V1 lies on the x axis and all vertices have z = 0.
struct cgTriangle::FrameCache {
    plx::FloatTransform to_frame;
    plx::FloatTransform from_frame;
    std::array<std::array<float, 3>, 3> vertices;
    /// False for a degenerate triangle, which has no plane.
    bool has_plane;

    /// Whether a point of the frame lies over the triangle.
    bool covers(double x, double y) const {
        if (!has_plane) return false;
        for (std::size_t i = 0; i < 3; ++i) {
            const auto& from = vertices[i];
            const auto& to = vertices[(i + 1) % 3];
            const double edge_x = static_cast<double>(to[0]) - static_cast<double>(from[0]);
            const double edge_y = static_cast<double>(to[1]) - static_cast<double>(from[1]);
            const double x0 = static_cast<double>(from[0]), y0 = static_cast<double>(from[1]);
            if (edge_x * (y - y0) - edge_y * (x - x0) < 0.0) return false;
        }
        return true;
    }
};

namespace {

std::array<float, 3> to_float(double x, double y, double z) {
    return {static_cast<float>(x), static_cast<float>(y), static_cast<float>(z)};
}

std::array<float, 3> to_float(const cgPoint& p) { return to_float(p.x(), p.y(), p.z()); }

int sign(double v) { return (v > 0.0) - (v < 0.0); }

}  // namespace

cgTriangle::cgTriangle() = default;
cgTriangle::~cgTriangle() = default;

cgTriangle::cgTriangle(const cgPoint& a, const cgPoint& b, const cgPoint& c) { SetTriangle(a, b, c); }

cgTriangle::cgTriangle(const cgTriangle& t) : V0(t.V0), V1(t.V1), V2(t.V2) {}

cgTriangle::cgTriangle(cgTriangle&& t) noexcept = default;

cgTriangle& cgTriangle::operator=(const cgTriangle& t) {
    if (this == &t) return *this;
    plx::copy_point(V0, t.V0);
    plx::copy_point(V1, t.V1);
    plx::copy_point(V2, t.V2);
    frameCache.reset();
    return *this;
}

void cgTriangle::SetTriangle(const cgPoint& a, const cgPoint& b, const cgPoint& c) {
    const cgPoint* order[3] = {&a, &b, &c};
    if (longestEdgeFirst) {
        const double l01 = a.GetDistanceSquared(b);
        const double l02 = a.GetDistanceSquared(c);
        const double l12 = b.GetDistanceSquared(c);
        std::size_t first = 0;
        if (l01 >= l02) {
            if (!(l01 >= l12)) first = 1;
        } else {
            first = l02 >= l12 ? 2 : 1;
        }
        const cgPoint* given[3] = {&a, &b, &c};
        for (std::size_t i = 0; i < 3; ++i) order[i] = given[(first + i) % 3];
    }
    // The points may be this triangle's own vertices.
    cgPoint v0(*order[0]), v1(*order[1]), v2(*order[2]);
    V0.swap(v0);
    V1.swap(v1);
    V2.swap(v2);
    frameCache.reset();
}

double cgTriangle::Area() const { return 0.5 * (Edge1Vec() * Edge0Vec()).Length(); }

int cgTriangle::side_of(const cgPoint& p) const {
    const cgVector n = Edge2Vec() * Edge1Vec();
    const cgVector w = V2 - p;
    // Not a number for a degenerate triangle or a point on V2: no side.
    return sign(n.DotProduct(w) / (n.Length() * w.Length()));
}

double cgTriangle::GetSquaredDistance(const cgPoint& p, int* side, cgPoint* closest) {
    if (!longestEdgeFirst) return GetMatSquaredDistance(p, side, closest);
    const cgVector e0 = Edge0Vec();
    const cgVector e1 = Edge1Vec();
    const cgVector d = V0 - p;
    const double squared =
        plx::triangle_squared_distance(e0.SquaredLength(), e0.DotProduct(e1), e1.SquaredLength(),
                                       e0.DotProduct(d), e1.DotProduct(d), d.SquaredLength());
    if (side) *side = side_of(p);
    return std::fabs(squared);
}

double cgTriangle::GetDistance(const cgPoint& p, int* side, cgPoint* closest) {
    return std::sqrt(GetSquaredDistance(p, side, closest));
}

double cgTriangle::GetSignedDistance(const cgPoint& p, cgPoint* closest) {
    int side = 0;
    const double distance = GetDistance(p, &side, closest);
    return distance * side;
}

void cgTriangle::CreateRotationMatrix() {
    cgVector u = Edge0Vec();
    cgVector n = u * Edge1Vec();
    auto cache = std::make_unique<FrameCache>();
    cache->has_plane = n.Length() > 0.0;
    u.Normalize(1.0);
    n.Normalize(1.0);
    const cgVector v = n * u;
    plx::FloatTransform rotation = plx::FloatTransform::identity();
    const cgVector* axes[3] = {&u, &v, &n};
    for (std::size_t c = 0; c < 3; ++c) {
        const std::array<float, 3> axis = to_float(axes[c]->x, axes[c]->y, axes[c]->z);
        for (std::size_t r = 0; r < 3; ++r) rotation.m[r * 4 + c] = axis[r];
    }
    plx::FloatTransform shift = plx::FloatTransform::identity();
    const std::array<float, 3> origin = to_float(V0);
    shift.translate(-origin[0], -origin[1], -origin[2]);
    cache->to_frame = shift * rotation;
    cache->from_frame = cache->to_frame.inverse();
    const cgPoint* corners[3] = {&V0, &V1, &V2};
    for (std::size_t i = 0; i < 3; ++i) cache->vertices[i] = cache->to_frame.apply(to_float(*corners[i]));
    frameCache = std::move(cache);
}

double cgTriangle::GetMatSquaredDistance(const cgPoint& p, int* side, cgPoint* closest) {
    if (!frameCache) CreateRotationMatrix();
    const std::array<float, 3> q = frameCache->to_frame.apply(to_float(p));
    const double height = frameCache->has_plane ? static_cast<double>(q[2]) : 0.0;
    if (height == 0.0) std::printf("Point at [%lf,%lf,%lf]: Side==0\n", p.x(), p.y(), p.z());
    if (side) *side = sign(height);
    if (frameCache->covers(static_cast<double>(q[0]), static_cast<double>(q[1]))) {
        if (closest) {
            const std::array<float, 3> foot = frameCache->from_frame.apply({q[0], q[1], 0.0F});
            closest->SetPoint(static_cast<double>(foot[0]), static_cast<double>(foot[1]),
                              static_cast<double>(foot[2]), V0.num_data(), V0.data());
        }
        return height * height;
    }
    const cgSegment edges[3] = {Edge0(), Edge1(), Edge2()};
    cgPoint nearest;
    double squared = edges[0].GetDistanceSquared(p, &nearest);
    for (int i = 1; i < 3; ++i) {
        cgPoint candidate;
        const double other = edges[i].GetDistanceSquared(p, &candidate);
        if (other < squared) {
            squared = other;
            nearest.swap(candidate);
        }
    }
    if (closest) plx::copy_point(*closest, nearest);
    return squared;
}
