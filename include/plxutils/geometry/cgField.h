#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <vector>

#include "plxutils/core/MemoryAllocator.h"
#include "plxutils/export.h"
#include "plxutils/geometry/cgCell.h"
#include "plxutils/geometry/cgCellVec.h"
#include "plxutils/geometry/cgDataDef.h"
#include "plxutils/geometry/cgPointList.h"

/// An unstructured grid: nodes, sets of cells, and definitions of the data of nodes and cells.
///
/// Cells made by createCell(), their node indices and their data live as long as the field.
class PLX_EXPORT cgField {
public:
    /// Most cell sets and most definitions of either kind; larger counts are refused with a message, so that
    /// a wrong number cannot exhaust the memory.
    static constexpr int kMaxCellSets = 1000000;
    static constexpr int kMaxDataDefs = 100000;

    std::int32_t numCellSets = 0;
    char attributes[1024] = {};
    std::int32_t numNodeData = 0;
    std::vector<cgDataDef> nodeDataDefs;
    std::vector<cgDataDef> cellDataDefs;
    cgPointList nodes;
    /// A deque, because its growth neither moves nor assigns a set.
    std::deque<cgCellVec> cellSets;
    /// For hosts; nothing here uses it.
    cgCellVec spareSet;
    /// The pool that createCell() takes arrays from; belongs to the field.
    MemoryAllocator* allocator;
    std::int32_t numCellData = 0;

    cgField();
    cgField(const cgField&) = delete;
    cgField& operator=(const cgField&) = delete;
    ~cgField();

    /// A new cell, in no set yet. The field owns it: do not delete it.
    cgCell* createCell(CellType type, int nData, const float* data);
    int nnodes() const { return nodes.count(); }
    void AddPoint(const cgPoint& p) { nodes.append(p); }
    /// Drops the last sets or adds empty ones; n below 0 counts as 0.
    void SetNumCellSets(int n);
    /// Set the count to n (0 for n below 0) and add default definitions until there are n; none is removed.
    void SetNumNodeData(int n);
    void SetNumCellData(int n);
    /// Appends c to a set, which is created, with those before it, when it does not exist. A negative set
    /// prints "[set] index out of bounds." on standard output.
    void AddCell(int set, cgCell* c);

    /// Merges nodes whose coordinates agree within half-widths, and renumbers the node indices of all cells.
    ///
    /// The nodes are walked in the order of x, then y, then z; each is compared with the first of its group.
    /// The groups are numbered in that order. Of a group the coordinates of the last node in input order
    /// stay; node data is dropped. Indices of cells that name no node stay as they are. A cell that is in the
    /// sets twice, and index arrays shared by copies of a cell, are renumbered as often as they are met.
    void RemoveDuplicateNodes(double tolX, double tolY, double tolZ);
    /// As above for nodes whose data agrees too; they keep their data, and their input order.
    ///
    /// Every node has the data count of the first one (missing values are 0.0). The first node of a group in
    /// sorted order stays. The nodes of the first group (the one whose staying node comes first in input
    /// order) all stay, although cells use one number for them. The intermediate states are printed on
    /// standard output.
    ///
    /// @param dataTol  half-widths, one per data value; null calls the other overload
    void RemoveDuplicateNodes(double tolX, double tolY, double tolZ, double* dataTol);

private:
    void renumber_cells(const std::vector<int>& map);

    std::unique_ptr<MemoryAllocator> m_pool;
    std::deque<cgCell> m_cells;
};

/// A new cell of the field from a shape code as cgCell::cellType() gives it; 3 is a second code of lines.
/// Null for any other code.
PLX_EXPORT cgCell* CreateCellFromType(cgField& field, int code, int nData, const float* data);
