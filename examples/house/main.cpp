// A small house of five cells in a cgField. Each cell brings its own nodes; RemoveDuplicateNodes joins those
// that lie in the same place, so that the cells share corners, and FieldFile writes the mesh.

#include <array>
#include <cstdio>
#include <vector>

#include "plxutils/converters/FieldFile.h"
#include "plxutils/geometry/cgCell.h"
#include "plxutils/geometry/cgCellVec.h"
#include "plxutils/geometry/cgField.h"
#include "plxutils/geometry/cgPoint.h"

namespace {

using Corner = std::array<double, 3>;

/// A field file lists its cells by type, so each type is a cell set of its own.
enum CellSetIndex { kRooms, kRoofs, kLeanTo, kSets };
constexpr struct {
    const char *name, *type;
} kSetNames[kSets] = {{"Rooms", "Hex"}, {"Roofs", "Pyr"}, {"Lean_to", "Prism"}};

/// m. Roofs were measured from above and stand 0.4 mm too high. Nodes join only when nothing lies between
/// them in the order of x, then y, then z: what differs should differ in z, or be rounded before.
constexpr double kWall = 6.0;
constexpr double kEaves = kWall + 0.0004;
constexpr double kTolerance = 0.001;

/// Adds a cell with nodes of its own. The cell belongs to the field, which frees it.
void add_cell(cgField& field, CellSetIndex set, CellType type, float material,
              const std::vector<Corner>& corners) {
    cgCell* cell = field.createCell(type, 1, &material);
    int* node = cell->connect();
    for (const auto& [x, y, z] : corners) {
        *node++ = field.nnodes();
        field.AddPoint(cgPoint(x, y, z, 0));
    }
    field.AddCell(set, cell);
}

/// 10 m wide rooms from x on, with their roofs: a hexahedron, and a pyramid whose apex comes first.
void add_room(cgField& field, double x, float material) {
    const double end = x + 10.0;
    add_cell(field, kRooms, Hex, material,
             {{x, 0, 0},
              {end, 0, 0},
              {end, 8, 0},
              {x, 8, 0},
              {x, 0, kWall},
              {end, 0, kWall},
              {end, 8, kWall},
              {x, 8, kWall}});
    add_cell(field, kRoofs, Pyr, 3.0f,
             {{x + 5, 4, 9}, {x, 0, kEaves}, {end, 0, kEaves}, {end, 8, kEaves}, {x, 8, kEaves}});
}

void build(cgField& field) {
    field.SetNumCellSets(kSets);
    add_room(field, 0.0, 1.0f);
    add_room(field, 10.0, 2.0f);
    // Against the wall at x = 20: a triangle at each end.
    add_cell(field, kLeanTo, Prism, 4.0f,
             {{20, 0, 0}, {23, 0, 0}, {20, 0, kWall}, {20, 8, 0}, {23, 8, 0}, {20, 8, kWall}});
}

template <class Visit>
void for_each_cell(cgField& field, const Visit& visit) {
    for (cgCellVec& set : field.cellSets) {
        for (int i = 0; i < set.size(); ++i) visit(*set[i]);
    }
}

bool write(cgField& field, const char* name) {
    plx::FieldHeader header;
    header.comment = "A house of five cells";
    header.nodes = field.nnodes();
    for (int i = 0; i < kSets; ++i) {
        const int cells = field.cellSets[static_cast<std::size_t>(i)].size();
        header.cell_sets.push_back({kSetNames[i].name, cells, kSetNames[i].type});
    }
    header.cell_data = {{"MATERIAL", "Linear_", plx::kInFileBare}};

    plx::FieldFile file;
    if (!file.open(name, false)) return false;
    file.begin_nodes(header);
    for (int i = 0; i < field.nnodes(); ++i) {
        const cgPoint& node = field.nodes[i];
        file.value(node.x());
        file.value(node.y());
        file.value(node.z());
        file.end_line();
    }
    // Without node data these two write nothing; they keep their place for the day when there are some.
    file.node_data_definitions();
    file.begin_node_data();
    file.begin_cells();
    for_each_cell(field, [&](cgCell& cell) {
        for (int i = 0; i < cell.nodesPerCell(); ++i) file.integer(cell.connect()[i]);
        file.end_line();
    });
    file.begin_cell_data();
    for_each_cell(field, [&](cgCell& cell) {
        file.integer(static_cast<int>(cell.data()[0]));
        file.end_line();
    });
    return file.close();
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: build_house FIELD.pff\n", stderr);
        return 2;
    }
    cgField field;
    build(field);
    const int before = field.nnodes();
    field.RemoveDuplicateNodes(kTolerance, kTolerance, kTolerance);
    if (!write(field, argv[1])) {
        std::fprintf(stderr, "%s: cannot be written\n", argv[1]);
        return 1;
    }
    std::printf("%d nodes, %d after joining\n", before, field.nnodes());
    return 0;
}
