#pragma once

#include <algorithm>
#include <string_view>

namespace plx {

/// Lower case of an ASCII letter; every other byte as it is, so that text in any encoding survives.
constexpr char ascii_lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; }

/// True when both texts are equal but for the case of ASCII letters.
inline bool equal_no_case(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return ascii_lower(x) == ascii_lower(y); });
}

}  // namespace plx
