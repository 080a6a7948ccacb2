#pragma once

#include <cstddef>
#include <memory>
#include <new>

#include "plxutils/core/ArrayPosition.h"

/// Four-index array (i, j, k, component), laid out as ArrayPosition says.
///
/// There is always at least one element, so that a bad index, which prints ArrayPosition's message and counts
/// as element 0, has a place to read and write. Set the extents with SetDimensions: setting `dims` alone
/// makes no storage, and positions past the storage count as element 0.
template <class T>
class VXArray {
public:
    T* data;
    ArrayPosition dims;

    /// Extents 1, 1, 1, 1: one zero element.
    VXArray() : VXArray(1, 1, 1, 1) {}
    VXArray(int ires, int jres, int kres, int veclen) : data(nullptr) {
        SetDimensions(ires, jres, kres, veclen);
    }
    /// Deep copy.
    VXArray(const VXArray& other) : data(nullptr) { Copy(other); }
    VXArray& operator=(const VXArray& other) {
        if (this != &other) Copy(other);
        return *this;
    }
    ~VXArray() = default;

    /// Sets the extents and makes every element T().
    /// @return false for a negative extent, more than 2147483647 elements or no memory; all extents are then
    /// 0.
    bool SetDimensions(int ires, int jres, int kres, int veclen) {
        dims.SetDimensions(ires, jres, kres, veclen);
        const bool negative = ires < 0 || jres < 0 || kres < 0 || veclen < 0;
        const double product = 1.0 * ires * jres * kres * veclen;
        if (!negative && product <= 2147483647.0 && Allocate(dims.size())) return true;
        dims.SetDimensions(0, 0, 0, 0);
        Allocate(0);
        return false;
    }

    T& operator()(int i, int j, int k, int v) { return data[Place(dims(i, j, k, v))]; }
    const T& operator()(int i, int j, int k, int v) const { return data[Place(dims(i, j, k, v))]; }

private:
    std::size_t Place(int index) const {
        return index >= 0 && index < count_ ? static_cast<std::size_t>(index) : 0;
    }

    bool Allocate(int n) {
        const int wanted = n < 1 ? 1 : n;
        try {
            storage_ = std::make_unique<T[]>(static_cast<std::size_t>(wanted));
            data = storage_.get();
        } catch (...) {
            data = &spare_;
            count_ = 1;
            return false;
        }
        count_ = wanted;
        return true;
    }

    void Copy(const VXArray& other) {
        const ArrayPosition& from = other.dims;
        if (!SetDimensions(from.ires(), from.jres(), from.kres(), from.veclen())) return;
        const int n = other.count_ < count_ ? other.count_ : count_;
        for (int i = 0; i < n; ++i) data[i] = other.data[i];
    }

    std::unique_ptr<T[]> storage_;
    int count_ = 0;
    T spare_{};  // element 0 when not even one element could be had
};
