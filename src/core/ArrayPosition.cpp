#include "plxutils/core/ArrayPosition.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>

namespace {

bool inside(const char* message, int index, int extent) {
    if (index >= 0 && index < extent) return true;
    std::printf(message, index, extent);
    return false;
}

std::uint64_t wide(int value) { return static_cast<std::uint64_t>(value); }

}  // namespace

ArrayPosition::ArrayPosition() : ArrayPosition(1, 1, 1, 1) {}

ArrayPosition::ArrayPosition(int ires, int jres, int kres, int veclen)
    : ires_(ires), jres_(jres), kres_(kres), veclen_(veclen) {}

ArrayPosition ArrayPosition::operator=(const ArrayPosition& other) {
    SetDimensions(other.ires_, other.jres_, other.kres_, other.veclen_);
    return *this;
}

void ArrayPosition::SetDimensions(int ires, int jres, int kres, int veclen) {
    ires_ = ires;
    jres_ = jres;
    kres_ = kres;
    veclen_ = veclen;
}

int ArrayPosition::operator()(int i, int j, int k, int v) const {
    const bool good = inside("Index out of bounds! (i: %d>=%d)\n", i, ires_) &&
                      inside("Index out of bounds! (j: %d>=%d)\n", j, jres_) &&
                      inside("Index out of bounds! (k: %d>=%d)\n", k, kres_) &&
                      inside("Index out of bounds! (v: %d>=%d)\n", v, veclen_);
    return good ? index(i, j, k, v) : 0;
}

int ArrayPosition::index(int i, int j, int k, int v) const {
    // Unsigned, so that nothing overflows on extents of a grid that no memory could hold.
    const std::uint64_t row = wide(jres_) * wide(k) + wide(j);
    return static_cast<int>((row * wide(ires_) + wide(i)) * wide(veclen_) + wide(v));
}

int ArrayPosition::size() const {
    std::int64_t product = ires_;
    for (const int extent : {jres_, kres_, veclen_}) {
        product = std::clamp<std::int64_t>(product * extent, INT32_MIN, INT32_MAX);
    }
    return static_cast<int>(product);
}
