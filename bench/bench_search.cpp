// Searches in a point tree and the filling of a point list, each beside something plain to compare with.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <memory>
#include <string_view>
#include <vector>

#include "kd_tree.h"
#include "plxutils/geometry/cgPoint.h"
#include "plxutils/geometry/cgPointList.h"
#include "plxutils/geometry/cgPointTree.h"
#include "random_points.h"

namespace {

using namespace bench;

std::size_t point_count = 1000000;

const std::vector<Place>& places() {
    static const std::vector<Place> all = random_places(point_count, 1);
    return all;
}

const std::vector<Place>& queries() {
    static const std::vector<Place> all = random_places(4096, 2);
    return all;
}

cgPointTree& tree(int depth) {
    static std::unique_ptr<cgPointTree> trees[8];
    auto& made = trees[depth];
    if (!made) {
        made = std::make_unique<cgPointTree>(depth, cgPoint(0, 0, 0, 0), cgPoint(1, 1, 1, 0));
        for (const Place& p : places()) made->AddPoint(cgPoint(p[0], p[1], p[2], 0));
    }
    return *made;
}

/// The marks of a complete tree, cleared as a search that keeps them in its nodes has to.
struct MarkedNode {
    std::unique_ptr<MarkedNode> children[8];
    double box[6] = {};
    int mark = 0;

    explicit MarkedNode(int depth) {
        if (depth == 0) return;
        for (auto& child : children) child = std::make_unique<MarkedNode>(depth - 1);
    }
    void clear() {
        mark = 0;
        if (!children[0]) return;
        for (auto& child : children) child->clear();
    }
};

double nearest_distance(const Place& p) {
    static cgPoint nearest;
    double distance = 0.0;
    tree(6).FindClosestPoint(cgPoint(p[0], p[1], p[2], 0), nearest, distance);
    return distance;
}

void nearest_library(benchmark::State& state) {
    nearest_distance(queries().front());
    std::size_t i = 0;
    for (auto _ : state) benchmark::DoNotOptimize(nearest_distance(queries()[i++ % queries().size()]));
}
BENCHMARK(nearest_library);

void nearest_walk(benchmark::State& state) {
    nearest_distance(queries().front());
    MarkedNode marks(6);
    std::size_t i = 0;
    for (auto _ : state) {
        marks.clear();
        benchmark::ClobberMemory();
        benchmark::DoNotOptimize(nearest_distance(queries()[i++ % queries().size()]));
    }
}
BENCHMARK(nearest_walk);

/// Tells how many points a query found, too: both trees have to agree.
template <class Query>
void search_range(benchmark::State& state, const Query& query) {
    std::size_t found = 0;
    for (const Place& p : queries()) found += query(p);
    state.counters["found"] = static_cast<double>(found);
    std::size_t i = 0;
    for (auto _ : state) benchmark::DoNotOptimize(query(queries()[i++ % queries().size()]));
}

void range_library(benchmark::State& state) {
    cgPointList found;
    const double radius = radius_of_ten(places().size());
    search_range(state, [&](const Place& p) {
        const cgPoint at(p[0], p[1], p[2], 0);
        return static_cast<std::size_t>(tree(5).FindPointsWithinDistance(at, radius, false, found, false));
    });
}
BENCHMARK(range_library);

void range_kd_tree(benchmark::State& state) {
    const KdTree plain(places());
    std::vector<KdTree::Found> found;
    const double radius = radius_of_ten(places().size());
    search_range(state, [&](const Place& p) {
        plain.within(p, radius, found);
        return found.size();
    });
}
BENCHMARK(range_kd_tree);

/// What appends a point of its own to a list, from empty to all points.
template <class List, class Append>
void fill(benchmark::State& state, const Append& append) {
    for (auto _ : state) {
        List list;
        for (std::size_t i = 0; i < point_count; ++i) append(list, cgPoint(static_cast<double>(i), 0, 0, 0));
        benchmark::DoNotOptimize(list);
    }
}
void fill_library(benchmark::State& state) {
    fill<cgPointList>(state, [](auto& list, const cgPoint& p) { list.append(p); });
}
/// Final, so that a vector may destroy it.
struct PlainPoint final : cgPoint {
    explicit PlainPoint(const cgPoint& p) : cgPoint(p) {}
};
void fill_vector(benchmark::State& state) {
    fill<std::vector<PlainPoint>>(state, [](auto& list, const cgPoint& p) { list.emplace_back(p); });
}
BENCHMARK(fill_library);
BENCHMARK(fill_vector);

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (argc == 3 && std::string_view(argv[1]) == "--points")
        point_count = std::strtoul(argv[2], nullptr, 10);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
