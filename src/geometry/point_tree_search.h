#pragma once

#include <limits>
#include <vector>

#include "geometry/tree_region.h"
#include "plxutils/geometry/cgPointTree.h"

/// Walks over the nodes of a tree with the region of each at hand. A node that is on demand and not divided
/// holds the points of one leaf; the levels between the two are gone through by arithmetic.
///
/// An empty subtree is never gone into: it has no points, and it could only end a search that has nothing
/// left to find.
struct cgPointTree::Search {
    explicit Search(const cgPoint& p) : at(p.x(), p.y(), p.z(), 0), place{p.x(), p.y(), p.z()} {}

    static plx::TreeRegion region_of(const cgPointTree& node) { return plx::TreeRegion::of(node.box); }
    static bool undivided(const cgPointTree& node) { return node.on_demand_ && !node.divided_; }
    static bool bare(const cgPointTree& node) {
        return (node.depth <= 0 || undivided(node)) && node.points.count() == 0;
    }
    bool too_far(const plx::TreeRegion& region) const {
        const double distance = region.distance(place);
        return distance >= best || distance > bound;
    }
    static cgPointTree* child_of(const cgPointTree& node, int i) {
        return static_cast<cgPointTree*>(node.children[i]);
    }
    static plx::TreeRegion child_region(const cgPointTree& node, const plx::TreeRegion& region, int i) {
        return node.on_demand_ ? region.child(i) : region_of(*child_of(node, i));
    }

    static cgPointTree* make_child(int depth);
    static void file(cgPointTree& root, const cgPoint& p);
    static cgPointTree* divide(cgPointTree& node, const plx::TreeRegion& region, cgOctTree** slot);
    static int count_below(const cgPointTree& node);

    /// Searches for a point closer than best. True when the search may stop.
    bool find_nearest(cgPointTree& node, const plx::TreeRegion& region);
    /// Sets bound from the points of the leaf around the place, or of one near it.
    void set_bound(const cgPointTree& root);
    void set_range(double d, bool store_distance, bool all);
    /// Adds the points within dist to out or found; the result is the number counted.
    int gather(cgPointTree& node, const plx::TreeRegion& region);

    double best = 0.0;
    // Nodes farther away than this cannot hold the nearest point, and are left out. Points outside their
    // nodes' boxes rule that out, as they may be found only by chance.
    double bound = std::numeric_limits<double>::infinity();
    const cgPoint* nearest = nullptr;
    double dist = 0.0;
    bool store = false;
    bool add_all = false;
    cgPointList* out = nullptr;
    std::vector<cgPoint*>* found = nullptr;

private:
    enum class Cover { none, part, whole };

    bool look_at(cgPointTree& node, const plx::TreeRegion& region);
    bool find_nearest_along(cgPointTree& node, plx::TreeRegion region);
    Cover cover(const plx::TreeRegion& region) const;
    int gather_along(cgPointTree& node, plx::TreeRegion region);
    int gather_leaf(cgPointTree& leaf);

    cgPoint at;
    double place[3];
};
