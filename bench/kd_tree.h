#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

#include "random_points.h"

namespace bench {

/// A kd-tree as text books have it: the median of the axis whose turn it is stands in the middle of its
/// range, what is below before it, what is above behind it. Short ranges are searched one by one.
class KdTree {
public:
    explicit KdTree(std::vector<Place> places) : places_(std::move(places)) { build(0, places_.size(), 0); }

    struct Found {
        Place place;
        double distance;
    };
    /// Every place within the radius, the border included.
    void within(const Place& p, double radius, std::vector<Found>& found) const {
        found.clear();
        search({p, radius, found}, 0, places_.size(), 0);
    }

private:
    static constexpr std::size_t kLeaf = 8;

    struct Query {
        const Place& p;
        double radius;
        std::vector<Found>& found;
    };

    void build(std::size_t first, std::size_t last, std::size_t axis) {
        if (last - first <= kLeaf) return;
        const std::size_t middle = first + (last - first) / 2;
        const auto at = [this](std::size_t i) { return places_.begin() + static_cast<std::ptrdiff_t>(i); };
        std::nth_element(at(first), at(middle), at(last),
                         [axis](const Place& a, const Place& b) { return a[axis] < b[axis]; });
        build(first, middle, (axis + 1) % 3);
        build(middle + 1, last, (axis + 1) % 3);
    }

    void take(const Query& query, std::size_t i) const {
        const Place& place = places_[i];
        const double dx = place[0] - query.p[0], dy = place[1] - query.p[1], dz = place[2] - query.p[2];
        const double squared = dx * dx + dy * dy + dz * dz;
        if (squared <= query.radius * query.radius) query.found.push_back({place, std::sqrt(squared)});
    }

    void search(const Query& query, std::size_t first, std::size_t last, std::size_t axis) const {
        if (last - first <= kLeaf) {
            for (std::size_t i = first; i < last; ++i) take(query, i);
            return;
        }
        const std::size_t middle = first + (last - first) / 2;
        const double beyond = query.p[axis] - places_[middle][axis];
        if (beyond <= query.radius) search(query, first, middle, (axis + 1) % 3);
        take(query, middle);
        if (-beyond <= query.radius) search(query, middle + 1, last, (axis + 1) % 3);
    }

    std::vector<Place> places_;
};

}  // namespace bench
