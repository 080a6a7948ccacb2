#include "plxutils/core/MemoryAllocator.h"

#include <cstddef>
#include <memory>
#include <new>

namespace {
constexpr int kFirstSlots = 128;
}

MemoryAllocator::MemoryAllocator() : MemoryAllocator(0) {}

MemoryAllocator::MemoryAllocator(int size)
    : blockSize(size < 1 ? __DEFAULT_BLOCK_SIZE__ : size), blockCount(0), refused_(0), refusing_(0) {
    if (!blocks.SetSize(kFirstSlots, nullptr)) blocks.SetSize(0, nullptr);
}

MemoryAllocator::~MemoryAllocator() {
    for (int i = 0; i < blockCount; ++i) delete blocks.data[i];
}

MemoryBlock* MemoryAllocator::AddBlock(int bytes) {
    std::unique_ptr<MemoryBlock> block(new (std::nothrow) MemoryBlock(bytes));
    if (!block || block->amountAvailable() < bytes) return nullptr;
    if (blockCount >= blocks.size && !blocks.Resize(blockCount + 1, nullptr)) {
        // A failed growth leaves the wanted size; the slots end where they did.
        blocks.Resize(blockCount, nullptr);
        return nullptr;
    }
    blocks.data[blockCount++] = block.get();
    return block.release();
}

void* MemoryAllocator::Allocate(int n) {
    if (n < 0) return nullptr;
    if (n > blockSize) {
        MemoryBlock* own = AddBlock(n);
        return own ? own->Allocate(n) : nullptr;
    }
    const bool small = n <= kSmall;
    int& searched = small ? searched_[static_cast<std::size_t>(n)] : refusing_;
    int i = small || n >= refused_ ? searched : 0;
    while (i < blockCount && blocks.data[i]->amountAvailable() < n) ++i;
    searched = i;
    if (!small) refused_ = n;
    MemoryBlock* block = i < blockCount ? blocks.data[i] : AddBlock(blockSize);
    return block ? block->Allocate(n) : nullptr;
}
