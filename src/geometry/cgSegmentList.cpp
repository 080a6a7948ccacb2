#include "plxutils/geometry/cgSegmentList.h"

#include <algorithm>
#include <stdexcept>

#include "geometry/segment_chain.h"

void cgSegmentList::clear() { m_array.clear(); }

void cgSegmentList::append(cgSegment& s) { m_array.push_back(s); }

void cgSegmentList::append(const cgElement& e) {
    if (const auto* s = dynamic_cast<const cgSegment*>(&e)) m_array.push_back(*s);
}

void cgSegmentList::prepend(cgSegment& s) { m_array.insert(m_array.begin(), s); }

void cgSegmentList::prepend(const cgElement& e) {
    if (const auto* s = dynamic_cast<const cgSegment*>(&e)) m_array.insert(m_array.begin(), *s);
}

cgBox cgSegmentList::GetExtents() const {
    if (m_array.empty()) return {0.0, 0.0, 0.0, 0.0, 0.0, 0.0};
    cgBox total = m_array.front().GetExtents();
    for (const cgSegment& s : m_array) {
        const cgBox box = s.GetExtents();
        total.min.SetPoint(std::min(total.min.x(), box.min.x()), std::min(total.min.y(), box.min.y()),
                           std::min(total.min.z(), box.min.z()), 0, nullptr);
        total.max.SetPoint(std::max(total.max.x(), box.max.x()), std::max(total.max.y(), box.max.y()),
                           std::max(total.max.z(), box.max.z()), 0, nullptr);
    }
    return total;
}

void cgSegmentList::ProjectToList(const cgVector& v, cgSegmentList& out) const {
    const std::size_t n = m_array.size();  // out may be this list
    for (std::size_t i = 0; i < n; ++i) out.m_array.push_back(m_array[i].ProjectBy(v));
}

cgSegment& cgSegmentList::operator[](int i) {
    if (i < 0 || i >= size()) throw std::invalid_argument("cgSegmentList: index out of range");
    return m_array[static_cast<std::size_t>(i)];
}

void cgSegmentList::ExtendToBox(const cgBox& box, double step) { plx::extend_chain(m_array, box, step); }

void cgSegmentList::CopyToList(cgSegmentList& out, double step) const {
    plx::ElementArray<cgSegment> pieces;
    for (const cgSegment& s : m_array) plx::append_pieces(s, step, pieces);
    out.m_array.insert(out.m_array.end(), pieces.begin(), pieces.end());
}
