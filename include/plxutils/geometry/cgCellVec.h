#pragma once

#include <cstdint>
#include <vector>

#include "plxutils/export.h"

class cgCell;

/// A set of cells: a growable array of pointers to cells that the set does not own.
///
/// Indices out of range print "[index] index out of bounds." on standard output. The capacity is the size to
/// which the array is logically set; it grows in steps of the grow size (100 at first; at least 1 is used).
class PLX_EXPORT cgCellVec {
public:
    cgCellVec() = default;
    cgCellVec(const cgCellVec& src) = default;
    ~cgCellVec();
    /// Copies nothing: empties this set (unless src is this set) and returns a new empty one.
    cgCellVec operator=(const cgCellVec& src);

    void append(cgCell* c);
    void prepend(cgCell* c);
    /// Cell i; null for a negative i and for an i past the end, which raises the capacity above i.
    cgCell* operator[](int i);
    int size() const { return static_cast<int>(m_array.size()); }
    int capacity() const { return m_capacity; }
    void SetGrowSize(int n) { m_grow_size = n; }
    /// Raises a capacity below n to n plus the grow size.
    void GrowToSize(int n);
    /// Takes cell i out of the set and deletes it, or, when it lives in a field's store, clears its arrays.
    /// Does nothing for other indices. The same cell must not be in another place.
    void RemoveCell(int i);
    /// Empties the set; the cells stay.
    void deleteCells();

private:
    void insert_at(int i, cgCell* c);
    void set_capacity_above(int i);

    std::int32_t m_value = 0;
    [[maybe_unused]] char m_area[512] = {};  // attributes that nothing here reads
    // The cells only: slots from there to the capacity are null and take no memory.
    std::vector<cgCell*> m_array;
    std::int32_t m_capacity = 0;
    std::int32_t m_grow_size = 100;
};
