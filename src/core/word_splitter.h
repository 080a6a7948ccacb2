#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace plx {

/// A set of bytes that part words.
class Separators {
public:
    explicit Separators(std::string_view set) {
        for (const char c : set) member_[static_cast<unsigned char>(c)] = true;
    }
    bool has(char c) const { return member_[static_cast<unsigned char>(c)]; }

private:
    std::array<bool, 256> member_{};
};

/// Calls take(word) for every word from left to right, until it returns false. Quotes and comments are those
/// of LineToWords.
template <class Take>
void for_each_word(std::string_view rest, const Separators& separators, bool comments, Take take) {
    while (!rest.empty() && separators.has(rest.back())) rest.remove_suffix(1);
    while (!rest.empty()) {
        // Ends at a word: the last byte is no separator.
        while (separators.has(rest.front())) rest.remove_prefix(1);
        const char first = rest.front();
        if (first == '#' && comments) return;
        if (first == '"' || first == '\'') {
            rest.remove_prefix(1);
            const std::size_t closing = rest.find(first);
            if (!take(rest.substr(0, closing))) return;
            rest.remove_prefix(closing == std::string_view::npos ? rest.size() : closing + 1);
        } else {
            std::size_t n = 0;
            while (n < rest.size() && !separators.has(rest[n])) ++n;
            if (!take(rest.substr(0, n))) return;
            rest.remove_prefix(n);
        }
    }
}

}  // namespace plx
