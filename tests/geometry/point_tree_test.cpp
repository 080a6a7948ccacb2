#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <limits>
#include <memory>
#include <random>
#include <vector>

#include "plxutils/geometry/cgPointTree.h"
#include "plxutils/geometry/cgSegmentList.h"

namespace {

const cgPoint kLow(0, 0, 0, 0), kHigh(2, 2, 2, 0);
enum { kX = 2, kY = 1, kZ = 4 };

/// A complete tree in its plainest form, searched by plain recursion.
struct Model {
    Model(int depth_, const cgBox& box_) : box(box_), depth(depth_) {
        const cgPoint mid((box.min.x() + box.max.x()) * 0.5, (box.min.y() + box.max.y()) * 0.5,
                          (box.min.z() + box.max.z()) * 0.5, 0);
        for (int i = 0; depth > 0 && i < 8; ++i) {
            const cgPoint &x0 = i & kX ? mid : box.min, &y0 = i & kY ? mid : box.min,
                          &z0 = i & kZ ? mid : box.min, &x1 = i & kX ? box.max : mid,
                          &y1 = i & kY ? box.max : mid, &z1 = i & kZ ? box.max : mid;
            children.push_back(
                std::make_unique<Model>(depth - 1, cgBox(x0.x(), y0.y(), z0.z(), x1.x(), y1.y(), z1.z())));
        }
    }

    void add(const cgPoint& p) {
        if (depth == 0) return points.append(p);
        const cgPoint& mid = children[0]->box.max;
        children[static_cast<std::size_t>(kX * (p.x() > mid.x()) + kY * (p.y() > mid.y()) +
                                          kZ * (p.z() > mid.z()))]
            ->add(p);
    }

    bool nearest(const cgPoint& p, cgPoint& result, double& dist) const {
        if (depth == 0 && points.count() == 0) return false;
        for (const auto& child : children) {
            if (child->box.GetDistance(p) < dist && child->nearest(p, result, dist)) return true;
        }
        double last = 1e16;
        for (int i = 0; i < points.count(); ++i) {
            last = p.GetDistance(points[i]);
            if (last < dist) result = points[i], dist = last;
        }
        const cgPoint &a = box.min, &b = box.max;
        return std::min({std::fabs(a.x() - p.x()), std::fabs(b.x() - p.x()), std::fabs(a.y() - p.y()),
                         std::fabs(b.y() - p.y()), std::fabs(a.z() - p.z()), std::fabs(b.z() - p.z())}) >
               last;
    }

    int all() const {
        int n = points.count();
        for (const auto& child : children) n += child->all();
        return n;
    }

    int within(const cgPoint& p, double dist, bool store, bool take_all, std::vector<double>& ids) const {
        int n = 0;
        for (const auto& child : children) {
            double near, far;
            child->box.GetMinMaxDistance(p, near, far);
            if (near > dist) continue;
            n += store || dist < far ? child->within(p, dist, store, take_all, ids) : child->all();
        }
        for (int i = 0; i < points.count(); ++i) {
            const bool hit = p.GetDistance(points[i]) <= dist;
            if (hit || take_all) ids.push_back(points[i][1]);
            n += hit && !take_all;
        }
        return n;
    }

