#pragma once

#include <vector>

#include "plxutils/export.h"
#include "plxutils/geometry/cgTriangle.h"

/// Growable array of triangles.
class PLX_EXPORT cgTriangleVec {
public:
    /// Sets the size; new triangles lie at the origin. Sizes below 0 count as 0.
    void resize(int n);
    /// Throws std::invalid_argument outside the array.
    cgTriangle& operator[](int i);
    void append(const cgTriangle& t);
    void prepend(const cgTriangle& t);
    int size() const { return static_cast<int>(m_array.size()); }

private:
    std::vector<cgTriangle> m_array;
};
