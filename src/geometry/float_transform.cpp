#include "geometry/float_transform.h"

#include <cmath>
#include <cstddef>
#include <utility>

#include "platform/host_runtime.h"

namespace plx {

namespace {

constexpr std::size_t kSize = 4;

/// Gauss-Jordan elimination with the largest pivot of each column.
std::array<float, 16> inverted(std::array<float, 16> a) {
    std::array<float, 16> result = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    for (std::size_t c = 0; c < kSize; ++c) {
        std::size_t pivot = c;
        for (std::size_t r = c + 1; r < kSize; ++r) {
            if (std::fabs(a[r * kSize + c]) > std::fabs(a[pivot * kSize + c])) pivot = r;
        }
        const float divisor = a[pivot * kSize + c];
        if (divisor == 0.0F) return {};
        for (std::size_t k = 0; k < kSize; ++k) {
            std::swap(a[c * kSize + k], a[pivot * kSize + k]);
            std::swap(result[c * kSize + k], result[pivot * kSize + k]);
            a[c * kSize + k] /= divisor;
            result[c * kSize + k] /= divisor;
        }
        for (std::size_t r = 0; r < kSize; ++r) {
            if (r == c) continue;
            const float factor = a[r * kSize + c];
            for (std::size_t k = 0; k < kSize; ++k) {
                a[r * kSize + k] -= factor * a[c * kSize + k];
                result[r * kSize + k] -= factor * result[c * kSize + k];
            }
        }
    }
    return result;
}

}  // namespace

FloatTransform FloatTransform::identity() {
    FloatTransform result{{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1}};
    if (const auto host = platform::host_runtime().MATmat4_identity) host(result.m.data());
    return result;
}

void FloatTransform::translate(float x, float y, float z) {
    if (const auto host = platform::host_runtime().MATmat4_translate) {
        host(m.data(), x, y, z);
        return;
    }
    for (std::size_t r = 0; r < kSize; ++r) {
        const float w = m[r * kSize + 3];
        m[r * kSize] += w * x;
        m[r * kSize + 1] += w * y;
        m[r * kSize + 2] += w * z;
    }
}

FloatTransform FloatTransform::operator*(const FloatTransform& b) const {
    FloatTransform product{};
    if (const auto host = platform::host_runtime().MATmat4_multiply) {
        host(m.data(), b.m.data(), product.m.data());
        return product;
    }
    for (std::size_t r = 0; r < kSize; ++r) {
        for (std::size_t c = 0; c < kSize; ++c) {
            for (std::size_t k = 0; k < kSize; ++k) {
                product.m[r * kSize + c] += m[r * kSize + k] * b.m[k * kSize + c];
            }
        }
    }
    return product;
}

FloatTransform FloatTransform::inverse() const {
    const auto host = platform::host_runtime().MATmat4_inverse;
    if (!host) return {inverted(m)};
    FloatTransform result{};
    host(m.data(), result.m.data());
    return result;
}

std::array<float, 3> FloatTransform::apply(const std::array<float, 3>& point) const {
    std::array<float, 3> result{};
    if (const auto host = platform::host_runtime().MATvec3_mat4_multiply) {
        host(point.data(), m.data(), result.data());
        return result;
    }
    for (std::size_t c = 0; c < 3; ++c) {
        result[c] =
            point[0] * m[c] + point[1] * m[kSize + c] + point[2] * m[2 * kSize + c] + m[3 * kSize + c];
    }
    return result;
}

}  // namespace plx
