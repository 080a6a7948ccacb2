#include "core/deflate_stream.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <limits>
#include <memory>

namespace plx {

std::optional<std::size_t> inflated_size(std::span<const unsigned char> packed, std::size_t most) {
    z_stream stream{};
    if (inflateInit(&stream) != Z_OK) return std::nullopt;
    const std::unique_ptr<z_stream, int (*)(z_stream*)> end(&stream, &inflateEnd);
    std::array<unsigned char, 32768> block;
    std::size_t size = 0;
    for (int state = Z_OK; state != Z_STREAM_END;) {
        if (stream.avail_in == 0) {
            const std::size_t part = std::min<std::size_t>(packed.size(), std::numeric_limits<uInt>::max());
            stream.next_in = const_cast<Bytef*>(packed.data());
            stream.avail_in = static_cast<uInt>(part);
            packed = packed.subspan(part);
        }
        stream.next_out = block.data();
        stream.avail_out = block.size();
        state = inflate(&stream, Z_NO_FLUSH);
        if (state != Z_OK && state != Z_STREAM_END) return std::nullopt;
        size += block.size() - stream.avail_out;
        if (size >= most) return most;
    }
    return size;
}

}  // namespace plx
