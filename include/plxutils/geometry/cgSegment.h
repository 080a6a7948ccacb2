#pragma once

#include "plxutils/export.h"
#include "plxutils/geometry/cgBox.h"
#include "plxutils/geometry/cgLine.h"

/// Piece of a line from p0 to p1.
///
/// The virtual one-argument GetDistance stays that of cgLine: through a cgElement or cgLine reference a
/// segment measures to its infinite line, and callers of those interfaces rely on it. On a cgSegment itself
/// that form does not compile; use the forms with the closest point.
class PLX_EXPORT cgSegment : public cgLine {
public:
    using cgLine::cgLine;
    cgSegment(const cgSegment&) = default;
    cgSegment(cgSegment&&) noexcept = default;
    cgSegment& operator=(const cgSegment& b);
    ~cgSegment() = default;

    /// @param[out] closest  the nearest point of the segment: an end with its own data, or a point between
    ///                      with the data of p0; may be null or p itself.
    double GetDistanceSquared(const cgPoint& p, cgPoint* closest) const;
    double GetDistance(const cgPoint& p, cgPoint* closest) const;
    /// Distances in the XY plane.
    ///
    /// @param[out] closest  as above, z follows along the segment; not written for a segment that runs along
    ///                      x or y in plan view.
    double GetDistance2DSquared(const cgPoint& p, cgPoint* closest) const;
    double GetDistance2D(const cgPoint& p, cgPoint* closest) const;
    double Length() const;
    cgBox GetExtents() const;
    /// The segment moved by v, data kept.
    cgSegment ProjectBy(const cgVector& v) const;

private:
    // Private, so that nobody measures a segment to its infinite line without noticing.
    using cgLine::GetDistance;
};
