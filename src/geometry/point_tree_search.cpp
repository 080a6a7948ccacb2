#include "geometry/point_tree_search.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <typeinfo>

namespace {

constexpr double kNothingSeen = 1e16;  // what a node without points compares its faces with

/// An upper bound, in squares, for distances up to d: what is larger needs no square root.
double square_above(double d) { return d * d * (1.0 + 1e-12); }

}  // namespace

using plx::TreeRegion;

cgPointTree* cgPointTree::Search::make_child(int depth) {
    auto child = std::make_unique<cgPointTree>();
    child->depth = depth;
    child->on_demand_ = depth > 0;
    child->implied_ = true;
    return child.release();
}

/// Gives an undivided node with points a child that holds them. A node in the host's hands stays where it is;
/// another one becomes the child itself, below a new node in its slot.
/// @return the node that is now divided
cgPointTree* cgPointTree::Search::divide(cgPointTree& node, const TreeRegion& region, cgOctTree** slot) {
    const int octant = region.octant(node.points[0]);
    const int child_depth = region.child_depth(node.depth);
    if (!node.implied_ || !slot) {
        cgPointTree* const child = make_child(child_depth);
        node.children[octant] = child;
        node.divided_ = true;
        child->points = node.points;
        node.points.clear();
        return &node;
    }
    cgPointTree* const parent = make_child(node.depth);
    parent->divided_ = true;
    parent->children[octant] = &node;
    node.depth = child_depth;
    node.on_demand_ = child_depth > 0;
    *slot = parent;
    return parent;
}

void cgPointTree::Search::file(cgPointTree& root, const cgPoint& p) {
    cgPointTree* node = &root;
    cgOctTree** slot = nullptr;
    TreeRegion region = region_of(root);
    while (node->depth > 0) {
        if (!node->implied_ && !region.contains(p)) node->strays_ = true;
        if (undivided(*node)) {
            if (node->points.count() == 0 || region.same_leaf(node->depth, node->points[0], p)) break;
            node = divide(*node, region, slot);
        }
        const int octant = region.octant(p);
        slot = &node->children[octant];
        if (!*slot) {
            if (!node->on_demand_) return;  // a host's own tree without this child
            *slot = make_child(region.child_depth(node->depth));
        }
        cgPointTree* const child = child_of(*node, octant);
        if (typeid(*child) != typeid(cgPointTree)) {
            child->AddElement(p);
            return;
        }
        region = child_region(*node, region, octant);
        node = child;
    }
    if (!node->implied_ && !region.contains(p)) node->strays_ = true;
    node->points.append(p);
}

int cgPointTree::Search::count_below(const cgPointTree& node) {
    if (node.depth <= 0 || undivided(node)) return node.points.count();
    int count = 0;
    for (int i = 0; i < 8; ++i) {
        if (node.children[i]) count += count_below(*child_of(node, i));
    }
    return count;
}

/// The points of the node itself, then the rule that ends a search.
bool cgPointTree::Search::look_at(cgPointTree& node, const TreeRegion& region) {
    double seen = kNothingSeen;
    if (const int n = node.points.count(); n > 0) {
        const cgPoint* const points = &node.points[0];
        double limit = square_above(best);
        for (int i = 0; i < n; ++i) {
            const double squared = at.GetDistanceSquared(points[i]);
            if (squared > limit) continue;
            const double d = std::sqrt(squared);
            if (d < best) {
                best = d;
                limit = square_above(best);
                nearest = &points[i];
            }
        }
        seen = at.GetDistance(points[n - 1]);
    }
    // Deliberate: the distance of the last point seen decides, not the best one. It stops less often than it
    // might, and hosts rely on which of several points it ends with.
    return region.known && region.to_face(place) > seen;
}

bool cgPointTree::Search::find_nearest_along(cgPointTree& node, TreeRegion region) {
    if (node.points.count() == 0) return region.to_face(place) > kNothingSeen;
    bool stop = false;
    for (int depth = node.depth; depth > 0;) {
        stop = stop || region.to_face(place) > kNothingSeen;
        depth = region.child_depth(depth);
        region = region.child(region.octant(node.points[0]));
        if (too_far(region)) return stop;
    }
    return look_at(node, region) || stop;
}

