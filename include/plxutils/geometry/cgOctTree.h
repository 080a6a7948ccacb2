#pragma once

#include <cstdint>

#include "plxutils/export.h"
#include "plxutils/geometry/cgBox.h"
#include "plxutils/geometry/cgElement.h"
#include "plxutils/geometry/cgList.h"
#include "plxutils/geometry/cgPoint.h"

/// Node of an octree of fixed depth: a box, and eight children that halve it on every axis.
///
/// Octants are numbered 2 for the upper x half, plus 1 for the upper y half, plus 4 for the upper z half.
/// Copies share the box, the children and the tag data; the last of them deletes what is shared.
class PLX_EXPORT cgOctTree {
public:
    virtual ~cgOctTree();
    /// Adds the elements of a list.
    virtual void Populate(cgList& list) = 0;
    virtual void AddElement(const cgElement& e) = 0;
    /// Makes this node the root of `depth` levels below the box; depth 0 is a leaf.
    virtual void SetupChildren(cgOctTree* parent, int depth, const cgPoint& min, const cgPoint& max) = 0;

    cgOctTree(const cgOctTree& src);
    cgOctTree& operator=(const cgOctTree& src);

    /// Distance from p to the node's box; 0 while there is no box.
    double GetDistance(const cgPoint& p);
    /// Distances to the nearest point and the farthest corner of the box; 0 and infinity without a box.
    void GetMinMaxDistance(const cgPoint& p, double& minD, double& maxD);
    void Mark() { marked = 1; }
    bool Marked() { return marked != 0; }
    /// Replaces the tag data by a copy of n values; null values give zeros, n below 1 removes the data. The
    /// node does not keep n.
    void SetTagData(long n, const double* values);
    double* GetTagData() { return tagData; }

protected:
    cgOctTree() = default;

    /// Corners of a child's box, without data. Octants past 7 count as 7, octants below 0 as 0; the origin
    /// when there is no box.
    cgPoint getChildMin(int octant);
    cgPoint getChildMax(int octant);
    /// Stores the depth (below 0 counts as 0) and the box, then sets up the children, which the caller has
    /// allocated, in octant order; children that are null are left out. A leaf loses its children.
    void SetupChildrenMain(cgOctTree* parent, int depth, const cgPoint& min, const cgPoint& max);
    /// Clears the marks of this node and of all below it.
    void ClearMarks();
    /// Lets go of the box and the children, and deletes them unless a copy still has them.
    void release_region();

    cgBox* box = nullptr;
    cgOctTree* children[8] = {};
    std::int32_t spare = 0;  // room for the host
    double* tagData = nullptr;
    std::int32_t depth = 0;
    std::int32_t marked = 0;

private:
    struct Region;

    static bool leave(Region*& shared);
    void release_tags();
    void share(const cgOctTree& src);

    mutable Region* region_ = nullptr;            // box and children, as copies share them; null until then
    mutable std::int32_t* tag_owners_ = nullptr;  // number of nodes that share the tag data; null: one
};
