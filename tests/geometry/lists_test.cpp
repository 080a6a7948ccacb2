#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <random>
#include <stdexcept>
#include <tuple>
#include <utility>
#include <vector>

#include "geometry/segment_chain.h"
#include "plxutils/geometry/cgPointList.h"
#include "plxutils/geometry/cgSegmentList.h"
#include "plxutils/geometry/cgTriangleVec.h"

namespace {

cgPoint at(double x, double value = 0.0) { return {x, 0, 0, 1, &value}; }

std::vector<double> xs(const cgPointList& list) {
    std::vector<double> result;
    for (int i = 0; i < list.count(); ++i) result.push_back(list[i].x());
    return result;
}

using Xs = std::vector<double>;

TEST(cgPointList, CapacityCountAndEmptiness) {
    using List = cgPointList;
    const std::tuple<const char*, void (*)(List&), std::array<int, 3>> table[] = {
        {"index", [](List& l) { l[250]; }, {300, 251, false}},
        {"resize", [](List& l) { l.resize(10); }, {110, 0, false}},
        {"negative resize", [](List& l) { l.resize(-5); }, {0, 0, true}},
        {"no grow size", [](List& l) { l.grow_size() = 0, l[7], l.append(at(1)); }, {9, 9, false}},
        {"negative grow size", [](List& l) { l.grow_size() = -7, l.resize(3); }, {3, 0, false}},
        {"insert nothing", [](List& l) { l.insert(-1, at(1), 0); }, {0, 0, true}},
        {"own copy", [](List& l) { l[5], l.CopyFromList(l); }, {0, 0, true}},
    };
    for (const auto& [name, change, expected] : table) {
        List list;
        change(list);
        EXPECT_EQ((std::array<int, 3>{list.capacity(), list.count(), list.empty()}), expected) << name;
    }
}

/// The growth rules of the list, step by step, on plain numbers.
struct PlainList {
    Xs slots;
    int capacity, grow, count;

