#pragma once

#include <cstdint>

#include "plxutils/export.h"
#include "plxutils/geometry/ElementArray.h"
#include "plxutils/geometry/cgList.h"
#include "plxutils/geometry/cgPoint.h"

/// Growable list of points.
///
/// The list has an array of slots, a capacity (the size to which it last set the array; inserts make the
/// array larger) and a count of points in use. Slots from the count on are default points. The capacity grows
/// in steps of grow_size (100 at first; at least 1 is used); memory behind it grows geometrically.
/// Only the index errors named below throw, std::invalid_argument.
class PLX_EXPORT cgPointList : public cgList {
public:
    cgPointList() = default;
    cgPointList(const cgPointList& src) = default;
    cgPointList& operator=(const cgPointList& src);
    ~cgPointList() = default;

    /// Slot i; grows capacity and count to include it. Throws for a negative i and for the largest int.
    /// References stay valid until the list grows: copy a point before assigning it to a slot that may not
    /// exist yet.
    cgPoint& operator[](int i);
    /// Slot i without growth; throws outside the array.
    const cgPoint& operator[](int i) const;
    /// Makes room for n points; count is unchanged and nothing shrinks.
    void resize(int n);
    void append(const cgPoint& p);
    void append(const cgElement& e) override;
    /// Inserts n copies of p before slot `index`; does nothing for n below 1. Throws, before any change, when
    /// the index lies outside the array or the list would become too long. An index past the count still
    /// raises the count by n.
    void insert(int index, cgPoint p, int n);
    void prepend(const cgPoint& p);
    void prepend(const cgElement& e) override;
    /// True when the array has no slot: a list that was only resized is not empty although its count is 0.
    bool empty() const { return m_slots < 1; }
    void clear();
    /// Box of the points in use; the zero box when there are none.
    cgBox GetExtents() const override;
    /// Becomes a copy of src's points, with capacity src.capacity() + grow_size().
    void CopyFromList(cgPointList& src);
    /// Appends every point, moved by v, to out (which may be this list).
    void ProjectToList(const cgVector& v, cgPointList& out) const;
    int& grow_size() { return m_grow_size; }
    int count() const { return m_count; }
    int capacity() const { return m_capacity; }

    /// Stable sorts of the points in use; any comparison is safe, also an inconsistent one.
    void do_sort(int (*cmp)(const cgPoint*, const cgPoint*));
    /// By coordinates: x, then y, then z.
    static int Compare(const cgPoint* a, const cgPoint* b);
    /// By the values first to last (inclusive). Like do_sort_with_data this keeps its parameters in
    /// process-wide variables; two such sorts must not run at the same time.
    void do_sort_by_data(int first, int last);
    static int CompareByData(const cgPoint* a, const cgPoint* b);
    /// By cgPoint::ptCompareWithData.
    void do_sort_with_data(int first, int last, double tolX, double tolY, double tolZ, double* dataTol);
    static int CompareWithData(const cgPoint* a, const cgPoint* b);

private:
    std::int64_t step_over(std::int64_t size) const;
    void set_capacity(std::int64_t capacity);
    void set_slots(std::int64_t slots);

    // Holds the first slots only: at least m_count of the m_slots. The others are default points and are made
    // when somebody reaches for them, so that clearing and refilling a short list stays cheap.
    plx::ElementArray<cgPoint> m_array;
    std::int64_t m_slots = 0;
    int m_capacity = 0;
    int m_grow_size = 100;
    int m_count = 0;
};
