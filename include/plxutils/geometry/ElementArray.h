#pragma once

#include <cstddef>
#include <memory>
#include <vector>

namespace plx {

/// std::allocator for geometric elements. They have virtual functions and, on purpose, no virtual destructor;
/// an array destroys exactly the class it stores, and says so here.
template <class T>
struct ElementAllocator {
    using value_type = T;

    ElementAllocator() = default;
    template <class U>
    ElementAllocator(const ElementAllocator<U>&) noexcept {}

    T* allocate(std::size_t n) { return std::allocator<T>().allocate(n); }
    void deallocate(T* p, std::size_t n) noexcept { std::allocator<T>().deallocate(p, n); }
    template <class U>
    void destroy(U* p) noexcept {
        p->U::~U();
    }
    template <class U>
    bool operator==(const ElementAllocator<U>&) const noexcept {
        return true;
    }
};

/// Array of geometric elements.
template <class T>
using ElementArray = std::vector<T, ElementAllocator<T>>;

}  // namespace plx
