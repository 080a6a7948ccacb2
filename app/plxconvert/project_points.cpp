#include "plxconvert/project_points.h"

#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "plxconvert/messages.h"
#include "plxconvert/point_words.h"

namespace plx::tool {

namespace {

constexpr std::size_t kBlock = std::size_t{1} << 18;
constexpr std::size_t kLongestLine = std::size_t{1} << 16;
/// More digits show how a sum was rounded, not where a point is.
constexpr int kDigits = 15;

class Projector {
public:
    Projector(ImageMap& map, bool reverse) : map_(map), reverse_(reverse) { out_.reserve(2 * kBlock); }

    void line(std::string_view text) {
        ++number_;
        if (text.size() > kLongestLine) fail("longer than " + std::to_string(kLongestLine) + " bytes");
        if (number_ == 1) text = without_utf8_mark(text);
        std::string_view rest = text;
        const std::string_view first = next_word(rest);
        if (first.empty() || first.front() == '#') {
            out_.append(text);
            if (!out_.empty() && out_.back() == '\r') out_.pop_back();
            out_ += '\n';
            return;
        }
        double a = 0.0, b = 0.0;
        take(first, a);
        take(next_word(rest), b);
        const std::string_view further = next_word(rest);
        if (!further.empty()) fail(printable(further) + " follows the two numbers");
        const WorldPoint result = reverse_ ? map_.to_image(a, b) : map_.to_world(a, b);
        if (!std::isfinite(result.X) || !std::isfinite(result.Y)) fail("the point cannot be projected");
        put(result.X, ' ');
        put(result.Y, '\n');
        if (out_.size() >= kBlock) flush();
    }

    void flush() {
        const std::size_t written = std::fwrite(out_.data(), 1, out_.size(), stdout);
        const bool whole = written == out_.size() && std::ferror(stdout) == 0;
        out_.clear();
        if (!whole) throw InputFault("standard output cannot be written");
    }

    [[noreturn]] void end_with(const std::string& why) {
        flush();
        std::fflush(stdout);
        throw InputFault(why);
    }

private:
    [[noreturn]] void fail(const std::string& why) {
        end_with("line " + std::to_string(number_) + ": " + why);
    }
    void take(std::string_view word, double& value) {
        if (to_finite(word, value)) return;
        fail(word.empty() ? "two numbers are wanted, here is one" : printable(word) + " is not a number");
    }
    void put(double value, char after) {
        char text[32];
        // The sum with 0 makes minus zero plain.
        const auto end =
            std::to_chars(text, text + sizeof text, value + 0.0, std::chars_format::general, kDigits);
        *end.ptr = after;
        out_.append(text, static_cast<std::size_t>(end.ptr - text) + 1);
    }

    ImageMap& map_;
    bool reverse_;
    long long number_ = 0;
    std::string out_;
};

}  // namespace

void project_points(ImageMap& map, bool reverse) {
    Projector projector(map, reverse);
    std::vector<char> block(kBlock + kLongestLine);
    std::size_t kept = 0;
    for (;;) {
        const std::size_t got = std::fread(block.data() + kept, 1, kBlock, stdin);
        std::string_view text(block.data(), kept + got);
        for (std::size_t end = 0; (end = text.find('\n')) != std::string_view::npos;) {
            projector.line(text.substr(0, end));
            text.remove_prefix(end + 1);
        }
        if (got < kBlock && std::ferror(stdin) != 0) projector.end_with("standard input cannot be read");
        // A beginning that is too long already is refused as a line, and the block has no room for more.
        if (text.size() > kLongestLine || (got < kBlock && !text.empty())) projector.line(text);
        if (got < kBlock) break;
        kept = text.size();
        std::memmove(block.data(), text.data(), kept);
    }
    projector.flush();
}

}  // namespace plx::tool
