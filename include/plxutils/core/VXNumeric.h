#pragma once

#include "plxutils/c/Numeric.h"
#include "plxutils/export.h"

/// Blends a (at t = 0) and b (at t = 1): linearly, or on the sum of the powers of ten when `logScale` says
/// that a and b are base-10 logarithms. `smooth` replaces t by a cosine ease first.
PLX_EXPORT double blend_vals(double a, double b, double t, bool logScale, bool smooth);
