#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>

#include "plxutils/core/VXUtilities.h"

namespace {

class Separators {
public:
    explicit Separators(const char* set) {
        for (; set && *set; ++set) member_[static_cast<unsigned char>(*set)] = true;
    }
    bool has(char c) const { return member_[static_cast<unsigned char>(c)]; }

    void skip_leading(std::string_view& text) const {
        while (!text.empty() && has(text.front())) text.remove_prefix(1);
    }
    void skip_trailing(std::string_view& text) const {
        while (!text.empty() && has(text.back())) text.remove_suffix(1);
    }

private:
    std::array<bool, 256> member_{};
};

/// Takes the next word off the text; the text is not empty.
std::string_view take_word(std::string_view& rest, const Separators& separators) {
    const bool is_quoted = rest.front() == '"';
    if (is_quoted)
        rest.remove_prefix(std::min(rest.find_first_not_of('"'), rest.size()));
    else
        separators.skip_leading(rest);

    std::size_t length = 0;
    while (length < rest.size() && (is_quoted ? rest[length] != '"' : !separators.has(rest[length])))
        ++length;
    const std::string_view word = rest.substr(0, length);
    rest.remove_prefix(length);
    // After a quoted word the rest begins with the closing quote, which opens the next word; callers know it
    // so.
    if (!is_quoted) separators.skip_leading(rest);
    return word;
}

int split(std::string_view rest, const Separators& separators, char* out, int max_words, int word_len) {
    const auto slot_size = static_cast<std::size_t>(word_len);
    // Eight bits on purpose: the count wraps after 255, and callers of file names rely on what that leaves.
    unsigned char count = 0;
    bool last_is_empty = false;
    while (!rest.empty() && count < max_words) {
        const std::string_view word = take_word(rest, separators).substr(0, slot_size - 1);
        char* slot = out + count * slot_size;
        std::memset(slot, 0, slot_size);
        std::memcpy(slot, word.data(), word.size());
        last_is_empty = word.empty();
        ++count;
    }
    return count - (count > 0 && last_is_empty ? 1 : 0);
}

bool usable(const char* text, char* out, int max_words, int word_len) {
    if (!text || !out || max_words < 1 || word_len < 1) return false;
    std::memset(out, 0, static_cast<std::size_t>(max_words) * static_cast<std::size_t>(word_len));
    return true;
}

}  // namespace

int StrToWordsDelim(const char* delims, const char* text, char* out, int maxWords, int wordLen) {
    if (!usable(text, out, maxWords, wordLen)) return 0;
    return split(text, Separators(delims), out, maxWords, wordLen);
}

int StrToWords(const char* text, char* out, int maxWords, int wordLen) {
    if (!usable(text, out, maxWords, wordLen)) return 0;
    const Separators separators(", \t\n\r");
    std::string_view rest(text);
    separators.skip_leading(rest);
    separators.skip_trailing(rest);
    return split(rest, separators, out, maxWords, wordLen);
}

int l2u(char* s) {
    char* p = s;
    for (; p && *p; ++p)
        if (*p >= 'a' && *p <= 'z') *p = static_cast<char>(*p - 'a' + 'A');
    return static_cast<int>(p - s);
}

int u2l(char* s) {
    char* p = s;
    for (; p && *p; ++p)
        if (*p >= 'A' && *p <= 'Z') *p = static_cast<char>(*p - 'A' + 'a');
    return static_cast<int>(p - s);
}
