// One thing at a time with many points, for a process whose seconds and peak memory are measured from
// outside.

#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "plxutils/geometry/cgField.h"
#include "plxutils/geometry/cgPoint.h"
#include "plxutils/geometry/cgPointTree.h"
#include "random_points.h"

namespace {

/// Each place is there twice, as where blocks touch, and far from the other one in the list.
void add_nodes(cgField& field, std::size_t count) {
    for (const unsigned half : {1u, 1u}) {
        for (const bench::Place& p : bench::random_places(count / 2, half)) {
            field.AddPoint(cgPoint(p[0], p[1], p[2], 0));
        }
    }
}

bool merge(std::size_t count) {
    cgField field;
    add_nodes(field, count);
    field.RemoveDuplicateNodes(1e-12, 1e-12, 1e-12);
    return static_cast<std::size_t>(field.nnodes()) == count / 2;
}

void build_tree(std::size_t count) {
    cgPointTree tree(6, cgPoint(0, 0, 0, 0), cgPoint(1, 1, 1, 0));
    std::mt19937 random(1);
    for (std::size_t i = 0; i < count; ++i) {
        const double x = bench::unit(random), y = bench::unit(random);
        tree.AddPoint(cgPoint(x, y, bench::unit(random), 0));
    }
}

}  // namespace

int main(int argc, char** argv) {
    const std::string_view mode = argc == 3 ? argv[1] : "";
    const std::size_t count = argc == 3 ? std::strtoul(argv[2], nullptr, 10) : 0;
    if (mode == "tree") {
        build_tree(count);
    } else if (mode == "nodes") {
        cgField field;
        add_nodes(field, count);
    } else if (mode == "merge") {
        if (!merge(count)) {
            std::fputs("bench_points: not half of the nodes are left\n", stderr);
            return 1;
        }
    } else {
        std::fputs("usage: bench_points tree|nodes|merge COUNT\n", stderr);
        return 2;
    }
    return 0;
}
