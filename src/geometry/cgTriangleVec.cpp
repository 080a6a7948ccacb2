#include "plxutils/geometry/cgTriangleVec.h"

#include <algorithm>
#include <new>
#include <stdexcept>

void cgTriangleVec::resize(int n) {
    try {
        m_array.resize(static_cast<std::size_t>(std::max(n, 0)));
    } catch (const std::bad_alloc&) {  // the size stays
    }
}

cgTriangle& cgTriangleVec::operator[](int i) {
    if (i < 0 || i >= size()) throw std::invalid_argument("cgTriangleVec: index out of range");
    return m_array[static_cast<std::size_t>(i)];
}

void cgTriangleVec::append(const cgTriangle& t) { m_array.push_back(t); }

void cgTriangleVec::prepend(const cgTriangle& t) { m_array.insert(m_array.begin(), t); }
