#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace plx {

/// Lower case of an ASCII letter; every other byte as it is, so that text in any encoding survives.
constexpr char ascii_lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; }

/// True for the bytes before the blank, which end lines and words.
constexpr bool is_control(char c) { return static_cast<unsigned char>(c) < 0x20; }

/// True when both texts are equal but for the case of ASCII letters.
inline bool equal_no_case(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return ascii_lower(x) == ascii_lower(y); });
}

/// The text without the bytes of `blanks` at both its ends.
inline std::string_view trimmed(std::string_view text, std::string_view blanks) {
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

}  // namespace plx
