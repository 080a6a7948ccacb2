#include "geometry/node_merge.h"

#include <cstddef>
#include <cstdint>

#include "geometry/merge_sort.h"
#include "geometry/tolerance_band.h"

namespace plx {

namespace {

struct Place {
    double x, y, z;
    int node;
};

/// The exact order, with cgPoint::ptCompare's treatment of NaN.
int compare_exactly(const Place& a, const Place& b) {
    if (a.x != b.x) return a.x < b.x ? -1 : 1;
    if (a.y != b.y) return a.y < b.y ? -1 : 1;
    if (a.z != b.z) return a.z < b.z ? -1 : 1;
    return 0;
}

bool within(const Place& a, const Place& b, const NodeTolerance& t) {
    return compare_in_band(a.x, b.x, t.x) == 0 && compare_in_band(a.y, b.y, t.y) == 0 &&
           compare_in_band(a.z, b.z, t.z) == 0;
}

/// The places of the nodes in their exact order.
std::vector<Place> sorted_places(const cgPointList& nodes) {
    std::vector<Place> places;
    places.reserve(static_cast<std::size_t>(nodes.count()));
    for (int i = 0; i < nodes.count(); ++i) {
        const cgPoint& p = nodes[i];
        places.push_back({p.x(), p.y(), p.z(), i});
    }
    merge_sort(places, compare_exactly);
    return places;
}

}  // namespace

std::vector<int> merge_nodes(cgPointList& nodes, const NodeTolerance& tolerance) {
    std::vector<Place> places = sorted_places(nodes);
    std::vector<int> map(places.size());
    Place first = places.front();
    std::size_t groups = 0;
    for (std::size_t j = 0; j < places.size(); ++j) {
        const Place place = places[j];
        // Deliberately compared with the first of the run, not with the predecessor, and only along the
        // sorted order: hosts rely on runs that cannot creep further than the tolerance.
        const bool opens = j == 0 || !within(first, place, tolerance);
        if (opens) {
            first = place;
            ++groups;
        }
        map[static_cast<std::size_t>(place.node)] = static_cast<int>(groups - 1);
        // Deliberately the last node in input order gives the place: hosts move a node by adding it again.
        Place& kept = places[groups - 1];
        if (opens || place.node > kept.node) kept = place;
    }
    nodes.clear();
    nodes.resize(static_cast<int>(groups));
    for (std::size_t g = 0; g < groups; ++g) {
        nodes[static_cast<int>(g)].SetPoint(places[g].x, places[g].y, places[g].z, 0, nullptr);
    }
    return map;
}

}  // namespace plx