bool cgPointTree::Search::find_nearest(cgPointTree& node, const TreeRegion& region) {
    if (node.depth <= 0) return node.points.count() > 0 && look_at(node, region);
    if (undivided(node)) return find_nearest_along(node, region);
    for (int i = 0; i < 8; ++i) {
        cgPointTree* const child = child_of(node, i);
        if (!child) continue;
        const TreeRegion below = child_region(node, region, i);
        const bool far = too_far(below);
        if (!node.on_demand_) {  // only here a host can have set marks, or look at them
            if (far) child->marked = 1;
            if (child->marked != 0) continue;
        }
        if (!far && find_nearest(*child, below)) return true;
    }
    return look_at(node, region);
}

void cgPointTree::Search::set_bound(const cgPointTree& root) {
    const cgPointTree* node = &root;
    TreeRegion region = region_of(root);
    while (node->depth > 0 && !undivided(*node)) {
        int nearest_child = -1;
        double nearest_distance = 0.0;
        for (int i = 0; i < 8; ++i) {
            if (!node->children[i] || bare(*child_of(*node, i))) continue;
            const double distance = child_region(*node, region, i).distance(place);
            if (nearest_child >= 0 && !(distance < nearest_distance)) continue;
            nearest_child = i;
            nearest_distance = distance;
        }
        if (nearest_child < 0) return;
        region = child_region(*node, region, nearest_child);
        node = child_of(*node, nearest_child);
    }
    for (int i = 0; i < node->points.count(); ++i) {
        bound = std::min(bound, at.GetDistance(node->points[i]));
    }
}

void cgPointTree::Search::set_range(double d, bool store_distance, bool all) {
    dist = d;
    store = store_distance;
    add_all = all && !store_distance;
}

/// How far a region lies within dist. With stored distances every point must be looked at.
cgPointTree::Search::Cover cgPointTree::Search::cover(const TreeRegion& region) const {
    const double nearest_corner = region.distance(place);
    if (!(nearest_corner <= dist)) return Cover::none;
    if (store || dist < region.farthest(place, nearest_corner)) return Cover::part;
    return Cover::whole;
}

int cgPointTree::Search::gather_leaf(cgPointTree& leaf) {
    const int n = leaf.points.count();
    if (n == 0) return 0;
    const double limit = square_above(dist);
    cgPoint* const first = &leaf.points[0];
    const bool growing = out == &leaf.points;  // a derived class may add a leaf to itself
    int count = 0;
    for (int i = 0; i < n; ++i) {
        cgPoint& point = growing ? leaf.points[i] : first[i];
        if (!add_all) {
            const double squared = at.GetDistanceSquared(point);
            if (squared > limit) continue;
            const double d = std::sqrt(squared);
            if (!(d <= dist)) continue;
            if (store && point.num_data() > 0) point.data()[0] = d;
            ++count;
        }
        // Deliberate: points taken without a test are not counted; callers go by the list then.
        if (found) {
            found->push_back(&point);
        } else {
            out->append(point);
        }
    }
    return count;
}

int cgPointTree::Search::gather_along(cgPointTree& node, TreeRegion region) {
    if (node.points.count() == 0) return 0;
    for (int depth = node.depth; depth > 0;) {
        depth = region.child_depth(depth);
        region = region.child(region.octant(node.points[0]));
        const Cover covered = cover(region);
        if (covered != Cover::part) return covered == Cover::whole ? node.points.count() : 0;
    }
    return gather_leaf(node);
}

int cgPointTree::Search::gather(cgPointTree& node, const TreeRegion& region) {
    if (node.depth <= 0) return gather_leaf(node);
    if (undivided(node)) return gather_along(node, region);
    int count = 0;
    for (int i = 0; i < 8; ++i) {
        cgPointTree* const child = child_of(node, i);
        if (!child) continue;
        const TreeRegion below = child_region(node, region, i);
        const Cover covered = cover(below);
        if (covered == Cover::part) count += gather(*child, below);
        // Deliberate: a subtree wholly within reach is counted but not listed; callers use the number only.
        if (covered == Cover::whole) count += count_below(*child);
    }
    return count;
}
