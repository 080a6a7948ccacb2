#pragma once

#include <cstddef>
#include <cstdio>

namespace plx::tool {

// Longer lists show their first and last lines only.
constexpr std::size_t kLongList = 14;
constexpr std::size_t kShownFirst = 8;
constexpr std::size_t kShownLast = 4;

/// Calls `print_line` for each index of a list, leaving out the middle of a long one.
template <class PrintLine>
void print_cut(std::size_t count, const char* indent, PrintLine print_line) {
    for (std::size_t i = 0; i < count; ++i) {
        if (count > kLongList && i == kShownFirst) {
            const std::size_t left_out = count - kShownFirst - kShownLast;
            std::printf("%s... %zu more ...\n", indent, left_out);
            i += left_out;
        }
        print_line(i);
    }
}

}  // namespace plx::tool
