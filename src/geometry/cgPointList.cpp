#include "plxutils/geometry/cgPointList.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <new>
#include <stdexcept>

#include "geometry/merge_sort.h"
#include "geometry/point_copy.h"

namespace {

constexpr int kMostReserved = 1 << 20;

/// What the comparisons of the sorts by and with data work with.
struct SortParameters {
    int first = 0;
    int last = 0;
    double tolX = 0.0;
    double tolY = 0.0;
    double tolZ = 0.0;
    double* dataTol = nullptr;
};

SortParameters& sort_parameters() {
    static SortParameters parameters;
    return parameters;
}

std::size_t index(std::int64_t i) { return static_cast<std::size_t>(i); }

/// Nothing but std::invalid_argument leaves a list, also when memory runs out.
template <class Grow>
void make_room(Grow grow) {
    try {
        grow();
    } catch (const std::bad_alloc&) {
        throw std::invalid_argument("cgPointList: list too long");
    }
}

}  // namespace

cgPointList& cgPointList::operator=(const cgPointList& src) {
    if (this != &src) {
        plx::ElementArray<cgPoint> copy(src.m_array);
        m_array.swap(copy);
        m_slots = src.m_slots;
        m_capacity = src.m_capacity;
        m_grow_size = src.m_grow_size;
        m_count = src.m_count;
    }
    return *this;
}

/// The capacity, or the next one in steps of grow_size that is at least `size`.
std::int64_t cgPointList::step_over(std::int64_t size) const {
    const std::int64_t missing = size - m_capacity;
    if (missing <= 0) return m_capacity;
    const std::int64_t step = std::max(m_grow_size, 1);
    return m_capacity + (missing + step - 1) / step * step;
}

void cgPointList::set_capacity(std::int64_t capacity) {
    m_capacity = static_cast<int>(std::min<std::int64_t>(capacity, INT_MAX));
    set_slots(m_capacity);
}

void cgPointList::set_slots(std::int64_t slots) {
    if (index(slots) < m_array.size()) m_array.resize(index(slots));
    m_slots = slots;
}

cgPoint& cgPointList::operator[](int i) {
    if (i < 0 || i == INT_MAX) throw std::invalid_argument("cgPointList: index out of range");
    if (m_array.size() <= index(i)) make_room([&] { m_array.resize(index(i) + 1); });
    if (m_capacity <= i) set_capacity(step_over(std::int64_t{i} + 1));
    m_count = std::max(m_count, i + 1);
    return m_array[index(i)];
}

const cgPoint& cgPointList::operator[](int i) const {
    static const cgPoint unused;
    if (i < 0 || i >= m_slots) throw std::invalid_argument("cgPointList: index out of range");
    return index(i) < m_array.size() ? m_array[index(i)] : unused;
}

void cgPointList::resize(int n) {
    if (m_capacity >= n) return;
    set_capacity(std::int64_t{n} + std::max(m_grow_size, 0));
    // Only a hint: a host may announce far more points than ever come.
    m_array.reserve(index(std::min(n, kMostReserved)));
}

void cgPointList::append(const cgPoint& p) {
    if (m_count == INT_MAX) throw std::invalid_argument("cgPointList: list too long");
    const std::int64_t capacity = step_over(std::int64_t{m_count} + 1);
    // p may be a point of this list: growing by push_back copies it before anything moves.
    if (index(m_count) < m_array.size()) {
        plx::copy_point(m_array[index(m_count)], p);
    } else {
        m_array.push_back(p);
    }
    ++m_count;
    if (capacity > m_capacity) set_capacity(capacity);
}

void cgPointList::append(const cgElement& e) {
    if (const auto* p = dynamic_cast<const cgPoint*>(&e)) append(*p);
}

void cgPointList::insert(int at, cgPoint p, int n) {
    if (n < 1) return;
    const std::int64_t needed = std::int64_t{m_count} + n;
    const std::int64_t capacity = step_over(needed);
    const std::int64_t slots = capacity > m_capacity ? std::min<std::int64_t>(capacity, INT_MAX) : m_slots;
    if (at < 0 || at > slots || needed > INT_MAX) {
        throw std::invalid_argument("cgPointList: cannot insert there");
    }
    const std::size_t filled = std::max(m_array.size(), index(at)) + index(n);
    if (m_array.capacity() < filled) {
        make_room([&] { m_array.reserve(std::max(filled, 2 * m_array.size())); });
    }
    if (capacity > m_capacity) set_capacity(capacity);
    if (m_array.size() < index(at)) m_array.resize(index(at));
    m_array.insert(m_array.end(), index(n), p);
    std::rotate(m_array.begin() + at, m_array.end() - n, m_array.end());
    m_slots += n;
    m_count += n;
}

