#pragma once

#include <algorithm>
#include <cstddef>

namespace plx {

/// The fit type, 1 to 7, that so many control points allow. Two of them allow 3 at most.
inline int limited_fit_type(int requested, std::size_t points) {
    constexpr int kMaxType = 7;
    constexpr std::size_t kNeeded[kMaxType + 1] = {0, 0, 2, 2, 3, 6, 10, 15};
    int type = std::clamp(requested, 1, kMaxType);
    while (points < kNeeded[type]) --type;
    return type;
}

}  // namespace plx
