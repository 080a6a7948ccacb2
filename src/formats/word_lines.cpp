#include "formats/word_lines.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstring>
#include <iterator>
#include <utility>

#include "core/ascii_text.h"
#include "core/text_number.h"
#include "core/word_splitter.h"

namespace plx {
namespace {

constexpr std::size_t kBlock = 256 * 1024;
// As the stream's own buffer: where gzip data are damaged, a larger read would lose more of what came before.
constexpr std::size_t kPiece = 64 * 1024;
// A longer line is damage: memory for it would have no bound.
constexpr std::size_t kMaxLine = 64 * 1024 * 1024;

const Separators kSeparators("\r\n\t ,");

}  // namespace

int saturate_to_int(double v) {
    if (std::isnan(v)) return 0;
    return static_cast<int>(std::clamp(v, double{INT_MIN}, double{INT_MAX}));
}

bool WordLines::open(const char* stored) {
    begin_ = end_ = 0;
    count_ = 0;
    ended_ = !in_.Open(stored);
    if (ended_) return false;
    if (!block_) {
        block_.reset(new char[kBlock]);
        capacity_ = kBlock;
    }
    return true;
}

// Brings more bytes behind those that are left; false when there are none.
bool WordLines::fill() {
    if (ended_) return false;
    if (begin_ > 0) {
        std::memmove(block_.get(), block_.get() + begin_, end_ - begin_);
        end_ -= begin_;
        begin_ = 0;
    }
    if (capacity_ - end_ < kPiece) {
        const std::size_t larger = 2 * capacity_;
        std::unique_ptr<char[]> block(new char[larger]);
        std::memcpy(block.get(), block_.get(), end_);
        block_ = std::move(block);
        capacity_ = larger;
    }
    const std::size_t before = end_;
    while (capacity_ - end_ >= kPiece && !ended_) {
        const int got = in_.ReadRawBytes(block_.get() + end_, static_cast<int>(kPiece));
        end_ += static_cast<std::size_t>(got);
        ended_ = got < static_cast<int>(kPiece);
    }
    return end_ > before;
}

bool WordLines::take_line(std::string_view& line) {
    std::size_t searched = 0;
    for (;;) {
        const char* const first = block_.get() + begin_;
        const std::size_t left = end_ - begin_;
        const void* found = left > searched ? std::memchr(first + searched, '\n', left - searched) : nullptr;
        if (found == nullptr && left < kMaxLine) {
            searched = left;
            if (fill()) continue;
            if (left == 0) return false;
        }
        const char* const last = found == nullptr ? block_.get() + end_ : static_cast<const char*>(found);
        line = {block_.get() + begin_, static_cast<std::size_t>(last - block_.get()) - begin_};
        begin_ += line.size() + (found == nullptr ? 0 : 1);
        return true;
    }
}

void WordLines::split(std::string_view line) {
    count_ = 0;
    for_each_word(line, kSeparators, true, [this](std::string_view word) {
        words_[static_cast<std::size_t>(count_++)] = word;
        return count_ < kMaxWords;
    });
}

bool WordLines::next() {
    count_ = 0;
    if (!block_) return false;
    std::string_view line;
    while (take_line(line)) {
        if (!line.empty() && std::memchr(line.data(), 0, line.size()) != nullptr) {
            clean_.clear();
            std::copy_if(line.begin(), line.end(), std::back_inserter(clean_), [](char c) { return c != 0; });
            line = clean_;
        }
        line = trimmed(line, "\n\r\t ");
        if (line.empty() || line.front() == '#') continue;
        split(line);
        // At the very end a line without words cannot be told from no line.
        return count_ > 0 || begin_ < end_ || !ended_ || block_[end_ - 1] == '\n';
    }
    return false;
}

bool WordLines::find(std::string_view keyword) {
    while (next()) {
        if (word(0) == keyword) return true;
    }
    return false;
}

bool WordLines::number(int i, double& v) const {
    const std::string_view text = word(i);
    if (text.empty()) return false;
    v = to_double(text);
    return true;
}

bool WordLines::integer(int i, int& v) const {
    double number_here = 0.0;
    if (!number(i, number_here)) return false;
    v = saturate_to_int(number_here);
    return true;
}

}  // namespace plx
