#include "plxutils/geometry/cgVector.h"

#include <algorithm>

#include "plxutils/geometry/cgPoint.h"

cgVector::cgVector(const cgPoint& p) : x(p.x()), y(p.y()), z(p.z()) {}

cgVector cgVector::operator*=(const double& s) {
    const double factor = s;  // s may be one of the components
    x *= factor;
    y *= factor;
    z *= factor;
    return *this;
}

void cgVector::Normalize(double length) { *this *= length / std::max(Length(), 1e-20); }