void cgPointList::prepend(const cgPoint& p) { insert(0, p, 1); }

void cgPointList::prepend(const cgElement& e) {
    if (const auto* p = dynamic_cast<const cgPoint*>(&e)) prepend(*p);
}

void cgPointList::clear() {
    m_array.clear();
    m_slots = 0;
    m_capacity = 0;
    m_count = 0;
}

cgBox cgPointList::GetExtents() const {
    if (m_count == 0) return {0.0, 0.0, 0.0, 0.0, 0.0, 0.0};
    const cgPoint& first = m_array.front();
    double low[3] = {first.x(), first.y(), first.z()};
    double high[3] = {low[0], low[1], low[2]};
    for (int i = 1; i < m_count; ++i) {
        const cgPoint& p = m_array[index(i)];
        const double q[3] = {p.x(), p.y(), p.z()};
        for (int axis = 0; axis < 3; ++axis) {
            if (q[axis] < low[axis]) low[axis] = q[axis];
            if (q[axis] > high[axis]) high[axis] = q[axis];
        }
    }
    return {low[0], low[1], low[2], high[0], high[1], high[2]};
}

void cgPointList::CopyFromList(cgPointList& src) {
    clear();
    if (src.m_capacity > 0) set_capacity(std::int64_t{src.m_capacity} + std::max(m_grow_size, 0));
    m_array.reserve(index(src.m_count));
    for (int i = 0; i < src.m_count; ++i) append(src.m_array[index(i)]);
}

void cgPointList::ProjectToList(const cgVector& v, cgPointList& out) const {
    const int n = m_count;  // out may be this list
    for (int i = 0; i < n; ++i) out.append(m_array[index(i)] + v);
}

void cgPointList::do_sort(int (*cmp)(const cgPoint*, const cgPoint*)) {
    if (!cmp) return;
    std::vector<cgPoint*> sorted(index(m_count));
    for (std::size_t i = 0; i < sorted.size(); ++i) sorted[i] = &m_array[i];
    plx::merge_sort(sorted, [cmp](const cgPoint* a, const cgPoint* b) { return cmp(a, b); });

    // Moves every point straight to its place, along the cycles of the permutation.
    cgPoint* const first = m_array.data();
    for (std::size_t start = 0; start < sorted.size(); ++start) {
        std::size_t hole = start;
        while (sorted[hole] != first + start) {
            const auto source = static_cast<std::size_t>(sorted[hole] - first);
            swap(m_array[hole], m_array[source]);
            sorted[hole] = first + hole;
            hole = source;
        }
        sorted[hole] = first + hole;
    }
}

int cgPointList::Compare(const cgPoint* a, const cgPoint* b) { return a->ptCompare(*b); }

void cgPointList::do_sort_by_data(int first, int last) {
    sort_parameters().first = first;
    sort_parameters().last = last;
    do_sort(&CompareByData);
}

int cgPointList::CompareByData(const cgPoint* a, const cgPoint* b) {
    const SortParameters& s = sort_parameters();
    const int last = std::min({s.last, a->num_data() - 1, b->num_data() - 1});
    for (int i = std::max(s.first, 0); i <= last; ++i) {
        if ((*a)[i] < (*b)[i]) return -1;
        if ((*a)[i] > (*b)[i]) return 1;
    }
    return 0;
}

void cgPointList::do_sort_with_data(int first, int last, double tolX, double tolY, double tolZ,
                                    double* dataTol) {
    sort_parameters() = {first, last, tolX, tolY, tolZ, dataTol};
    do_sort(&CompareWithData);
}

int cgPointList::CompareWithData(const cgPoint* a, const cgPoint* b) {
    const SortParameters& s = sort_parameters();
    return a->ptCompareWithData(*b, s.first, s.last, s.tolX, s.tolY, s.tolZ, s.dataTol);
}
