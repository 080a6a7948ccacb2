#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <memory>
#include <utility>

/// Growable array that grows by itself when an element past its end is named.
///
/// `size` is always exactly the highest index named plus one (or what SetSize or Resize set). Nothing throws:
/// when storage is missing, SetSize and Resize return false, `size` holds the wanted number all the same, and
/// operator[] yields `fill` for the elements that do not exist.
///
/// Never name the same array twice in one expression when the left index may grow: in `a[5] = a[2]` the
/// right-hand reference dangles after the growth. Copy into a local first.
template <class T>
class VX1DArray {
public:
    /// The elements; null when there are none.
    T* data;
    int size;
    /// Value of the elements that growth creates; also what a negative index yields.
    T fill;

    VX1DArray() : data(nullptr), size(0), fill(), allocated_(0), capacity_(0) {}
    /// Deep copy, `fill` included.
    VX1DArray(const VX1DArray& other) : VX1DArray() { Copy(other); }
    VX1DArray& operator=(const VX1DArray& other) {
        if (this != &other) {
            Release();
            Copy(other);
        }
        return *this;
    }
    ~VX1DArray() { Release(); }

    /// Element i. Past the end the array grows to i + 1 elements. A negative index prints
    /// "[%d] index out of bounds." to standard output and yields `fill`.
    T& operator[](int i) {
        if (i < 0) {
            std::printf("[%d] index out of bounds.\n", i);
            // Writing through a negative index changes the value of later growth; hosts have come to rely on
            // it.
            return fill;
        }
        if (i >= size && (i == kMaxInt || !Grow(i + 1))) return fill;
        return i < allocated_ ? data[i] : fill;
    }
    /// Element i without growth: `fill` outside, with the message for a negative index.
    const T& operator[](int i) const {
        if (i < 0) std::printf("[%d] index out of bounds.\n", i);
        return i >= 0 && i < size && i < allocated_ ? data[i] : fill;
    }
    int GetSize() const { return size; }

    /// Discards all elements and makes n (at least 0) copies of `fillValue`, which becomes `fill`.
    /// @return false when there was no storage; the array then holds no element.
    bool SetSize(int n, const T& fillValue) {
        try {
            SetFill(fillValue);
        } catch (...) {
            return false;
        }
        n = std::max(n, 0);
        if (n == 0 || n > capacity_ || n < capacity_ / 4) {
            Release();
        } else {
            std::destroy(data, data + allocated_);
            allocated_ = 0;
        }
        return Grow(n);
    }

    /// Keeps the first n elements (n at least 0); elements that are new become `fillValue`, which becomes
    /// `fill`.
    /// @return false when there was no storage; the old elements stay as they were.
    bool Resize(int n, const T& fillValue) {
        try {
            SetFill(fillValue);
        } catch (...) {
            return false;
        }
        n = std::max(n, 0);
        if (n == 0) {
            Release();
            return true;
        }
        return Grow(n);
    }

private:
    static constexpr int kMaxInt = 2147483647;

    // The argument may be an element that is about to go.
    void SetFill(const T& value) {
        if (&value == &fill) return;
        T copy(value);
        fill = copy;
    }

    // Makes `size` n, keeping what fits. Storage grows ahead of the elements so that filling by ascending
    // index stays linear; the elements themselves are made one by one, each from the fill value of its
    // moment.
    bool Grow(int n) {
        size = n;
        if (n < allocated_) {
            std::destroy(data + n, data + allocated_);
            allocated_ = n;
            return true;
        }
        try {
            if (n > capacity_ && !Reserve(n)) return false;
            std::uninitialized_fill(data + allocated_, data + n, fill);
        } catch (...) {
            return false;
        }
        allocated_ = n;
        return true;
    }

    bool Reserve(int n) {
        const int ahead = capacity_ > kMaxInt / 3 * 2 ? kMaxInt : capacity_ + capacity_ / 2;
        const int wanted = std::max(n, ahead);
        T* fresh = std::allocator<T>().allocate(static_cast<std::size_t>(wanted));
        try {
            std::uninitialized_move(data, data + allocated_, fresh);
        } catch (...) {
            std::allocator<T>().deallocate(fresh, static_cast<std::size_t>(wanted));
            return false;
        }
        std::destroy(data, data + allocated_);
        if (data) std::allocator<T>().deallocate(data, static_cast<std::size_t>(capacity_));
        data = fresh;
        capacity_ = wanted;
        return true;
    }

    void Release() {
        std::destroy(data, data + allocated_);
        if (data) std::allocator<T>().deallocate(data, static_cast<std::size_t>(capacity_));
        data = nullptr;
        size = allocated_ = capacity_ = 0;
    }

    // Into an array without elements.
    void Copy(const VX1DArray& other) {
        try {
            fill = other.fill;
            if (other.allocated_ > 0 && Reserve(other.allocated_)) {
                std::uninitialized_copy(other.data, other.data + other.allocated_, data);
                allocated_ = other.allocated_;
            }
        } catch (...) {
            allocated_ = 0;
        }
        size = other.size;
    }

    int allocated_;  // elements that exist; below `size` only after a failed growth
    int capacity_;   // elements that the storage has room for
};
