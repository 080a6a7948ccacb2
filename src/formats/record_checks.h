#pragma once

#include <cctype>
#include <cstdint>
#include <cstdio>
#include <string_view>

#include "formats/grid_geometry.h"
#include "platform/platform.h"

namespace plx {

/// Characters of a label (TEXT) in a result file.
inline constexpr std::size_t kLabelBytes = 16;

/// A step or period number above this is taken for bytes of something else; four characters of text, read as
/// a number, always lie above it.
inline constexpr int kMaxStepNumber = 10'000'000;

inline bool plausible_step(int number) { return number >= 1 && number <= kMaxStepNumber; }

/// Can a record be of this size? Zero layers pass: one of the record kinds leaves them out.
inline bool plausible_extents(std::int64_t columns, std::int64_t rows, std::int64_t layers) {
    if (columns < 1 || rows < 1 || layers < 0 || layers > kMaxCells) return false;
    return columns * rows <= kMaxCells && columns * rows * layers <= kMaxCells;
}

/// Printable text with a letter in it; zero bytes may fill its end.
inline bool plausible_label(std::string_view label) {
    const std::size_t end = label.find('\0');
    if (end != label.npos && label.find_first_not_of('\0', end) != label.npos) return false;
    bool letter = false;
    for (const char c : label.substr(0, end)) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte > 0x7e) return false;
        letter = letter || std::isalpha(byte) != 0;
    }
    return letter;
}

/// Puts a stream's position back at the end of a look into it.
class KeepPosition {
public:
    explicit KeepPosition(std::FILE* file) : file_(file), position_(file ? platform::tell(file) : -1) {}
    ~KeepPosition() {
        if (position_ >= 0) platform::seek(file_, position_, SEEK_SET);
    }
    KeepPosition(const KeepPosition&) = delete;
    KeepPosition& operator=(const KeepPosition&) = delete;

private:
    std::FILE* file_;
    std::int64_t position_;
};

}  // namespace plx
