#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <utility>
#include <vector>

#include "plxutils/core/VXInputFile.h"

namespace plx {

/// Bytes of a number of a size code: 1 is an unsigned byte, 2 and 4 are integers, 6 is a 32-bit float, 8 a
/// double; 0 for a code that is none.
std::size_t number_width(int size);
/// Widens n little-endian numbers of a known size code.
void widen_numbers(int size, const char* from, double* to, std::size_t n);

/// Little-endian numbers of a binary file, one by one and in blocks, with an account of what is left.
class NumberSource {
public:
    static constexpr std::size_t kBlock = 64 * 1024;

    /// @param unknown_size  told a size code that is none before a read with it fails.
    explicit NumberSource(std::function<void(int)> unknown_size) : unknown_size_(std::move(unknown_size)) {}
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
    std::size_t width_of(int size) const;

    std::function<void(int)> unknown_size_;
    VXInputFile in_;
    std::int64_t left_ = -1;  ///< -1 when unknown, as of a gzip file
    std::vector<char> block_;
};

}  // namespace plx
