#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <numeric>
#include <string_view>
#include <utility>
#include <vector>

#include "geometry/merge_sort.h"
#include "geometry/node_dump.h"
#include "geometry/node_merge.h"
#include "geometry/tolerance_band.h"

namespace plx {

namespace {

std::size_t index(int i) { return static_cast<std::size_t>(i); }

/// The nodes while they are merged: a row of coordinates and data values for each, and two marks. Dumps show
/// a node as a point with three more values: its index and the marks.
class DataMerge {
public:
    DataMerge(const cgPointList& nodes, const NodeTolerance& tolerance, const double* data_tolerance);

    void group();
    void number();
    void decide();
    /// Replaces the nodes by those that stay.
    void store(cgPointList& nodes) const;
    std::vector<int> take_groups() { return std::move(first_mark_); }

private:
    const double* row(int node) const { return &rows_[index(node) * width_]; }
    int compare(const double* a, const double* b) const;
    void dump(std::string_view heading) const;

    int data_count_;
    std::size_t width_;
    std::vector<double> half_widths_;  // of a row's coordinates and values
    std::vector<double> rows_;
    std::vector<int> order_;
    std::vector<int> first_mark_;   // own index, then the leader's index, then the group
    std::vector<int> second_mark_;  // 1 unless a duplicate, then the signed group, then 1 for those that stay
};

DataMerge::DataMerge(const cgPointList& nodes, const NodeTolerance& tolerance, const double* data_tolerance)
    : data_count_(nodes[0].num_data()),
      width_(3 + index(data_count_)),
      half_widths_({tolerance.x, tolerance.y, tolerance.z}),
      order_(index(nodes.count())),
      second_mark_(index(nodes.count()), 1) {
    half_widths_.insert(half_widths_.end(), data_tolerance, data_tolerance + data_count_);
    rows_.reserve(order_.size() * width_);
    for (int i = 0; i < nodes.count(); ++i) {
        const cgPoint& p = nodes[i];
        rows_.insert(rows_.end(), {p.x(), p.y(), p.z()});
        for (int k = 0; k < data_count_; ++k) rows_.push_back(p[k]);
    }
    std::iota(order_.begin(), order_.end(), 0);
    first_mark_ = order_;
}

int DataMerge::compare(const double* a, const double* b) const {
    for (std::size_t k = 0; k < width_; ++k) {
        if (const int order = compare_in_band(a[k], b[k], half_widths_[k])) return order;
    }
    return 0;
}

void DataMerge::dump(std::string_view heading) const {
    NodeDump out(heading);
    for (const int node : order_) {
        const double* const p = row(node);
        out.place(p[0], p[1], p[2], data_count_ + 3);
        for (std::size_t k = 3; k < width_; ++k) out.value(p[k]);
        out.last_values(node, first_mark_[index(node)], second_mark_[index(node)]);
    }
}

/// Sorts like nodes next to each other, in input order, and finds the leader of each.
void DataMerge::group() {
    merge_sort(order_, [this](int a, int b) {
        const int order = compare(row(a), row(b));
        return order != 0 ? order : (a > b) - (a < b);
    });
    dump("\n\nAfter do_sort_with_data\n\n");
    int leader = order_.front(), matches = 0;
    for (const int node : order_) {
        if (node != leader && compare(row(leader), row(node)) != 0) leader = node;
        if (node != leader) {
            second_mark_[index(node)] = 0;
            ++matches;
        }
        first_mark_[index(node)] = leader;
    }
    std::printf("Found %d matches! [%d nnodes]\n", matches, static_cast<int>(order_.size()));
    dump("\n\nAfter round 1\n\n");
}

/// Sorts by leader and numbers the groups: duplicates get the negative number.
void DataMerge::number() {
    std::stable_sort(order_.begin(), order_.end(),
                     [this](int a, int b) { return first_mark_[index(a)] < first_mark_[index(b)]; });
    dump("\n\nAfter do_sort_with_data 2\n\n");
    int leader = first_mark_[index(order_.front())], number = 0;
    for (const int node : order_) {
        if (first_mark_[index(node)] != leader) {
            leader = first_mark_[index(node)];
            ++number;
        }
        int& mark = second_mark_[index(node)];
        mark = mark == 0 ? -number : number;
    }
    dump("\n\nAfter change 2\n\n");
}

/// Marks the nodes that stay and brings all back into input order.
void DataMerge::decide() {
    for (std::size_t i = 0; i < order_.size(); ++i) {
        // Deliberately also true for the duplicates of group 0, whose number has no sign: files that hosts
        // made count on these nodes.
        const bool stays = second_mark_[i] >= 0;
        first_mark_[i] = stays ? second_mark_[i] : -second_mark_[i];
        second_mark_[i] = stays ? 1 : 0;
    }
    dump("\n\nAfter round2\n\n");
    std::iota(order_.begin(), order_.end(), 0);
    dump("After do_sort_by_data\n\n");
}

void DataMerge::store(cgPointList& nodes) const {
    nodes.clear();
    cgPoint kept;
    for (const int node : order_) {
        if (second_mark_[index(node)] == 0) continue;
        const double* const p = row(node);
        kept.SetPoint(p[0], p[1], p[2], data_count_, p + 3);
        nodes.append(kept);
    }
}

}  // namespace

std::vector<int> merge_nodes_with_data(cgPointList& nodes, const NodeTolerance& tolerance,
                                       const double* data_tolerance) {
    DataMerge merge(nodes, tolerance, data_tolerance);
    merge.group();
    merge.number();
    merge.decide();
    merge.store(nodes);
    return merge.take_groups();
}

}  // namespace plx
