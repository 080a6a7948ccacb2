#include "plxutils/geometry/cgCellVec.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstdio>

#include "plxutils/geometry/cgCell.h"

cgCellVec::~cgCellVec() { deleteCells(); }

cgCellVec cgCellVec::operator=(const cgCellVec& src) {
    // Deliberately no copy: hosts rely on an assigned set being empty, since two sets must not share cells.
    if (this != &src) {
        m_value = 0;
        deleteCells();
    }
    return {};
}

void cgCellVec::set_capacity_above(int i) {
    if (m_capacity > i) return;
    const std::int64_t step = std::max(m_grow_size, 1);
    const std::int64_t steps = (std::int64_t{i} - m_capacity) / step + 1;
    m_capacity = static_cast<int>(std::min<std::int64_t>(m_capacity + steps * step, INT_MAX));
}

void cgCellVec::append(cgCell* c) { insert_at(size(), c); }

void cgCellVec::prepend(cgCell* c) { insert_at(0, c); }

void cgCellVec::insert_at(int i, cgCell* c) {
    if (i < 0 || size() == INT_MAX) {
        std::printf("[%d] index out of bounds.\n", i);
        return;
    }
    set_capacity_above(size());
    m_array.insert(m_array.begin() + i, c);
}

cgCell* cgCellVec::operator[](int i) {
    if (i < 0) {
        std::printf("[%d] index out of bounds.\n", i);
        return nullptr;
    }
    set_capacity_above(i);
    return i < size() ? m_array[static_cast<std::size_t>(i)] : nullptr;
}

void cgCellVec::GrowToSize(int n) {
    if (m_capacity >= n) return;
    m_capacity =
        static_cast<int>(std::min(std::int64_t{n} + std::max(m_grow_size, 0), std::int64_t{INT_MAX}));
}

void cgCellVec::RemoveCell(int i) {
    if (i < 0 || i >= size()) return;
    if (cgCell* c = m_array[static_cast<std::size_t>(i)]) {
        c->m_connect = nullptr;
        c->m_data = nullptr;
        if (!c->m_stored) delete c;
    }
    m_array.erase(m_array.begin() + i);
    --m_capacity;
}

void cgCellVec::deleteCells() { m_array.clear(); }
