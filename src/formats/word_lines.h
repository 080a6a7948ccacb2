#pragma once

#include <array>
#include <memory>
#include <string>
#include <string_view>

#include "plxutils/core/VXInputFile.h"

namespace plx {

/// Lines of a GMS text file, plain or gzip, cut into words at blanks, tabs and commas: what
/// VXFileReader::ReadLine("\r\n\t ,", true, true, false) gives, without a String per word. Empty lines and
/// comments are passed over.
class WordLines {
public:
    /// Words of a line that are kept; further ones are not looked at.
    static constexpr int kMaxWords = 8;

    bool open(const char* stored);
    /// Goes to the next line; false at the end, or where the input is damaged.
    bool next();
    /// Goes to the next line whose first word is this; false when there is none.
    bool find(std::string_view keyword);
    int count() const { return count_; }
    /// Word i, valid until the next line; empty when there is none.
    std::string_view word(int i) const {
        return i >= 0 && i < count_ ? words_[static_cast<std::size_t>(i)] : std::string_view{};
    }
    /// Word i as a number, 0 when it is none; false, and v unchanged, for a missing or empty word.
    bool number(int i, double& v) const;
    /// As number, truncated toward zero and clamped to the range of int.
    bool integer(int i, int& v) const;

private:
    bool fill();
    bool take_line(std::string_view& line);
    void split(std::string_view line);

    VXInputFile in_;
    std::unique_ptr<char[]> block_;
    std::size_t capacity_ = 0, begin_ = 0, end_ = 0;
    bool ended_ = false;
    std::string clean_;
    std::array<std::string_view, kMaxWords> words_;
    int count_ = 0;
};

/// Drops the fraction; not-a-number is 0, what is too large is the nearest int.
int saturate_to_int(double v);

}  // namespace plx
