#include "plxutils/geometry/cgCell.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstring>
#include <deque>
#include <memory>
#include <mutex>
#include <new>

#include "geometry/cell_shapes.h"
#include "plxutils/core/MemoryAllocator.h"

namespace {

constexpr int kMostValues = INT_MAX / static_cast<int>(sizeof(float));

int shape_code(CellType type) {
    switch (type) {
        case Point:
            return 1;
        case Line:
            return 2;
        case Tri:
            return 4;
        case Quad:
            return 5;
        case Tet:
            return 6;
        case Prism:
            return 8;
        case Pyr:
            return 9;
        case Hex:
            return 7;
    }
    return 0;
}

/// Zeros that stay for the life of the process: cells do not own their data, and copies share it.
float* lasting_floats(int n) {
    // Never destroyed: cells of the host may go later than the library's own variables.
    static auto& guard = *new std::mutex;
    static auto& kept = *new std::deque<std::unique_ptr<float[]>>;
    try {
        auto values = std::make_unique<float[]>(static_cast<std::size_t>(n));
        const std::lock_guard<std::mutex> lock(guard);
        kept.push_back(std::move(values));
        return kept.back().get();
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

}  // namespace

cgCell::cgCell(MemoryAllocator* source, CellType cell_type, int n, const float* values) {
    initialize(source, cell_type, n, values);
}

cgCell::cgCell(const cgCell& src) { *this = src; }

cgCell& cgCell::operator=(const cgCell& src) {
    if (this == &src) return *this;
    faceConnectOrder = src.faceConnectOrder;
    nodesInFace = src.nodesInFace;
    type = src.type;
    m_connect = src.m_connect;
    nData = src.nData;
    m_data = src.m_data;
    allocator = src.allocator;
    return *this;
}

cgCell::~cgCell() {
    m_connect = nullptr;
    m_data = nullptr;
}

void cgCell::initialize(MemoryAllocator* source, CellType cell_type, int n, const float* values) {
    allocator = source;
    if (n > 0) m_data = allocateMemory(n, values);
    nData = m_data ? n : 0;
    type = shape_code(cell_type);
    const plx::CellShape& shape = plx::cell_shape(type);
    faceConnectOrder = shape.face_order;
    nodesInFace = shape.nodes_in_face;
    m_connect = allocateConnect(shape.nodes);
}

float* cgCell::allocateMemory(int n, const float* src) {
    if (!allocator || n < 1 || n > kMostValues) return nullptr;
    const int bytes = n * static_cast<int>(sizeof(float));
    auto* values = static_cast<float*>(allocator->Allocate(bytes));
    if (values && src) std::memcpy(values, src, static_cast<std::size_t>(bytes));
    return values;
}

int* cgCell::allocateConnect(int n) {
    if (!allocator || n < 1) return nullptr;
    return static_cast<int*>(allocator->Allocate(n * static_cast<int>(sizeof(int))));
}

int cgCell::nodesPerCell() const { return plx::cell_shape(type).nodes; }

int cgCell::facesPerCell() const { return plx::cell_shape(type).faces; }

int cgCell::ndim() const { return plx::cell_shape(type).dimensions; }

int cgCell::getNumNodesInFace(int face) const {
    return nodesInFace && face >= 0 && face < facesPerCell() ? nodesInFace[face] : 0;
}

int* cgCell::getFaceConnectOrder(int face) const {
    return faceConnectOrder && face >= 0 && face < facesPerCell() ? faceConnectOrder + 4 * face : nullptr;
}

void cgCell::setNData(int n) {
    if (n < 1 || n > kMostValues) {
        m_data = nullptr;
    } else {
        m_data = allocator ? allocateMemory(n, nullptr) : lasting_floats(n);
    }
    nData = m_data ? n : 0;
}
