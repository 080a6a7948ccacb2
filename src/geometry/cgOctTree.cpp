#include "plxutils/geometry/cgOctTree.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <new>
#include <utility>

#include "geometry/tree_region.h"
#include "plxutils/geometry/cgPointTree.h"

namespace {

/// The destructor of a box is not virtual on purpose; ours are boxes and nothing else.
void delete_box(cgBox* box) {
    if (!box) return;
    box->cgBox::~cgBox();
    ::operator delete(box);
}

/// Gives up one share of something that `owners` nodes own (null: one). True when it was the last.
bool leave_tags(std::int32_t*& owners) {
    std::int32_t* const count = std::exchange(owners, nullptr);
    if (count && --*count > 0) return false;
    delete count;
    return true;
}

}  // namespace

/// The box and the children that `owners` nodes share.
struct cgOctTree::Region {
    std::int32_t owners = 1;
    cgOctTree* children[8] = {};
};

cgOctTree::cgOctTree(const cgOctTree& src) { share(src); }

cgOctTree& cgOctTree::operator=(const cgOctTree& src) {
    if (this == &src) return *this;
    // src may lie below this node and be gone when the old children are released.
    cgBox* const old_box = box;
    double* const old_tags = tagData;
    std::int32_t* tag_owners = tag_owners_;
    Region* region = region_;
    cgOctTree* old_children[8];
    std::copy_n(children, 8, old_children);
    share(src);
    if (auto* points = dynamic_cast<cgPointTree*>(this)) points->after_sharing();
    if (leave_tags(tag_owners)) delete[] old_tags;
    if (leave(region)) {
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
    // Also when both are known by their base class only.
    if (const auto* points = dynamic_cast<const cgPointTree*>(&src)) points->before_sharing();
    if (!src.region_) {
        src.region_ = new Region;
        std::copy_n(src.children, 8, src.region_->children);
    }
    ++src.region_->owners;
    region_ = src.region_;
    if (!src.tag_owners_) src.tag_owners_ = new std::int32_t(1);
    ++*src.tag_owners_;
    tag_owners_ = src.tag_owners_;
    box = src.box;
    std::copy_n(src.children, 8, children);
    spare = src.spare;
    tagData = src.tagData;
    depth = src.depth;
    marked = src.marked;
}

/// Gives up a share of box and children. True when nobody else has them.
bool cgOctTree::leave(Region*& shared) {
    Region* const region = std::exchange(shared, nullptr);
    if (region && --region->owners > 0) return false;
    delete region;
    return true;
}

void cgOctTree::release_region() {
    const bool last = leave(region_);
    if (last) delete_box(box);
    box = nullptr;
    for (cgOctTree*& child : children) {
        if (last) delete child;
        child = nullptr;
    }
}

void cgOctTree::release_tags() {
    if (leave_tags(tag_owners_)) delete[] tagData;
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
    constexpr auto kMost =
        static_cast<std::size_t>(std::numeric_limits<std::ptrdiff_t>::max()) / sizeof(double);
    // Above that new throws, whatever it was asked for.
    if (n > 0 && static_cast<std::size_t>(n) <= kMost)
        copy = new (std::nothrow) double[static_cast<std::size_t>(n)]();
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
    cgOctTree* others[8] = {};                    // children that copies of this node have
    if (region_ && region_->owners > 1) std::copy_n(region_->children, 8, others);
    const bool last = leave(region_);
    if (last) delete_box(old_box);
    for (int i = 0; i < 8; ++i) {
        if (children[i] == others[i]) children[i] = nullptr;
    }
    for (int i = 0; i < 8; ++i) {
        if (depth == 0) {
            delete children[i];
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
