#include "formats/record_file.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <utility>

#include "platform/platform.h"

namespace plx {

static_assert(std::endian::native == std::endian::little, "result files are read without swapping bytes");

namespace {

constexpr std::int64_t kBlockBytes = 64 * 1024;
/// After a jump only a header is wanted as a rule, and the next jump follows.
constexpr std::int64_t kJumpBytes = 4 * 1024;

template <class Stored, class Wanted>
bool read_converted(RecordFile& in, Wanted* to, std::size_t count) {
    std::array<Stored, 2048> part;
    while (count > 0) {
        const std::size_t n = std::min(count, part.size());
        if (!in.read(part.data(), n * sizeof(Stored))) return false;
        std::transform(part.begin(), part.begin() + static_cast<std::ptrdiff_t>(n), to,
                       [](Stored v) { return static_cast<Wanted>(v); });
        to += n;
        count -= n;
    }
    return true;
}

}  // namespace

RecordFile::RecordFile(std::FILE* file, std::string name) : file_(file), name_(std::move(name)) {
    if (file_) size_ = std::max<std::int64_t>(platform::file_size(file_), 0);
}

bool RecordFile::fail() {
    position_ = size_;
    record_left_ = 0;
    return false;
}

bool RecordFile::seek(std::int64_t position) {
    if (position < 0 || position > size_) return false;
    position_ = position;
    record_left_ = 0;
    return true;
}

bool RecordFile::fill_block() {
    const bool following = position_ >= block_end_ && position_ - block_end_ < kBlockBytes;
    block_.resize(kBlockBytes);
    const std::int64_t wanted = std::min(following ? kBlockBytes : kJumpBytes, remaining());
    block_begin_ = block_end_ = position_;
    if (!platform::seek(file_, position_, SEEK_SET)) return false;
    block_end_ +=
        static_cast<std::int64_t>(std::fread(block_.data(), 1, static_cast<std::size_t>(wanted), file_));
    return block_end_ > block_begin_;
}

bool RecordFile::read_bytes(void* to, std::size_t bytes) {
    if (bytes > static_cast<std::size_t>(remaining())) return fail();
    auto* target = static_cast<unsigned char*>(to);
    while (bytes > 0) {
        std::size_t n = bytes;
        if (position_ >= block_begin_ && position_ < block_end_) {
            n = std::min(bytes, static_cast<std::size_t>(block_end_ - position_));
            std::memcpy(target, block_.data() + (position_ - block_begin_), n);
        } else if (bytes >= static_cast<std::size_t>(kBlockBytes)) {
            if (!platform::seek(file_, position_, SEEK_SET) || std::fread(target, 1, n, file_) != n)
                return fail();
        } else {
            if (!fill_block()) return fail();
            continue;
        }
        target += n;
        bytes -= n;
        position_ += static_cast<std::int64_t>(n);
    }
    return true;
}

bool RecordFile::open_record() {
    do {
        std::int32_t marker = 0;
        if (!read_bytes(&marker, sizeof marker)) return false;
        record_length_ = marker < 0 ? -std::int64_t{marker} : marker;
        if (record_length_ > remaining()) return fail();
        record_left_ = record_length_;
    } while (record_left_ == 0 && close_record());  // an empty record holds nothing to read
    return record_left_ > 0;
}

bool RecordFile::close_record() {
    std::int32_t marker = 0;
    if (!read_bytes(&marker, sizeof marker)) return false;
    const std::int64_t length = marker < 0 ? -std::int64_t{marker} : marker;
    return length == record_length_ || fail();
}

bool RecordFile::read(void* to, std::size_t bytes) {
    if (!layout_.record_markers) return read_bytes(to, bytes);
    auto* target = static_cast<unsigned char*>(to);
    while (bytes > 0) {
        if (record_left_ == 0 && !open_record()) return false;
        const std::size_t n = std::min(bytes, static_cast<std::size_t>(record_left_));
        if (!read_bytes(target, n)) return false;
        target += n;
        bytes -= n;
        record_left_ -= static_cast<std::int64_t>(n);
        if (record_left_ == 0 && !close_record()) return false;
    }
    return true;
}

bool RecordFile::skip(std::int64_t bytes) {
    if (bytes < 0 || bytes > remaining()) return fail();
    if (!layout_.record_markers) {
        position_ += bytes;
        return true;
    }
    while (bytes > 0) {
        if (record_left_ == 0 && !open_record()) return false;
        const std::int64_t n = std::min(bytes, record_left_);
        position_ += n;
        bytes -= n;
        record_left_ -= n;
        if (record_left_ == 0 && !close_record()) return false;
    }
    return true;
}

bool RecordFile::read_reals(float* to, std::size_t count) {
    if (layout_.real_bytes == 8) return read_converted<double>(*this, to, count);
    return read(to, count * sizeof *to);
}

bool RecordFile::read_reals(double* to, std::size_t count) {
    if (layout_.real_bytes == 4) return read_converted<float>(*this, to, count);
    return read(to, count * sizeof *to);
}

}  // namespace plx
