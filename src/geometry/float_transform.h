#pragma once

#include <array>

namespace plx {

/// Single-precision 4x4 transforms for row vectors, translation in the last row. Every operation is the
/// host's when it offers one (see platform/host_runtime.h), so that results agree with the host's own
/// geometry.
struct FloatTransform {
    std::array<float, 16> m;

    static FloatTransform identity();
    void translate(float x, float y, float z);
    /// This transform followed by b.
    FloatTransform operator*(const FloatTransform& b) const;
    /// All zeros when the transform is singular and the host does not invert it itself.
    FloatTransform inverse() const;
    std::array<float, 3> apply(const std::array<float, 3>& point) const;
};

}  // namespace plx
