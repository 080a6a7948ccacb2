#pragma once

#include <cstddef>
#include <optional>
#include <span>

namespace plx {

/// Length that a zlib stream has unpacked, or `most` when it is no less. Nothing is kept of the bytes. Empty
/// for bytes that are no whole zlib stream.
std::optional<std::size_t> inflated_size(std::span<const unsigned char> packed, std::size_t most);

}  // namespace plx
