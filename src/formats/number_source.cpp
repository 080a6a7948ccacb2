#include "formats/number_source.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>

#include "platform/platform.h"

namespace plx {
namespace {

constexpr unsigned char kGzipMagic[] = {0x1f, 0x8b};

template <class Number>
void widen(const char* from, double* to, std::size_t n) {
    for (std::size_t i = 0; i < n; ++i) {
        Number number;
        std::memcpy(&number, from + i * sizeof number, sizeof number);
        to[i] = static_cast<double>(number);
    }
}

/// Length of a plain file; -1 for one that is compressed or cannot be measured.
std::int64_t plain_length(const char* stored) {
    const VXFile file(stored);
    std::FILE* const raw = platform::open_file(file.GetFilePath().c_str(), "rb");
    if (raw == nullptr) return -1;
    unsigned char begin[sizeof kGzipMagic];
    const bool gzip = std::fread(begin, 1, sizeof begin, raw) == sizeof begin &&
                      std::memcmp(begin, kGzipMagic, sizeof begin) == 0;
    const std::int64_t size = gzip ? -1 : platform::file_size(raw);
    std::fclose(raw);
    return size;
}

}  // namespace

std::size_t number_width(int size) {
    switch (size) {
        case 1:
        case 2:
        case 4:
        case 8:
            return static_cast<std::size_t>(size);
        case 6:
            return 4;
        default:
            return 0;
    }
}

void widen_numbers(int size, const char* from, double* to, std::size_t n) {
    switch (size) {
        case 1:
            widen<std::uint8_t>(from, to, n);
            break;
        case 2:
            widen<std::int16_t>(from, to, n);
            break;
        case 4:
            widen<std::int32_t>(from, to, n);
            break;
        case 6:
            widen<float>(from, to, n);
            break;
        default:
            widen<double>(from, to, n);
            break;
    }
}

std::size_t NumberSource::width_of(int size) const {
    const std::size_t width = number_width(size);
    if (width == 0) unknown_size_(size);
    return width;
}

bool NumberSource::open(const char* stored) {
    if (!in_.Open(stored)) return false;
    left_ = plain_length(stored);
    return true;
}

bool NumberSource::bytes(void* out, int n) {
    const int got = in_.ReadRawBytes(static_cast<char*>(out), n);
    if (left_ >= 0) left_ = std::max<std::int64_t>(left_ - got, 0);
    return got == n;
}

bool NumberSource::integer(int& v) {
    int whole = 0;
    if (!bytes(&whole, sizeof whole)) return false;
    v = whole;
    return true;
}

bool NumberSource::number(int size, double& v) {
    const auto width = static_cast<int>(width_of(size));
    std::array<char, 8> number_bytes;
    if (width == 0 || !bytes(number_bytes.data(), width)) return false;
    widen_numbers(size, number_bytes.data(), &v, 1);
    return true;
}

std::size_t NumberSource::numbers(int size, double* out, std::size_t n) {
    const std::size_t width = n > 0 ? width_of(size) : 0;
    if (width == 0) return 0;
    block_.resize(kBlock * width);
    for (std::size_t done = 0; done < n;) {
        const std::size_t count = std::min(n - done, kBlock);
        const int got = in_.ReadRawBytes(block_.data(), static_cast<int>(count * width));
        const std::size_t whole = static_cast<std::size_t>(got) / width;
        if (left_ >= 0) left_ = std::max<std::int64_t>(left_ - got, 0);
        widen_numbers(size, block_.data(), out + done, whole);
        done += whole;
        if (whole < count) return done;
    }
    return n;
}

std::size_t NumberSource::room_for(std::size_t wanted, int size, std::size_t count) const {
    std::size_t most = kBlock / count;
    if (left_ >= 0) {
        const std::size_t width = size == 6 ? 4 : static_cast<std::size_t>(std::clamp(size, 1, 8));
        most = static_cast<std::size_t>(left_) / (width * count);
    }
    return std::min(wanted, std::max<std::size_t>(most, 1));
}

}  // namespace plx
