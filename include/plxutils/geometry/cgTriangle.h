#pragma once

#include <memory>

#include "plxutils/export.h"
#include "plxutils/geometry/cgPoint.h"
#include "plxutils/geometry/cgSegment.h"
#include "plxutils/geometry/cgVector.h"

/// Selects, for the whole process, how triangles store their vertices and measure distances; see cgTriangle.
/// True unless a host changes it.
extern PLX_EXPORT bool longestEdgeFirst;

/// Triangle V0, V1, V2.
///
/// With longestEdgeFirst set the vertices are rotated (orientation kept) so that V0-V1 is the longest edge,
/// and distances are computed in doubles. With it cleared the vertices stay as given, and distances go
/// through a single-precision local frame, which also gives the closest point.
class PLX_EXPORT cgTriangle {
public:
    cgPoint V0, V1, V2;

    cgTriangle();
    cgTriangle(const cgPoint& a, const cgPoint& b, const cgPoint& c);
    cgTriangle(const cgTriangle& t);
    cgTriangle(cgTriangle&& t) noexcept;
    cgTriangle& operator=(const cgTriangle& t);
    ~cgTriangle();

    void SetTriangle(const cgPoint& a, const cgPoint& b, const cgPoint& c);
    cgSegment Edge0() const { return {V0, V1}; }
    cgSegment Edge1() const { return {V0, V2}; }
    cgSegment Edge2() const { return {V1, V2}; }
    cgVector Edge0Vec() const { return V1 - V0; }
    cgVector Edge1Vec() const { return V2 - V0; }
    cgVector Edge2Vec() const { return V2 - V1; }
    cgPoint Origin() const { return V0; }
    double Area() const;

    /// Squared distance from p to the triangle; NaN for a degenerate one with longestEdgeFirst set. On the
    /// surface the difference of large terms may leave about 1e-16 * |V0 - p|^2 instead of 0.
    ///
    /// @param[out] side     +1 where V0, V1, V2 run counter-clockwise, -1 on the other side, 0 in the plane;
    ///                      may be null.
    /// @param[out] closest  left untouched with longestEdgeFirst set; may be null.
    double GetSquaredDistance(const cgPoint& p, int* side, cgPoint* closest);
    double GetDistance(const cgPoint& p, int* side, cgPoint* closest);
    /// The distance times the side; 0 for every point in the plane of the triangle, also outside of it.
    double GetSignedDistance(const cgPoint& p, cgPoint* closest);

private:
    struct FrameCache;

    int side_of(const cgPoint& p) const;
    double GetMatSquaredDistance(const cgPoint& p, int* side, cgPoint* closest);
    void CreateRotationMatrix();

    std::unique_ptr<FrameCache> frameCache;
};
