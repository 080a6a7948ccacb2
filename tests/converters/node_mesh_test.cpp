#include "converters/node_mesh.h"

#include <gtest/gtest.h>

#include <random>

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
        std::vector<double> delr(5), delc(4);
        for (double& w : delr) w = width(random);
        for (double& w : delc) w = width(random);
        geometry.column_edges = running_sums(delr);
        geometry.row_edges = row_edges(delc, true, true);
        for (int k = 0; k < 2; ++k) {
            std::vector<double> top(20), bottom(20);
            for (double& z : top) z = 30.0 - 10.0 * k + width(random);
            for (double& z : bottom) z = 20.0 - 10.0 * k + width(random);
            geometry.tops.push_back(std::make_shared<const std::vector<double>>(top));
            geometry.bottoms.push_back(std::make_shared<const std::vector<double>>(bottom));
        }
        flags.resize(size);
        for (std::size_t cell = 0; cell < size.cells(); ++cell) {
            flags.set(cell, random() % 3 == 0 ? 0 : 1, true, false);
        }
    }

    double centre(const std::vector<double>& edges, int i) const {
        return (edges[static_cast<std::size_t>(i)] + edges[static_cast<std::size_t>(i) + 1]) * 0.5;
    }
    /// The library's own interpolator with the cell's number as value, or no value where a cell takes no
    /// part.
    VXInterpolateGrid interpolator(bool in_space, bool active_only) const {
        VXInterpolateGrid grid(size.rows, size.columns, size.layers, false);
        for (int k = 0; k < size.layers; ++k) {
            for (int i = 0; i < size.rows; ++i) {
                for (int j = 0; j < size.columns; ++j) {
                    const auto cell = static_cast<std::size_t>(i * size.columns + j);
                    const auto layer = static_cast<std::size_t>(k);
                    const bool taken = !active_only || flags.active(layer * size.per_layer() + cell);
                    const double z =
                        in_space ? ((*geometry.tops[layer])[cell] + (*geometry.bottoms[layer])[cell]) * 0.5
                                 : 0.0;
                    grid.set_point(taken ? static_cast<double>(cell) : -1.0, i, j, k,
                                   centre(geometry.column_edges, j), centre(geometry.row_edges, i), z);
                }
            }
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
        for (int k = 0; k < 2; ++k) {
            for (int plane = 0; plane < 2; ++plane) {
                std::vector<double> z;
                mesh.elevations(k, plane, z);
                std::size_t place = 0;
                const auto layer = static_cast<std::size_t>(k);
                const auto& surface =
                    plane == 0 ? *model.geometry.tops[layer] : *model.geometry.bottoms[layer];
                mesh.each_node(k, [&](int r, int c) {
                    const double x = model.geometry.column_edges[static_cast<std::size_t>(c)];
                    const double y = model.geometry.row_edges[static_cast<std::size_t>(r)];
                    cgPointList around;
                    in_plane.project_point(r, c, k, x, y, 0.0, around);
                    double expected = 0.0;
                    for (int i = 0; i < around.count(); ++i) {
                        expected += around[i][2] * surface[static_cast<std::size_t>(around[i][1])];
                    }
                    EXPECT_EQ(z[place], expected);
                    in_space.project_point(r, c, k, x, y, z[place], around);
                    int taken = 0;
                    for (int m = 0; m < 4; ++m) {
                        const double weight = mesh.weights(node)[static_cast<std::size_t>(m)];
                        if (weight == 0.0) continue;
                        EXPECT_EQ(around[taken][1], mesh.cell_around(r, c, m));
                        EXPECT_EQ(around[taken++][2], weight);
                    }
                    EXPECT_EQ(taken, around.count());
                    EXPECT_EQ(mesh.number(k, plane, r, c), node++);
                    ++place;
                });
            }
        }
        EXPECT_EQ(node, mesh.nodes());
        EXPECT_EQ(mesh.left_out_inactive(), active_only);
    }
}

TEST(NodeMesh, CellsWithoutExtentShareTheWeight) {
    const GridSize size{1, 1, 2};
    GridGeometry geometry;
    geometry.column_edges = {0.0, 0.0, 0.0};
    geometry.row_edges = {0.0, 0.0};
    geometry.tops =
        geometry.bottoms = {std::make_shared<const std::vector<double>>(std::vector<double>{4.0, 6.0})};
    CellFlags flags;
    flags.resize(size);
    for (const std::size_t cell : {0U, 1U}) flags.set(cell, 1, true, false);
    std::vector<double> z;
    NodeMesh(size, geometry, flags, false).elevations(0, 0, z);
    EXPECT_EQ(z, (std::vector<double>{4.0, 5.0, 6.0, 4.0, 5.0, 6.0}));
}

}  // namespace plx
