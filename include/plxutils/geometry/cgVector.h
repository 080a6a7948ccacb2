#pragma once

#include <cmath>

#include "plxutils/export.h"

class cgPoint;

/// Direction in space.
class PLX_EXPORT cgVector {
public:
    double x, y, z;

    cgVector() : x(0.0), y(0.0), z(0.0) {}
    cgVector(double x_, double y_, double z_) : x(x_), y(y_), z(z_) {}
    /// The position vector of a point.
    cgVector(const cgPoint& p);

    cgVector operator*(const double& s) const { return {x * s, y * s, z * s}; }
    /// Scales in place; the result is a copy.
    cgVector operator*=(const double& s);
    /// Cross product.
    cgVector operator*(const cgVector& b) const {
        return {y * b.z - b.y * z, z * b.x - x * b.z, x * b.y - y * b.x};
    }
    double DotProduct(const cgVector& b) const { return x * b.x + y * b.y + z * b.z; }
    double DotProduct2D(const cgVector& b) const { return x * b.x + y * b.y; }
    double Length() const { return std::sqrt(SquaredLength()); }
    double SquaredLength() const { return x * x + y * y + z * z; }
    /// Rescales to the given length; a vector not longer than 1e-20 is divided by 1e-20 instead of its own
    /// length, so that a zero vector stays zero.
    void Normalize(double length);
};
