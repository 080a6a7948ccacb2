#pragma once

namespace plx {

/// -1 or 1 when a lies outside the band around b. Written with b - t and b + t, not as a difference, so that
/// decimal tolerances such as 1.0 and 1.1 within 0.1 come out as written.
inline int compare_in_band(double a, double b, double t) {
    if (a < b - t) return -1;
    return a > b + t ? 1 : 0;
}

}  // namespace plx
