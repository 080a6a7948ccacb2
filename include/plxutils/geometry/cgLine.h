#pragma once

#include "plxutils/export.h"
#include "plxutils/geometry/cgElement.h"
#include "plxutils/geometry/cgPoint.h"

/// Infinite line through p0 and p1.
class PLX_EXPORT cgLine : public cgElement {
public:
    cgPoint p0, p1;

    /// From the origin through (x, y, z).
    cgLine(double x, double y, double z);
    cgLine(double x0, double y0, double z0, double x1, double y1, double z1);
    cgLine(const cgPoint& a, const cgPoint& b);
    cgLine(const cgLine&) = default;
    cgLine(cgLine&&) noexcept = default;
    cgLine& operator=(const cgLine& b);
    ~cgLine() = default;

    double GetDistance(const cgPoint& p) const override;
    /// NaN when p0 equals p1.
    ///
    /// @param[out] closest  the nearest point of the line, with the data of p0; may be null or p itself.
    double GetDistance(const cgPoint& p, cgPoint* closest) const;
};
