#pragma once

#include "plxutils/export.h"
#include "plxutils/geometry/cgLine.h"

/// Half line that starts at p0 and runs through p1 and beyond.
class PLX_EXPORT cgRay : public cgLine {
public:
    using cgLine::cgLine;

    double GetDistance(const cgPoint& p) const override;
    /// @param[out] closest  the nearest point of the ray, with the data of p0; may be null or p itself.
    double GetDistance(const cgPoint& p, cgPoint* closest) const;
};
