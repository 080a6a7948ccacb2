#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

namespace bench {

using Place = std::array<double, 3>;

constexpr double kPi = 3.14159265358979323846;

/// A number from 0 to 1, the same on every machine.
inline double unit(std::mt19937& random) {
    return static_cast<double>(static_cast<std::uint32_t>(random())) / 4294967296.0;
}

/// Places in the unit cube.
inline std::vector<Place> random_places(std::size_t count, unsigned seed) {
    std::mt19937 random(seed);
    std::vector<Place> places(count);
    for (Place& place : places) {
        for (double& c : place) c = unit(random);
    }
    return places;
}

/// Radius within which about ten of so many random places lie.
inline double radius_of_ten(std::size_t count) {
    return std::cbrt(10.0 / (static_cast<double>(count) * 4.0 / 3.0 * kPi));
}

}  // namespace bench
