#pragma once

#include <cstdint>
#include <vector>

#include "plxutils/export.h"
#include "plxutils/geometry/cgOctTree.h"
#include "plxutils/geometry/cgPointList.h"

/// Spatial index of points: a complete octree of fixed depth whose leaves hold the points.
///
/// The tree answers as if all 8^depth leaves existed. Nodes below the children of the root are made only
/// where points fall, and an undivided stretch with points of one leaf only is a single node, so memory grows
/// with the number of points, whatever the depth. Nodes that a derived class can reach exist from the start.
///
/// A tree that was set up with a depth below 1 has no box and is a plain list of points. Queries write into
/// the tree (marks, stored distances): one tree, one thread.
class PLX_EXPORT cgPointTree : public cgOctTree {
public:
    /// Unset: no box, no children.
    cgPointTree() = default;
    /// Points outside the box are filed into the leaves at its boundary; queries prune by the box, though,
    /// and may miss such points.
    cgPointTree(int depth, const cgPoint& min, const cgPoint& max);
    /// Shares the box and the children with src (and so every point that is filed into either of the two).
    cgPointTree(const cgPointTree& src);
    cgPointTree& operator=(const cgPointTree& src);

    /// Adds the points of a list in order; a list of other elements is ignored.
    void Populate(cgList& list) override;
    void Populate(cgPointList& list);
    /// Files a copy of a point; another element is ignored.
    void AddElement(const cgElement& e) override;
    void AddPoint(const cgPoint& p) { AddElement(p); }
    /// Drops what was set up before.
    void SetupChildren(cgOctTree* parent, int depth, const cgPoint& min, const cgPoint& max) override;

    /// Looks for the point nearest to p, as far as one lies closer than 1e15.
    ///
    /// @param[out] result  the point with its data; unchanged when none was found. May be p itself.
    /// @param[out] dist    its distance; 1e15 when none was found.
    /// @return whether a point was found
    bool FindClosestPoint(const cgPoint& p, cgPoint& result, double& dist);
    /// Gathers the points within dist of p (inclusive), leaf by leaf in octant order.
    ///
    /// @param storeDistance  writes each point's distance into its first data value, in the tree and in out;
    ///                       a point without data is left as it is. Switches addAll off.
    /// @param[out] out       emptied first. Without storeDistance, points of subtrees that lie wholly within
    ///                       dist are counted but not appended.
    /// @param addAll         appends every point of every leaf on the way without a test and without
    /// counting.
    /// @return number of points counted
    int FindPointsWithinDistance(const cgPoint& p, double dist, bool storeDistance, cgPointList& out,
                                 bool addAll);

protected:
    /// Octant of p around the centre of the box; on a mid plane the lower one. 0 without a box.
    int GetChildOctant(const cgPoint& p) const;
    /// Child i; null in a leaf and outside 0 to 7.
    cgPointTree* GetChild(const int& i);
    /// One step of the nearest search, from a best distance given in dist. Children that are marked are left
    /// out.
    /// @return true when the search may stop
    bool FindClosestPointImpl(const cgPoint& p, cgPoint& result, double& dist);
    /// One step of FindPointsWithinDistance.
    int AddClosePointsToList(const cgPoint& p, cgPointList& out, double dist, bool storeDistance,
                             bool addAll);
    /// Number of points below this node. Appends nothing.
    int AddAllToList(cgPointList& out);

    cgPointList points;  // of a leaf

private:
    friend class VXInterpolate;
    friend class cgOctTree;
    struct Search;

    /// The points that FindPointsWithinDistance with storeDistance gives, as they lie in the tree.
    void find_stored(const cgPoint& p, double dist, std::vector<cgPoint*>& found);
    void before_sharing() const;
    void after_sharing();
    void complete_children();
    bool clear_reachable_marks();

    bool on_demand_ = false;  // the children are out of the host's reach and made when needed
    bool divided_ = false;    // of an on-demand node: it has children; its points have moved into them
    bool implied_ = false;    // made on demand: no box of its own, the parent's octant is the region
    bool strays_ = false;     // a point outside the box has been filed into this node or below
};
