#include "plxconvert/image_size.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <limits>
#include <string_view>

namespace plx::tool {

namespace {

/// Reads numbers of either byte order anywhere in a file; 0 behind its end.
class Bytes {
public:
    explicit Bytes(const std::filesystem::path& file) : stream_(file, std::ios::binary) {}

    std::uint32_t number(std::uint64_t at, int count, bool big_endian) {
        std::array<unsigned char, 4> raw{};
        stream_.clear();
        stream_.seekg(static_cast<std::streamoff>(at));
        stream_.read(reinterpret_cast<char*>(raw.data()), count);
        if (stream_.gcount() != count) return 0;
        std::uint32_t value = 0;
        for (int i = 0; i < count; ++i) {
            value = value << 8 | raw[static_cast<std::size_t>(big_endian ? i : count - 1 - i)];
        }
        return value;
    }
    std::uint32_t big(std::uint64_t at, int count) { return number(at, count, true); }

private:
    std::ifstream stream_;
};

std::optional<ImageSize> sensible(std::uint32_t width, std::uint32_t height) {
    constexpr std::uint32_t kMost = std::numeric_limits<int>::max();
    if (width == 0 || height == 0 || width > kMost || height > kMost) return std::nullopt;
    return ImageSize{static_cast<int>(width), static_cast<int>(height)};
}

/// Walks the segments up to the one that begins a frame.
std::optional<ImageSize> size_of_jpeg(Bytes& bytes) {
    constexpr int kMostSegments = 10000;
    std::uint64_t at = 2;
    for (int i = 0; i < kMostSegments && bytes.big(at, 1) == 0xff; ++i) {
        const std::uint32_t kind = bytes.big(at + 1, 1);
        if (kind == 0xff) {
            ++at;
            continue;
        }
        const bool is_frame = kind >= 0xc0 && kind <= 0xcf && kind != 0xc4 && kind != 0xc8 && kind != 0xcc;
        if (is_frame) return sensible(bytes.big(at + 7, 2), bytes.big(at + 5, 2));
        const std::uint32_t length = bytes.big(at + 2, 2);
        if (length < 2) return std::nullopt;
        at += 2 + length;
    }
    return std::nullopt;
}

std::optional<ImageSize> size_of_tiff(Bytes& bytes, bool big_endian) {
    constexpr std::uint32_t kWidth = 256, kHeight = 257, kShort = 3;
    const std::uint64_t directory = bytes.number(4, 4, big_endian);
    const std::uint32_t entries = bytes.number(directory, 2, big_endian);
    std::uint32_t width = 0, height = 0;
    for (std::uint32_t i = 0; i < entries; ++i) {
        const std::uint64_t entry = directory + 2 + 12 * std::uint64_t{i};
        const std::uint32_t tag = bytes.number(entry, 2, big_endian);
        if (tag > kHeight) break;
        const int size = bytes.number(entry + 2, 2, big_endian) == kShort ? 2 : 4;
        if (tag == kWidth) width = bytes.number(entry + 8, size, big_endian);
        if (tag == kHeight) height = bytes.number(entry + 8, size, big_endian);
    }
    return sensible(width, height);
}

}  // namespace

std::optional<ImageSize> image_size(const std::filesystem::path& file) {
    Bytes bytes(file);
    const std::uint32_t mark = bytes.big(0, 4);
    if (mark == 0x89504e47) return sensible(bytes.big(16, 4), bytes.big(20, 4));
    if (mark >> 8 == 0xffd8ff) return size_of_jpeg(bytes);
    if (mark == 0x49492a00 || mark == 0x4d4d002a) return size_of_tiff(bytes, mark == 0x4d4d002a);
    if (mark >> 16 != 0x424d) return std::nullopt;
    // Bitmaps that are stored from the top have a negative height.
    const std::uint32_t height = bytes.number(22, 4, false);
    return sensible(bytes.number(18, 4, false), height > 0x7fffffff ? 0U - height : height);
}

}  // namespace plx::tool