    void set_size(int size) { slots.resize(static_cast<std::size_t>(capacity = size)); }
    void reach(int size) {
        int grown = capacity;
        while (grown < size) grown += grow;
        if (grown > capacity) set_size(grown);
    }
    void set(int i, double x) {
        reach(i + 1);
        count = std::max(count, i + 1);
        slots[static_cast<std::size_t>(i)] = x;
    }
    void insert(int place, double x, int n) {
        reach(count + n);
        slots.insert(slots.begin() + place, static_cast<std::size_t>(n), x);
        count += n;
    }
};

TEST(cgPointList, RandomCallsFollowTheGrowthRules) {
    std::mt19937 random(11);
    cgPointList list;
    PlainList plain{{}, 0, 100, 0};
    for (int call = 0; call < 3000; ++call) {
        const int n = static_cast<int>(random() % 150) + 1, kind = static_cast<int>(random() % 20);
        const int place = std::min(2 * n, static_cast<int>(plain.slots.size()));
        if (kind == 0) list.clear(), plain = {{}, 0, plain.grow, 0};
        if (kind == 1) list.grow_size() = plain.grow = n;
        if (kind == 2) list[n].SetPoint(call, 0, 0, 0, nullptr), plain.set(n, call);
        if (kind == 3) list.insert(place, at(call), n), plain.insert(place, call, n);
        if (kind == 4) list.resize(n);
        if (kind == 4 && plain.capacity < n) plain.set_size(n + plain.grow);
        if (kind > 4) list.append(at(call)), plain.set(plain.count, call);
        ASSERT_EQ(std::tuple(list.capacity(), list.count(), list.empty()),
                  std::tuple(plain.capacity, plain.count, plain.slots.empty()))
            << "call " << call;
        const cgPointList& view = list;
        for (int i = 0; const double x : plain.slots) ASSERT_EQ(view[i++].x(), x) << "call " << call;
    }
}

TEST(cgPointList, InsertsShiftTheTail) {
    cgPointList list;
    for (int i = 0; i < 3; ++i) list.append(at(i));
    list.insert(1, at(8), 2);
    list.prepend(static_cast<const cgElement&>(at(9)));
    list.prepend(cgSegment(1, 2, 3));
    EXPECT_EQ(xs(list), (Xs{9, 0, 8, 8, 1, 2}));
    list.insert(103, at(7), 1);  // past the count, at the end of the array
    EXPECT_EQ(static_cast<const cgPointList&>(list)[103].x(), 7.0);
    EXPECT_THROW(list.insert(105, at(1), 1), std::invalid_argument);
    EXPECT_THROW(list.insert(-1, at(1), 1), std::invalid_argument);
    EXPECT_THROW(list[-1], std::invalid_argument);
    EXPECT_THROW(static_cast<const cgPointList&>(list)[104], std::invalid_argument);
    EXPECT_EQ(list.count(), 7);
}

TEST(cgPointList, ListsMayBeTheirOwnArguments) {
    cgPointList list;
    list.append(at(1, 5));
    for (int i = 0; i < 200; ++i) list.append(list[0]);
    EXPECT_EQ(list[200][0], 5.0);
    cgPointList two, copy;
    for (const int x : {1, 2}) two.append(at(x));
    two.ProjectToList(cgVector(10, 0, 0), two);
    EXPECT_EQ(xs(two), (Xs{1, 2, 11, 12}));
    copy.CopyFromList(two);
    EXPECT_EQ(xs(copy), xs(two));
    EXPECT_EQ(copy.capacity(), 200);
    EXPECT_TRUE(copy.GetExtents().min == copy[0] && copy.GetExtents().max == copy[3]);
}

TEST(cgPointList, SortsAreStableAndKeepTheData) {
    const auto scattered = [](double x) { return std::fmod(x * 7919, 53); };
    const auto rank = [](const cgPoint& p) { return std::pair(p[0], p.x()); };
    cgPointList list;
    for (int i = 0; i < 1000; ++i) list.append(at(i, scattered(i)));
    list.do_sort_by_data(0, 1000000);
    for (int i = 1; i < 1000; ++i) ASSERT_LT(rank(list[i - 1]), rank(list[i])) << i;
    list.do_sort(&cgPointList::Compare);
    for (int i = 0; i < 1000; ++i) ASSERT_EQ(rank(list[i]), std::pair(scattered(i), 1.0 * i));
}

TEST(cgPointList, SortEndsForContradictoryComparisons) {
    cgPointList list;
    for (int i = 0; i < 600; ++i) list.append(at(0.006 * (i % 3), 2 - i % 3));
    list.do_sort_with_data(0, 0, 0.01, 0, 0, nullptr);
    list.do_sort([](const cgPoint*, const cgPoint*) { return -1; });
    Xs sorted = xs(list);
    std::sort(sorted.begin(), sorted.end());
    EXPECT_EQ((Xs{sorted[199], sorted[200], sorted[400]}), (Xs{0.0, 0.006, 0.012}));
}

TEST(cgSegmentList, KeepsSegmentsOnly) {
    cgSegmentList list;
    list.append(cgSegment(0, 0, 0, 1, -1, 0));
    list.prepend(cgSegment(5, 5, 5, 4, 4, 9));
    list.append(at(1));
    list.ProjectToList(cgVector(0, 0, 1), list);
    ASSERT_EQ(list.size(), 4);
    EXPECT_EQ(list[2].p0, cgPoint(5, 5, 6, 0));
    EXPECT_TRUE(list.GetExtents().min == cgPoint(0, -1, 0, 0) &&
                list.GetExtents().max == cgPoint(5, 5, 10, 0));
}

TEST(cgTriangleVec, MayAddItsOwnElements) {
    cgTriangleVec list;
    list.append(cgTriangle(at(0), at(2), cgPoint(0, 1, 0, 0)));
    for (int i = 0; i < 10; ++i) list.prepend(list[list.size() - 1]);
    EXPECT_EQ(list[0].Area(), 1.0);
    EXPECT_THROW(list[11], std::invalid_argument);
}

TEST(SegmentChain, IsProlongedThroughTheBoxAndCutIntoPieces) {
    plx::ElementArray<cgSegment> chain = {cgSegment(4, 0, 0, 6, 0, 0)}, pieces;
    const cgBox box(0, -1, -1, 10, 1, 1);
    plx::extend_chain(chain, box, 2.5);
    ASSERT_EQ(chain.size(), 7U);
    EXPECT_TRUE(chain.front().p0 == cgPoint(-2, 0, 0, 0) && chain.back().p1 == cgPoint(12, 0, 0, 0));
    EXPECT_EQ(chain[2].p1, chain[3].p0);
    plx::append_pieces(cgSegment(0, 0, 0, 10, 0, 0), 3.0, pieces);
    for (double step : {1e-12, 0.0, -1.0}) plx::extend_chain(pieces, box, step);
    plx::append_pieces(chain[0], 0.0, pieces);
    ASSERT_EQ(pieces.size(), 5U);
    EXPECT_TRUE(pieces[1].p1 == cgPoint(5, 0, 0, 0) && pieces[3].p1 == cgPoint(10, 0, 0, 0));
}

}  // namespace
