#include "plxutils/geometry/cgField.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>

#include "geometry/node_merge.h"

namespace {

/// False, with the message, for a count above the bound.
bool within(int n, int most) {
    if (n <= most) return true;
    std::printf("[%d] index out of bounds.\n", n);
    return false;
}

/// Makes room for n definitions; negative counts are 0.
void set_definitions(std::vector<cgDataDef>& definitions, std::int32_t& count, int n) {
    if (!within(n, cgField::kMaxDataDefs)) return;
    count = std::max(n, 0);
    const auto wanted = static_cast<std::size_t>(count);
    if (definitions.size() < wanted) definitions.resize(wanted);
}

}  // namespace

cgField::cgField() : m_pool(std::make_unique<MemoryAllocator>(0)) { allocator = m_pool.get(); }

cgField::~cgField() = default;

cgCell* cgField::createCell(CellType type, int nData, const float* data) {
    cgCell& cell = m_cells.emplace_back(allocator, type, nData, data);
    cell.m_stored = 1;
    return &cell;
}

void cgField::SetNumCellSets(int n) {
    if (!within(n, kMaxCellSets)) return;
    numCellSets = std::max(n, 0);
    cellSets.resize(static_cast<std::size_t>(numCellSets));
}

void cgField::SetNumNodeData(int n) { set_definitions(nodeDataDefs, numNodeData, n); }

void cgField::SetNumCellData(int n) { set_definitions(cellDataDefs, numCellData, n); }

void cgField::AddCell(int set, cgCell* c) {
    if (set < 0 || set >= kMaxCellSets) {
        std::printf("[%d] index out of bounds.\n", set);
        return;
    }
    const auto at = static_cast<std::size_t>(set);
    if (set >= numCellSets || at >= cellSets.size())
        SetNumCellSets(std::max(set + 1, std::min<int>(numCellSets, kMaxCellSets)));
    cellSets[at].append(c);
}

void cgField::RemoveDuplicateNodes(double tolX, double tolY, double tolZ) {
    if (nnodes() > 0) renumber_cells(plx::merge_nodes(nodes, {tolX, tolY, tolZ}));
}

void cgField::RemoveDuplicateNodes(double tolX, double tolY, double tolZ, double* dataTol) {
    if (!dataTol) {
        RemoveDuplicateNodes(tolX, tolY, tolZ);
    } else if (nnodes() > 0) {
        renumber_cells(plx::merge_nodes_with_data(nodes, {tolX, tolY, tolZ}, dataTol));
    }
}

void cgField::renumber_cells(const std::vector<int>& map) {
    for (cgCellVec& set : cellSets) {
        for (int i = 0; i < set.size(); ++i) {
            cgCell* const cell = set[i];
            int* const connect = cell ? cell->connect() : nullptr;
            if (!connect) continue;
            for (int k = 0; k < cell->nodesPerCell(); ++k) {
                const auto node = static_cast<std::size_t>(connect[k]);
                if (connect[k] >= 0 && node < map.size()) connect[k] = map[node];
            }
        }
    }
}

cgCell* CreateCellFromType(cgField& field, int code, int nData, const float* data) {
    static constexpr CellType kTypes[] = {Point, Line, Line, Tri, Quad, Tet, Hex, Prism, Pyr};
    return code >= 1 && code <= 9 ? field.createCell(kTypes[code - 1], nData, data) : nullptr;
}
