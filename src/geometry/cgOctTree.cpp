#include "plxutils/geometry/cgOctTree.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <new>
#include <utility>

#include "geometry/tree_region.h"

namespace {

/// The destructor of a box is not virtual on purpose; ours are boxes and nothing else.
void delete_box(cgBox* box) {
    if (!box) return;
    box->cgBox::~cgBox();
    ::operator delete(box);
}

/// Gives up one share of something that `owners` nodes own (null: one). True when it was the last.
bool leave(std::int32_t*& owners) {
    std::int32_t* const count = std::exchange(owners, nullptr);
    if (count && --*count > 0) return false;
    delete count;
    return true;
}

std::int32_t* join(std::int32_t*& owners) {
    if (!owners) owners = new std::int32_t(1);
    ++*owners;
    return owners;
}

}  // namespace

cgOctTree::cgOctTree(const cgOctTree& src) { share(src); }

cgOctTree& cgOctTree::operator=(const cgOctTree& src) {
    if (this == &src) return *this;
    // src may lie below this node and be gone when the old children are released.
    cgBox* old_box = box;
    double* old_tags = tagData;
    std::int32_t* region_owners = region_owners_;
    std::int32_t* tag_owners = tag_owners_;
    cgOctTree* old_children[8];
    std::copy_n(children, 8, old_children);
    share(src);
    if (leave(tag_owners)) delete[] old_tags;
    if (leave(region_owners)) {
        delete_box(old_box);
        for (cgOctTree* child : old_children) delete child;
    }
    return *this;
}

cgOctTree::~cgOctTree() {
    release_region();
    release_tags();
}

void cgOctTree::share(const cgOctTree& src) {
    region_owners_ = join(src.region_owners_);
    tag_owners_ = join(src.tag_owners_);
    box = src.box;
    std::copy_n(src.children, 8, children);
    spare = src.spare;
    tagData = src.tagData;
    depth = src.depth;
    marked = src.marked;
}

void cgOctTree::release_region() {
    const bool last = leave(region_owners_);
    if (last) delete_box(box);
    box = nullptr;
    for (cgOctTree*& child : children) {
        if (last) delete child;
        child = nullptr;
    }
}

void cgOctTree::release_tags() {
    if (leave(tag_owners_)) delete[] tagData;
    tagData = nullptr;
}

double cgOctTree::GetDistance(const cgPoint& p) { return box ? box->GetDistance(p) : 0.0; }

void cgOctTree::GetMinMaxDistance(const cgPoint& p, double& minD, double& maxD) {
    minD = 0.0;
    maxD = std::numeric_limits<double>::infinity();
    if (box) box->GetMinMaxDistance(p, minD, maxD);
}

void cgOctTree::SetTagData(long n, const double* values) {
    double* copy = nullptr;
    if (n > 0) copy = new (std::nothrow) double[static_cast<std::size_t>(n)]();
    if (copy && values) std::copy_n(values, n, copy);
    release_tags();
    tagData = copy;
}

cgPoint cgOctTree::getChildMin(int octant) {
    if (!box) return {};
    const plx::TreeRegion child = plx::TreeRegion::of(box).child(std::clamp(octant, 0, 7));
    return {child.low[0], child.low[1], child.low[2], 0};
}

cgPoint cgOctTree::getChildMax(int octant) {
    if (!box) return {};
    const plx::TreeRegion child = plx::TreeRegion::of(box).child(std::clamp(octant, 0, 7));
    return {child.high[0], child.high[1], child.high[2], 0};
}

void cgOctTree::SetupChildrenMain(cgOctTree*, int depth_, const cgPoint& min, const cgPoint& max) {
    depth = std::max(depth_, 0);
    cgBox* const old_box =
        std::exchange(box, new cgBox(min, max));  // the corners may be those of the old box
    const bool last = leave(region_owners_);
    if (last) delete_box(old_box);
    for (int i = 0; i < 8; ++i) {
        if (depth == 0) {
            if (last) delete children[i];
            children[i] = nullptr;
        } else if (children[i]) {
            children[i]->SetupChildren(this, depth - 1, getChildMin(i), getChildMax(i));
        }
    }
}

void cgOctTree::ClearMarks() {
    marked = 0;
    for (cgOctTree* child : children) {
        if (depth != 0 && child) child->ClearMarks();
    }
}
