#pragma once

#include <memory>

#include "plxutils/export.h"

/// One block of zero-filled bytes from which pieces are taken from front to back.
///
/// Copies share the storage and each keeps its own place in it; the last copy frees it.
class PLX_EXPORT MemoryBlock {
public:
    /// A block of `size` bytes (a negative size counts as 0); empty when there is no memory.
    explicit MemoryBlock(int size);
    MemoryBlock(const MemoryBlock& other);
    MemoryBlock& operator=(const MemoryBlock& other);
    ~MemoryBlock();

    /// The next n bytes, without alignment; null when n is negative or more than what is left.
    void* Allocate(int n);
    /// Bytes that are still free.
    int amountAvailable() const { return available; }

private:
    int available;
    std::shared_ptr<unsigned char[]> data;
    unsigned char* next;
};
