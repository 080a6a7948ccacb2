#include "plxutils/core/MemoryBlock.h"

#include <algorithm>
#include <cstddef>
#include <new>

MemoryBlock::MemoryBlock(int size) : available(0), next(nullptr) {
    try {
        // One byte at least, so that a request for nothing has an address to return.
        data = std::make_shared<unsigned char[]>(static_cast<std::size_t>(std::max(size, 1)));
    } catch (const std::bad_alloc&) {
        return;
    }
    available = std::max(size, 0);
    next = data.get();
}

MemoryBlock::MemoryBlock(const MemoryBlock& other) = default;
MemoryBlock& MemoryBlock::operator=(const MemoryBlock& other) = default;
MemoryBlock::~MemoryBlock() = default;

void* MemoryBlock::Allocate(int n) {
    if (n < 0 || n > available) return nullptr;
    unsigned char* piece = next;
    next += n;
    available -= n;
    return piece;
}
