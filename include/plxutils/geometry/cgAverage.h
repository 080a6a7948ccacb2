#pragma once

#include "plxutils/export.h"
#include "plxutils/geometry/cgPoint.h"

/// Midpoint; the values are averaged when both have the same number, else the result keeps those of a.
PLX_EXPORT cgPoint AverageTwoPoints(cgPoint& a, cgPoint& b);
/// Means of three, four or n points; the result has no values when their numbers differ.
PLX_EXPORT cgPoint AverageThreePoints(cgPoint& a, cgPoint& b, cgPoint& c);
PLX_EXPORT cgPoint AverageFourPoints(cgPoint& a, cgPoint& b, cgPoint& c, cgPoint& d);
/// With n below 1 the result is the origin without values.
PLX_EXPORT cgPoint AveragePoints(int n, cgPoint* pts);
