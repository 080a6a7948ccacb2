#include "plxconvert/image_size.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <limits>

namespace plx::tool {

namespace {

/// Reads numbers of either byte order anywhere in a file; 0 behind its end.
class Bytes {
public:
    explicit Bytes(const std::filesystem::path& file) : stream_(file, std::ios::binary) {}

    std::uint64_t number(std::uint64_t at, int count, bool big_endian) {
        std::array<unsigned char, 8> raw{};
        stream_.clear();
        stream_.seekg(static_cast<std::streamoff>(at));
        stream_.read(reinterpret_cast<char*>(raw.data()), count);
        if (stream_.gcount() != count) return 0;
        std::uint64_t value = 0;
        for (int i = 0; i < count; ++i) {
            value = value << 8 | raw[static_cast<std::size_t>(big_endian ? i : count - 1 - i)];
        }
        return value;
    }
    std::uint64_t big(std::uint64_t at, int count) { return number(at, count, true); }
    std::uint64_t little(std::uint64_t at, int count) { return number(at, count, false); }

private:
    std::ifstream stream_;
};

std::optional<ImageSize> sensible(std::uint64_t width, std::uint64_t height) {
    constexpr std::uint64_t kMost = std::numeric_limits<int>::max();
    if (width == 0 || height == 0 || width > kMost || height > kMost) return std::nullopt;
    return ImageSize{static_cast<int>(width), static_cast<int>(height)};
}

std::optional<ImageSize> size_of_png(Bytes& bytes) {
    if (bytes.big(0, 8) != 0x89504e470d0a1a0a || bytes.big(12, 4) != 0x49484452) return std::nullopt;
    return sensible(bytes.big(16, 4), bytes.big(20, 4));
}

/// Walks the segments up to the one that begins a frame.
std::optional<ImageSize> size_of_jpeg(Bytes& bytes) {
    constexpr int kMostSegments = 10000;
    constexpr std::uint64_t kTemporary = 0x01, kFirstRestart = 0xd0, kStart = 0xd8, kEnd = 0xd9, kScan = 0xda;
    std::uint64_t at = 2;
    for (int i = 0; i < kMostSegments && bytes.big(at, 1) == 0xff; ++i) {
        const std::uint64_t kind = bytes.big(at + 1, 1);
        const bool is_frame = kind >= 0xc0 && kind <= 0xcf && kind != 0xc4 && kind != 0xc8 && kind != 0xcc;
        if (is_frame) return sensible(bytes.big(at + 7, 2), bytes.big(at + 5, 2));
        if (kind == 0xff) {
            ++at;
        } else if (kind == kTemporary || (kind >= kFirstRestart && kind <= kStart)) {
            at += 2;  // marks without a segment
        } else {
            const std::uint64_t length = bytes.big(at + 2, 2);
            if (length < 2 || kind == kEnd || kind == kScan) return std::nullopt;
            at += 2 + length;
        }
    }
    return std::nullopt;
}

/// Where a kind of TIFF has its numbers: lengths in bytes, and places from the beginning of the file or
/// entry.
struct TiffLayout {
    std::uint64_t first_directory;
    int offset, count;
    std::uint64_t entry, value;
};
constexpr TiffLayout kTiff{4, 4, 2, 12, 8}, kBigTiff{8, 8, 8, 20, 12};

std::optional<ImageSize> size_of_tiff(Bytes& bytes, bool big_endian, const TiffLayout& layout) {
    constexpr std::uint64_t kWidth = 256, kHeight = 257, kShort = 3, kLong = 4, kLong8 = 16;
    constexpr std::uint64_t kMostEntries = 65535, kFarthest = std::numeric_limits<std::uint64_t>::max() / 4;
    const std::uint64_t directory = bytes.number(layout.first_directory, layout.offset, big_endian);
    // Byte 8 is the first behind the header.
    if (directory < 8 || directory > kFarthest) return std::nullopt;
    const std::uint64_t entries = std::min(bytes.number(directory, layout.count, big_endian), kMostEntries);
    std::uint64_t width = 0, height = 0;
    std::uint64_t entry = directory + static_cast<std::uint64_t>(layout.count);
    for (std::uint64_t i = 0; i < entries && (width == 0 || height == 0); ++i, entry += layout.entry) {
        const std::uint64_t tag = bytes.number(entry, 2, big_endian);
        if (tag != kWidth && tag != kHeight) continue;
        const std::uint64_t type = bytes.number(entry + 2, 2, big_endian);
        const int size = type == kShort ? 2 : type == kLong ? 4 : type == kLong8 ? layout.offset : 0;
        (tag == kWidth ? width : height) = bytes.number(entry + layout.value, size, big_endian);
    }
    return sensible(width, height);
}

std::optional<ImageSize> size_of_bitmap(Bytes& bytes) {
    constexpr std::uint64_t kOldHeader = 12, kLeastHeader = 16, kGreatestHeader = 124;
    const std::uint64_t header = bytes.little(14, 4);
    if (header == kOldHeader) return sensible(bytes.little(18, 2), bytes.little(20, 2));
    if (header < kLeastHeader || header > kGreatestHeader) return std::nullopt;
    // Bitmaps that are stored from the top have a negative height.
    const std::uint64_t height = bytes.little(22, 4);
    return sensible(bytes.little(18, 4), height > 0x7fffffff ? (std::uint64_t{1} << 32) - height : height);
}

}  // namespace

std::optional<ImageSize> image_size(const std::filesystem::path& file) {
    Bytes bytes(file);
    const std::uint64_t mark = bytes.big(0, 4);
    if (mark == 0x89504e47) return size_of_png(bytes);
    if (mark >> 8 == 0xffd8ff) return size_of_jpeg(bytes);
    const bool big_endian = mark >> 16 == 0x4d4d;
    if (mark == 0x49492a00 || mark == 0x4d4d002a) return size_of_tiff(bytes, big_endian, kTiff);
    if (mark == 0x49492b00 || mark == 0x4d4d002b) return size_of_tiff(bytes, big_endian, kBigTiff);
    if (mark >> 16 == 0x424d) return size_of_bitmap(bytes);
    return std::nullopt;
}

}  // namespace plx::tool