    cgBox box;
    int depth;
    std::vector<std::unique_ptr<Model>> children;
    cgPointList points;
};

std::vector<double> ids_of(const cgPointList& list) {
    std::vector<double> ids;
    for (int i = 0; i < list.count(); ++i) ids.push_back(list[i][1]);
    return ids;
}

/// Points with the values (-1, number); the more of them, the closer they crowd around three places.
cgPointList scatter(int n, std::mt19937& random) {
    std::uniform_real_distribution<double> anywhere(0, 2), close(-0.01, 0.01);
    cgPointList list;
    for (int i = 0; i < n; ++i) {
        const double id[2] = {-1, double(i)}, a = 0.3 + 0.6 * (i % 3);
        if (i % 2)
            list.append(cgPoint(anywhere(random), anywhere(random), anywhere(random), 2, id));
        else
            list.append(cgPoint(a + close(random), a + close(random), i % 5 ? a : 1.0, 2, id));
    }
    return list;
}

TEST(cgPointTree, AnswersLikeACompleteTree) {
    std::mt19937 random(20260711);
    std::uniform_real_distribution<double> place(-0.3, 2.3), radius(0, 1.5);
    for (const int depth : {1, 2, 3, 4}) {
        for (const int n : {0, 1, 2, 30, 700}) {
            SCOPED_TRACE(testing::Message() << "depth " << depth << ", points " << n);
            cgPointList list = scatter(n, random);
            cgPointTree tree(depth, kLow, kHigh);
            Model model(depth, cgBox(kLow, kHigh));
            const bool strays = n == 30;  // outside the box, where the course of the walk decides
            for (int i = 0; strays && i < n; i += 3) list[i].SetPoint(2.2, 0.1 * i, 1.0, 2, list[i].data());
            tree.Populate(list);
            for (int i = 0; i < n; ++i) model.add(list[i]);
            for (int query = 0; query < 300; ++query) {
                const cgPoint p(place(random), place(random), place(random), 0);
                cgPoint result, expected;
                double dist = 0, expected_dist = 1e15;
                model.nearest(p, expected, expected_dist);
                ASSERT_EQ(tree.FindClosestPoint(p, result, dist), n > 0);
                ASSERT_EQ(dist, expected_dist);
                ASSERT_EQ(result[1], expected[1]);

                const double r = radius(random) * radius(random);
                const bool store = query & 1, all = query & 2;
                std::vector<double> ids;
                cgPointList out;
                const bool reached = cgBox(kLow, kHigh).GetDistance(p) <= r;
                const int count = reached ? model.within(p, r, store, all && !store, ids) : 0;
                ASSERT_EQ(tree.FindPointsWithinDistance(p, r, store, out, all), count);
                ASSERT_EQ(ids_of(out), ids);
                for (int i = 0; store && i < out.count(); ++i) ASSERT_EQ(out[i][0], p.GetDistance(out[i]));
                int brute = 0;
                for (int i = 0; i < n; ++i) brute += p.GetDistance(list[i]) <= r;
                ASSERT_EQ(count, strays || (all && !store) ? count : brute);
            }
        }
    }
}

TEST(cgPointTree, AnyDepthAndAnyNumberIsSafe) {
    const double huge = 1e308, nan = std::numeric_limits<double>::quiet_NaN();
    for (const int depth : {INT_MIN, -1, 0, 1, 40, INT_MAX}) {
        for (const double far : {0.0, 1.0, huge, nan}) {
            SCOPED_TRACE(testing::Message() << "depth " << depth << ", size " << far);
            cgPointTree tree(depth, kLow, cgPoint(far, far, far, 0));
            cgPointList out;
            cgPoint p(0.25, 0.25, 0.25, 0), result;
            double dist = 0;
            EXPECT_FALSE(tree.FindClosestPoint(cgPoint(1e17, 1e17, 1e17, 0), result, dist));
            EXPECT_EQ(dist, 1e15);
            for (const double x : {0.0, 5e-324, 1e-320, 0.25, 0.25, 1.0}) tree.AddPoint(cgPoint(x, x, x, 0));
            tree.AddPoint(cgPoint(nan, 0, 0, 0));
            tree.AddElement(cgBox(kLow, kHigh));
            EXPECT_FALSE(tree.FindClosestPoint(cgPoint(nan, 0, 0, 0), result, dist));
            EXPECT_TRUE(tree.FindClosestPoint(p, p, dist));
            EXPECT_LE(dist, far == 1.0 ? 0.0 : 1.0);
            EXPECT_EQ(tree.FindPointsWithinDistance(p, 10.0, true, out, false), 6);
            EXPECT_EQ(tree.FindPointsWithinDistance(out[0], -1.0, true, out, false), 0);
            cgSegmentList other;
            tree.Populate(other);
        }
    }
}

struct Host : cgPointTree {
    using cgPointTree::cgPointTree;
    Host(const cgPointTree& src) : cgPointTree(src) {}
    using cgPointTree::AddAllToList, cgPointTree::SetupChildren, cgPointTree::SetupChildrenMain;
    using cgPointTree::children, cgPointTree::GetChild, cgPointTree::GetChildOctant, cgPointTree::getChildMax;
    using cgPointTree::FindClosestPointImpl;
};

TEST(cgPointTree, SearchStopsByTheLastPointSeen) {
    const std::tuple<std::vector<double>, double, bool, double> cases[] = {
        {{1.0}, 1.25, true, 0.25}, {{1.0}, 1.5, false, 0.5}, {{1.0, 0.1}, 1.0, false, 0.0}};
    for (const auto& [points, z, stops, expected] : cases) {
        SCOPED_TRACE(z);
        Host tree(2, cgPoint(0, 0, 0, 0), cgPoint(8, 8, 8, 0));
        for (const double at : points) tree.AddPoint(cgPoint(at, at, at, 0));
        cgPoint result;
        double dist = 1e15;
        EXPECT_EQ(tree.FindClosestPointImpl(cgPoint(1, 1, z, 0), result, dist), stops);
        EXPECT_EQ(dist, expected);
        tree.GetChild(0)->Mark();
        dist = 1e15;
        EXPECT_FALSE(tree.FindClosestPointImpl(cgPoint(1, 1, z, 0), result, dist));
        EXPECT_EQ(dist, 1e15);  // the marked child is left out
    }
}

TEST(cgPointTree, HostsMayFillAndShareNodesByThemselves) {
    cgPointList far;
    far.append(cgPoint(1.9, 1.9, 1.9, 0));
    Host tree(1, kLow, kHigh);
    tree.GetChild(0)->Populate(far);  // outside the child's box
    tree.AddPoint(cgPoint(1.5, 1.5, 1.5, 0));
    cgPoint result;
    double dist;
    EXPECT_TRUE(tree.FindClosestPoint(cgPoint(1.9, 1.9, 1.85, 0), result, dist));
    EXPECT_NEAR(dist, 0.05, 1e-12);

    Host deep(3, kLow, kHigh);
    deep.AddPoint(cgPoint(0.2, 0.2, 0.2, 0));
    cgPointTree copy;
    static_cast<cgOctTree&>(copy) = *deep.GetChild(0);  // known by the base class only
    cgPointList out;
    EXPECT_EQ(copy.FindPointsWithinDistance(kLow, 0.5, true, out, false), 1);

    Host again(deep);
    again.SetupChildrenMain(nullptr, 2, kLow, kHigh);  // the other one keeps the children
    EXPECT_EQ(deep.FindPointsWithinDistance(kLow, 0.5, true, out, false), 1);
    // Where a long has 32 bits there may be room for as many.
    if (sizeof(long) == 4) return;
    again.SetTagData(std::numeric_limits<long>::max(), nullptr);
    EXPECT_EQ(again.GetTagData(), nullptr);
}

TEST(cgPointTree, DerivedClassSeesTheChildren) {
    Host tree(3, kLow, kHigh);
    EXPECT_EQ(tree.GetChildOctant(cgPoint(1, 1, 1, 0)), 0);
    EXPECT_EQ(tree.GetChildOctant(cgPoint(1.5, 0.5, 1.5, 0)), 6);
    for (const double x : {0.1, 0.9, 0.95, 1.9}) tree.AddPoint(cgPoint(x, 0.1, 0.1, 0));
    cgPointList out;
    double dist;
    cgPoint result;
    Host part(*tree.GetChild(0));  // a copy shares what lies below, in both directions
    part.AddPoint(cgPoint(0.1, 0.9, 0.9, 0));
    EXPECT_EQ(tree.AddAllToList(out), 5);
    EXPECT_EQ(part.AddAllToList(out), 4);
    EXPECT_FALSE(part.GetChild(1)->FindClosestPoint(kLow, result, dist));
    EXPECT_TRUE(part.GetChild(2)->FindClosestPoint(kLow, result, dist));
    EXPECT_EQ(part.getChildMax(2), cgPoint(1, 0.5, 0.5, 0));
    tree.children[0]->Mark();
    tree.FindClosestPoint(cgPoint(0, 0.1, 0.1, 0), result, dist);
    EXPECT_TRUE(tree.children[6]->Marked());
    EXPECT_FALSE(tree.children[0]->Marked());
    tree = part;
    tree.SetupChildren(nullptr, 1, kLow, kHigh);
    EXPECT_EQ(tree.AddAllToList(out), 0);
    EXPECT_EQ(part.AddAllToList(out), 4);
}

TEST(cgOctTree, TagDataBelongsToTheNodeThatSetsIt) {
    const double values[2] = {3, 4};
    cgPointTree tree(1, kLow, kHigh);
    tree.SetTagData(2, values);
    cgPointTree copy(tree);
    EXPECT_EQ(copy.GetTagData(), tree.GetTagData());
    copy.SetTagData(2, copy.GetTagData());
    EXPECT_NE(copy.GetTagData(), tree.GetTagData());
    EXPECT_EQ(copy.GetTagData()[1], 4.0);
    tree.SetTagData(0, values);
    EXPECT_EQ(tree.GetTagData(), nullptr);
}

}  // namespace
