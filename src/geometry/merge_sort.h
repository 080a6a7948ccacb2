#pragma once

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

namespace plx {

/// Stable sort that ends, and never reads outside the items, for any comparison, also one that contradicts
/// itself: comparisons with tolerances are not transitive, and the standard sorts may run wild on them.
///
/// @param compare  negative, 0 or positive like strcmp
template <class T, class Compare>
void merge_sort(std::vector<T>& items, Compare compare) {
    const std::size_t n = items.size();
    std::vector<T> merged(n);
    for (std::size_t width = 1; width < n; width *= 2) {
        for (std::size_t begin = 0; begin < n; begin += 2 * width) {
            const std::size_t middle = std::min(begin + width, n);
            const std::size_t end = std::min(begin + 2 * width, n);
            std::size_t left = begin, right = middle, out = begin;
            while (left < middle && right < end) {
                const bool take_right = compare(items[right], items[left]) < 0;
                merged[out++] = items[take_right ? right++ : left++];
            }
            while (left < middle) merged[out++] = items[left++];
            while (right < end) merged[out++] = items[right++];
        }
        items.swap(merged);
    }
}

}  // namespace plx
