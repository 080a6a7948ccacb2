#pragma once

#include <array>

#include "plxutils/core/MemoryBlock.h"
#include "plxutils/core/VX1DArray.h"
#include "plxutils/export.h"

/// Hands out many small zero-filled pieces from large blocks and frees them all at once when it is destroyed.
class PLX_EXPORT MemoryAllocator {
public:
    // Hosts know it by this name.
    static constexpr int __DEFAULT_BLOCK_SIZE__ = 1048576;  // NOLINT(bugprone-reserved-identifier)

    MemoryAllocator();
    /// Bytes of an ordinary block; a value below 1 means the default size.
    explicit MemoryAllocator(int blockSize);
    ~MemoryAllocator();
    MemoryAllocator(const MemoryAllocator&) = delete;
    MemoryAllocator& operator=(const MemoryAllocator&) = delete;

    /// n zero bytes, without alignment, from the first block that has room; a request above the block size
    /// gets a block of its own. Null when n is negative or there is no memory.
    void* Allocate(int n);

private:
    MemoryBlock* AddBlock(int bytes);

    int blockSize;
    int blockCount;
    VX1DArray<MemoryBlock*> blocks;
    // Most sizes that are asked for again and again, in bytes.
    static constexpr int kSmall = 256;

    // Free room only falls, so the first block with room for a size never moves back. searched_[n] is how
    // many blocks are known to have no room for n bytes; for large sizes the first `refusing_` blocks have no
    // room for `refused_` bytes or more.
    std::array<int, kSmall + 1> searched_{};
    int refused_;
    int refusing_;
};
