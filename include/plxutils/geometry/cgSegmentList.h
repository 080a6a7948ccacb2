#pragma once

#include "plxutils/export.h"
#include "plxutils/geometry/ElementArray.h"
#include "plxutils/geometry/cgList.h"
#include "plxutils/geometry/cgSegment.h"

/// Growable list of segments.
class PLX_EXPORT cgSegmentList : public cgList {
public:
    void clear();
    void append(cgSegment& s);
    void append(const cgElement& e) override;
    void prepend(cgSegment& s);
    void prepend(const cgElement& e) override;
    /// Box of all end points; the zero box when there are none.
    cgBox GetExtents() const override;
    /// Appends every segment, moved by v, to out (which may be this list).
    void ProjectToList(const cgVector& v, cgSegmentList& out) const;
    int size() const { return static_cast<int>(m_array.size()); }
    /// Throws std::invalid_argument outside the list.
    cgSegment& operator[](int i);

private:
    void ExtendToBox(const cgBox& box, double step);
    void CopyToList(cgSegmentList& out, double step) const;

    plx::ElementArray<cgSegment> m_array;
};
