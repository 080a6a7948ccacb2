#pragma once

#include "plxutils/core/MemoryBlock.h"
#include "plxutils/core/VX1DArray.h"
#include "plxutils/export.h"

/// Hands out many small zero-filled pieces from large blocks and frees them all at once when it is destroyed.
class PLX_EXPORT MemoryAllocator {
public:
    static constexpr int __DEFAULT_BLOCK_SIZE__ = 1048576;

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
    // The first `refusing_` blocks have no room for `refused_` bytes: free room only falls, so a search for
    // as much or more starts behind them.
    int refused_;
    int refusing_;
};
