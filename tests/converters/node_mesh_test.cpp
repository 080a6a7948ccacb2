#include "converters/node_mesh.h"

#include <gtest/gtest.h>

#include <random>

#include "converters/small_grid.h"
#include "plxutils/geometry/cgPointList.h"
#include "plxutils/interpolate/VXInterpolateGrid.h"

namespace plx {
namespace {

/// A grid with uneven widths, wavy surfaces and about a third of its cells inactive.
struct RandomModel {
    GridSize size{2, 4, 5};
    GridGeometry geometry;
    CellFlags flags;

    explicit RandomModel(unsigned seed) {
        std::mt19937 random(seed);
        std::uniform_real_distribution<double> width(1.0, 9.0);
        const auto widths = [&](std::size_t n, double base) {
            std::vector<double> values(n);
            for (double& v : values) v = base + width(random);
            return values;
        };
        geometry.column_edges = running_sums(widths(5, 0.0));
        geometry.row_edges = row_edges(widths(4, 0.0), true, true);
        for (const double base : {20.0, 10.0}) {
            geometry.tops.push_back(std::make_shared<const std::vector<double>>(widths(20, base + 10.0)));
            geometry.bottoms.push_back(std::make_shared<const std::vector<double>>(widths(20, base)));
        }
        flags.resize(size);
        for (std::size_t cell = 0; cell < size.cells(); ++cell)
            flags.set(cell, random() % 3 == 0 ? 0 : 1, true, false);
    }

    bool beside_active(const NodeMesh& mesh, int k, int r, int c) const {
        const auto active = [&](int m) {
            const int cell = mesh.cell_around(r, c, m);
            return cell >= 0 && flags.active(static_cast<std::size_t>(20 * k + cell));
        };
        return active(0) || active(1) || active(2) || active(3);
    }
    /// The library's own interpolator with the cell's number as value, or no value where a cell takes no
    /// part.
    VXInterpolateGrid interpolator(bool in_space, bool active_only) const {
        VXInterpolateGrid grid(size.rows, size.columns, size.layers, false);
        const auto middle = [](double a, double b) { return (a + b) * 0.5; };
        const auto &x = geometry.column_edges, &y = geometry.row_edges;
        for (std::size_t n = 0; n < size.cells(); ++n) {
            const std::size_t k = n / 20, cell = n % 20, i = cell / 5, j = cell % 5;
            const double z = middle((*geometry.tops[k])[cell], (*geometry.bottoms[k])[cell]);
            grid.set_point(!active_only || flags.active(n) ? static_cast<double>(cell) : -1.0,
                           static_cast<int>(i), static_cast<int>(j), static_cast<int>(k),
                           middle(x[j], x[j + 1]), middle(y[i], y[i + 1]), in_space ? z : 0.0);
        }
        return grid;
    }
};

}  // namespace

TEST(NodeMesh, WeightsAndElevationsAreThoseOfTheGriddedInterpolation) {
    for (const bool active_only : {false, true}) {
        const RandomModel model(7);
        NodeMesh mesh(model.size, model.geometry, model.flags, active_only);
        mesh.build_weights();
        VXInterpolateGrid in_plane = model.interpolator(false, active_only);
        VXInterpolateGrid in_space = model.interpolator(true, active_only);
        int node = 0;
        for (const auto& [k, plane] : {std::pair(0, 0), {0, 1}, {1, 0}, {1, 1}}) {
            std::vector<double> z;
            mesh.elevations(k, plane, z);
            const auto& surfaces = plane == 0 ? model.geometry.tops : model.geometry.bottoms;
            const std::vector<double>& surface = *surfaces[static_cast<std::size_t>(k)];
            std::size_t place = 0;
            for (int n = 0; n < 30; ++n) {
                const int r = n / 6, c = n % 6;
                if (!model.beside_active(mesh, k, r, c)) continue;
                EXPECT_EQ(mesh.number(k, plane, r, c), node);
                const double x = model.geometry.column_edges[static_cast<std::size_t>(c)];
                const double y = model.geometry.row_edges[static_cast<std::size_t>(r)];
                cgPointList around;
                in_plane.project_point(r, c, k, x, y, 0.0, around);
                double expected = 0.0;
                for (int i = 0; i < around.count(); ++i)
                    expected += around[i][2] * surface[static_cast<std::size_t>(around[i][1])];
                ASSERT_EQ(z.at(place), expected);
                in_space.project_point(r, c, k, x, y, z[place++], around);
                int taken = 0;
                for (int m = 0; m < 4; ++m) {
                    const double weight = mesh.weights(node)[static_cast<std::size_t>(m)];
                    if (weight == 0.0) continue;
                    EXPECT_EQ(around[taken][1], mesh.cell_around(r, c, m));
                    EXPECT_EQ(around[taken++][2], weight);
                }
                EXPECT_EQ(taken, around.count());
                ++node;
            }
        }
        EXPECT_EQ(node, mesh.nodes());
        EXPECT_EQ(mesh.left_out_inactive(), active_only);
    }
}

TEST(NodeMesh, CellsWithoutExtentShareTheWeight) {
    const test::GridModel grid({1, 1, 2});
    GridGeometry& geometry = grid.model.geometry;
    geometry.column_edges = {0.0, 0.0, 0.0};
    geometry.row_edges = {0.0, 0.0};
    geometry.tops = {std::make_shared<const std::vector<double>>(std::vector<double>{4.0, 6.0})};
    std::vector<double> z;
    NodeMesh(grid.model.size(), grid.model.geometry, grid.model.flags, false).elevations(0, 0, z);
    EXPECT_EQ(z, (std::vector<double>{4.0, 5.0, 6.0, 4.0, 5.0, 6.0}));
}

}  // namespace plx
