#pragma once

#include <cstdint>

#include "plxutils/export.h"

class MemoryAllocator;

/// Shape of a new cell. Any other value makes a cell without shape. The names are global: include this header
/// after those that have a Point or Line of their own.
enum CellType : int { Point = 1, Line = 2, Tri = 3, Quad = 4, Tet = 5, Prism = 6, Pyr = 7, Hex = 8 };

/// One cell of a field: a shape, the indices of its nodes and its data values.
///
/// A cell does not own the arrays of indices and values: they come from an allocator, which frees them all at
/// once, and copies of the cell share them.
///
/// In a prism the nodes 0 to 2 and 3 to 5 are the two triangles; in a pyramid node 0 is the apex and 1 to 4
/// are the base.
class PLX_EXPORT cgCell {
public:
    /// @param allocator  source of the arrays; null leaves the cell without them
    /// @param nData      number of data values; below 0 counts as 0
    /// @param data       the values to copy; null means zeros
    cgCell(MemoryAllocator* allocator, CellType type, int nData, const float* data);
    cgCell(const cgCell& src);
    cgCell& operator=(const cgCell& src);
    ~cgCell();

    /// Nodes, faces and dimensions of the shape; 0 without shape.
    int nodesPerCell() const;
    int facesPerCell() const;
    int ndim() const;
    /// 0 for a face that the cell does not have.
    int getNumNodesInFace(int face) const;
    /// Positions in connect() of the nodes of a face: four, filled up with -1; null for a face that the cell
    /// does not have. All cells of a shape share them.
    int* getFaceConnectOrder(int face) const;
    /// The shape code, which is not the CellType: 1 point, 2 line, 4 triangle, 5 quadrilateral, 6
    /// tetrahedron, 7 hexahedron, 8 prism, 9 pyramid, 0 without shape.
    int cellType() const { return type; }
    /// nodesPerCell() indices of nodes, for the caller to fill; null when there is no memory for them.
    int* connect() { return m_connect; }
    const int* connect() const { return m_connect; }
    /// getNData() values; null when there are none.
    float* data() { return m_data; }
    const float* data() const { return m_data; }
    int getNData() const { return nData; }
    /// n new values of 0.0 in place of the old ones, whose memory stays with the allocator.
    void setNData(int n);

private:
    friend class cgCellVec;
    friend class cgField;

    void initialize(MemoryAllocator* allocator, CellType type, int nData, const float* data);
    float* allocateMemory(int n, const float* src);
    int* allocateConnect(int n);

    int* faceConnectOrder = nullptr;
    int* nodesInFace = nullptr;
    std::int32_t type = 0;
    int* m_connect = nullptr;
    std::int32_t nData = 0;
    float* m_data = nullptr;
    MemoryAllocator* allocator = nullptr;
    // 1 for a cell that lives in a field's store: it is never deleted by itself. Copies do not.
    std::int32_t m_stored = 0;
};
