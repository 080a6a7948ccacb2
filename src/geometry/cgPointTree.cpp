#include "plxutils/geometry/cgPointTree.h"

#include <typeinfo>

#include "geometry/point_copy.h"
#include "geometry/point_tree_search.h"

namespace {

constexpr double kFarthest = 1e15;  // the nearest search finds nothing from here on

}  // namespace

cgPointTree::cgPointTree(int depth_, const cgPoint& min, const cgPoint& max) {
    if (depth_ > 0) cgPointTree::SetupChildren(nullptr, depth_, min, max);
}

cgPointTree::cgPointTree(const cgPointTree& src) : cgOctTree(src), points(src.points), strays_(src.strays_) {}

cgPointTree& cgPointTree::operator=(const cgPointTree& src) {
    if (this == &src) return *this;
    const cgPointTree copy(src);  // src may lie below this node and be gone with the old children
    cgOctTree::operator=(copy);
    points = copy.points;
    strays_ = copy.strays_;
    return *this;
}

void cgPointTree::Populate(cgList& list) {
    if (auto* points_to_add = dynamic_cast<cgPointList*>(&list)) Populate(*points_to_add);
}

void cgPointTree::Populate(cgPointList& list) {
    const int n = list.count();
    for (int i = 0; i < n; ++i) {
        if (depth > 0) {
            AddElement(list[i]);
        } else {
            Search::file(*this, list[i]);
        }
    }
}

void cgPointTree::AddElement(const cgElement& e) {
    if (const auto* p = dynamic_cast<const cgPoint*>(&e)) Search::file(*this, *p);
}

void cgPointTree::SetupChildren(cgOctTree* parent, int depth_, const cgPoint& min, const cgPoint& max) {
    // They may be corners of the old box.
    const cgPoint low(min), high(max);  // NOLINT(performance-unnecessary-copy-initialization)
    release_region();
    if (on_demand_) points.clear();
    divided_ = implied_ = false;
    strays_ = points.count() > 0;  // a leaf keeps its points, wherever its box is now
    // Below a parent, nobody can reach into a node of this very class.
    on_demand_ = depth_ > 0 && parent && typeid(*this) == typeid(cgPointTree);
    for (int i = 0; i < 8 && depth_ > 0 && !on_demand_; ++i) children[i] = new cgPointTree;
    SetupChildrenMain(parent, depth_, low, high);
}

/// A copy shares the children that exist.
void cgPointTree::before_sharing() const {
    // Only nodes that a tree has made are on demand, and those are not constant.
    if (on_demand_) const_cast<cgPointTree*>(this)->complete_children();
}

/// The region is now one that another node has set up.
void cgPointTree::after_sharing() {
    on_demand_ = divided_ = implied_ = false;
    strays_ = true;
}

/// Turns a node whose children are made when needed into one that has them, each with its box.
void cgPointTree::complete_children() {
    if (!on_demand_) return;
    const plx::TreeRegion region = Search::region_of(*this);
    if (!divided_ && points.count() > 0) Search::divide(*this, region, nullptr);
    for (int i = 0; i < 8; ++i) {
        if (!children[i]) children[i] = Search::make_child(region.child_depth(depth));
        cgPointTree* const child = Search::child_of(*this, i);
        child->box = new cgBox(getChildMin(i), getChildMax(i));
        child->implied_ = false;
    }
    on_demand_ = divided_ = false;
}

/// Clears the marks that a host can have set or seen. True when every point lies in the boxes that it went
/// through and every node below is of this very class.
bool cgPointTree::clear_reachable_marks() {
    marked = 0;
    bool regular = !strays_;
    for (int i = 0; i < 8 && depth > 0 && !on_demand_; ++i) {
        if (!children[i]) continue;
        cgPointTree* const child = Search::child_of(*this, i);
        regular = child->clear_reachable_marks() && regular && typeid(*child) == typeid(cgPointTree);
    }
    return regular;
}

bool cgPointTree::FindClosestPoint(const cgPoint& p, cgPoint& result, double& dist) {
    dist = kFarthest;
    if (depth <= 0 && points.count() == 0) return false;
    Search search(p);
    search.best = kFarthest;
    if (clear_reachable_marks()) search.set_bound(*this);
    search.find_nearest(*this, Search::region_of(*this));
    if (!search.nearest) return false;
    plx::copy_point(result, *search.nearest);
    dist = search.best;
    return true;
}

bool cgPointTree::FindClosestPointImpl(const cgPoint& p, cgPoint& result, double& dist) {
    Search search(p);
    search.best = dist;
    const bool stop = search.find_nearest(*this, Search::region_of(*this));
    if (search.nearest) {
        plx::copy_point(result, *search.nearest);
        dist = search.best;
    }
    return stop;
}

int cgPointTree::FindPointsWithinDistance(const cgPoint& p, double dist, bool storeDistance, cgPointList& out,
                                          bool addAll) {
    const cgPoint at(p.x(), p.y(), p.z(), 0);  // p may be a point of out
    out.clear();
    if (GetDistance(at) > dist) return 0;
    return AddClosePointsToList(at, out, dist, storeDistance, addAll);
}

void cgPointTree::find_stored(const cgPoint& p, double dist, std::vector<cgPoint*>& found) {
    found.clear();
    if (GetDistance(p) > dist) return;
    Search search(p);
    search.set_range(dist, true, false);
    search.found = &found;
    search.gather(*this, Search::region_of(*this));
}

int cgPointTree::AddClosePointsToList(const cgPoint& p, cgPointList& out, double dist, bool storeDistance,
                                      bool addAll) {
    Search search(p);
    search.set_range(dist, storeDistance, addAll);
    search.out = &out;
    return search.gather(*this, Search::region_of(*this));
}

int cgPointTree::AddAllToList(cgPointList&) { return Search::count_below(*this); }

int cgPointTree::GetChildOctant(const cgPoint& p) const { return Search::region_of(*this).octant(p); }

cgPointTree* cgPointTree::GetChild(const int& i) {
    complete_children();
    return i >= 0 && i < 8 ? static_cast<cgPointTree*>(children[i]) : nullptr;
}
