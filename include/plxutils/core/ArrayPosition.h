#pragma once

#include "plxutils/export.h"

/// Extents of a four-index array and its linear index: i varies fastest among the grid directions, then j,
/// then k; the components v of one position are adjacent.
class PLX_EXPORT ArrayPosition {
public:
    /// All four extents 1.
    ArrayPosition();
    ArrayPosition(int ires, int jres, int kres, int veclen);
    ArrayPosition(const ArrayPosition&) = default;
    /// Returns a copy of the result, not a reference.
    ArrayPosition operator=(const ArrayPosition& other);

    void SetDimensions(int ires, int jres, int kres, int veclen);
    int ires() const { return ires_; }
    int jres() const { return jres_; }
    int kres() const { return kres_; }
    int veclen() const { return veclen_; }

    /// Checked linear index. The first index outside its extent, in the order i, j, k, v, prints
    /// "Index out of bounds! (i: %d>=%d)" with its letter, the index and the extent to standard output; the
    /// result is then 0.
    int operator()(int i, int j, int k, int v) const;
    /// ((jres * k + j) * ires + i) * veclen + v, unchecked.
    int index(int i, int j, int k, int v) const;
    /// ires * jres * kres * veclen, held within the range of int.
    int size() const;

private:
    int ires_, jres_, kres_, veclen_;
};
