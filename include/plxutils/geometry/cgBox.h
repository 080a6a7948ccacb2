#pragma once

#include "plxutils/export.h"
#include "plxutils/geometry/cgElement.h"
#include "plxutils/geometry/cgPoint.h"

/// Axis-aligned box. The corners are taken as given; all but IntersectsBox expect min <= max on every axis.
/// Bounds are inclusive and exact.
class PLX_EXPORT cgBox : public cgElement {
public:
    cgPoint min, max;

    cgBox(double x0, double y0, double z0, double x1, double y1, double z1);
    cgBox(const cgPoint& min, const cgPoint& max);
    cgBox(const cgBox&) = default;
    cgBox(cgBox&&) noexcept = default;
    cgBox& operator=(const cgBox& b);
    ~cgBox() = default;

    /// No extent at all, at most one extent, at most two extents that are not zero.
    bool IsPoint() const;
    bool IsLine() const;
    bool IsPlane() const;
    bool ContainsPoint(const cgPoint& p) const;
    bool ContainsBox(const cgBox& b) const;
    /// Touching counts; reversed corners of either box are put in order first.
    bool IntersectsBox(const cgBox& b) const;
    /// Distance from p to the closed box, 0 inside.
    double GetDistance(const cgPoint& p) const override;
    /// The same in the XY plane.
    double GetDistance2D(const cgPoint& p) const;
    /// Distances from p to the nearest point of the box and to its farthest corner.
    void GetMinMaxDistance(const cgPoint& p, double& minD, double& maxD) const;
};
