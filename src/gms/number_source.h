#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "plxutils/core/VXInputFile.h"

namespace plx {

/// Reads a number of a size code (see GMStoPLX::ReadValue).
bool read_number(VXInputFile& file, int size, double& value);

/// Little-endian numbers of a binary file, one by one and in blocks, with an account of what is left.
class NumberSource {
public:
    static constexpr std::size_t kBlock = 64 * 1024;

    bool open(const char* stored);
    bool bytes(void* out, int n);
    /// Leaves v as it was where the file ends.
    bool integer(int& v);
    bool number(int size, double& v);
    /// Reads up to n numbers of a size code, widened, and returns how many there were.
    std::size_t numbers(int size, double* out, std::size_t n);
    /// How many records of `count` numbers it is wise to make room for when `wanted` are announced: all that
    /// the file can hold where its length is known, else a block; at least one.
    std::size_t room_for(std::size_t wanted, int size, std::size_t count) const;

private:
    VXInputFile in_;
    std::int64_t left_ = -1;  ///< -1 when unknown, as of a gzip file
    std::vector<char> block_;
};

}  // namespace plx
