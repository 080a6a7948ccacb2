#include "formats/text_source.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

#include "platform/platform.h"

namespace plx {

namespace {

constexpr std::size_t kBlock = 64 * 1024;

std::int64_t bytes_ahead(std::FILE* file) {
    constexpr std::int64_t kUnknown = std::numeric_limits<std::int64_t>::max() / 2;
    if (!file) return 0;
    const std::int64_t here = platform::tell(file);
    if (here < 0 || !platform::seek(file, 0, SEEK_END)) return kUnknown;
    const std::int64_t length = platform::tell(file);
    if (!platform::seek(file, here, SEEK_SET) || length < here) return kUnknown;
    return length - here;
}

const char* find_line_end(const char* first, const char* last) {
    const auto find = [first](char c, const char* end) {
        const void* at = std::memchr(first, c, static_cast<std::size_t>(end - first));
        return at ? static_cast<const char*>(at) : end;
    };
    return find('\r', find('\n', last));
}

}  // namespace

TextSource::TextSource(std::FILE* file, std::string name)
    : file_(file), name_(std::move(name)), unread_(bytes_ahead(file)) {}

TextSource TextSource::of_text(std::string_view text, std::string name) {
    TextSource source(nullptr, std::move(name));
    source.block_.assign(text.begin(), text.end());
    source.next_ = source.block_.data();
    source.end_ = source.next_ + text.size();
    return source;
}

bool TextSource::fill(std::size_t wanted) {
    auto have = static_cast<std::size_t>(end_ - next_);
    if (have >= wanted) return true;
    if (!file_) return false;
    if (have > 0) std::memmove(block_.data(), next_, have);
    if (block_.size() < std::max(wanted, kBlock)) block_.resize(std::max(wanted, kBlock));
    while (have < wanted) {
        const std::size_t got = std::fread(block_.data() + have, 1, block_.size() - have, file_);
        if (got == 0) {
            unread_ = 0;
            break;
        }
        have += got;
        unread_ = std::max<std::int64_t>(0, unread_ - static_cast<std::int64_t>(got));
    }
    next_ = block_.data();
    end_ = next_ + have;
    return have >= wanted;
}

int TextSource::line_end(char c) {
    ++line_;
    if (c == '\r' && (next_ != end_ || fill(1)) && *next_ == '\n') {
        ++next_;
        return '\n';
    }
    return c;
}

int TextSource::peek() {
    if (at_end()) return kEnd;
    if (*next_ == '\r' && fill(2) && next_[1] == '\n') return '\n';
    return static_cast<unsigned char>(*next_);
}

bool TextSource::next_line(std::string_view& line) {
    if (at_end()) return false;
    const char* stop = find_line_end(next_, end_);
    // A carriage return at the block's end needs the next block, which takes the place of this one.
    if (stop != end_ && (*stop == '\n' || stop + 1 != end_)) {
        line = std::string_view(next_, static_cast<std::size_t>(stop - next_));
        next_ = stop + 1;
        line_end(*stop);
        line_had_end_ = true;
        return true;
    }
    spill_.clear();
    do {
        stop = find_line_end(next_, end_);
        spill_.append(next_, stop);
        next_ = stop;
    } while (stop == end_ && fill(1));
    line_had_end_ = next_ != end_;
    if (line_had_end_) get();
    line = spill_;
    return true;
}

bool TextSource::read_line(std::string& line) {
    std::string_view view;
    const bool found = next_line(view);
    line.assign(view);
    return found;
}

std::string_view TextSource::peek_line() {
    const std::string_view bytes = peek_bytes(kBlock);
    if (bytes.empty()) return {};
    const char* stop = find_line_end(bytes.data(), bytes.data() + bytes.size());
    return bytes.substr(0, static_cast<std::size_t>(stop - bytes.data()));
}

std::size_t TextSource::read_bytes(void* to, std::size_t count) {
    auto* out = static_cast<char*>(to);
    std::size_t done = 0;
    while (done < count && (next_ != end_ || fill(1))) {
        const std::size_t part = std::min(count - done, static_cast<std::size_t>(end_ - next_));
        std::memcpy(out + done, next_, part);
        next_ += part;
        done += part;
    }
    return done;
}

std::string_view TextSource::peek_bytes(std::size_t count) {
    fill(count);
    return std::string_view(next_, std::min(count, static_cast<std::size_t>(end_ - next_)));
}

std::string_view TextSource::ahead() {
    if (next_ == end_) fill(1);
    return std::string_view(next_, static_cast<std::size_t>(end_ - next_));
}

std::string TextSource::place() const { return name_ + ": line " + std::to_string(line_); }

}  // namespace plx
