#include "converters/time_axis.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

#include "core/text_number.h"
#include "platform/platform.h"

namespace plx {
namespace {

struct TimeWord {
    std::string_view brief, full;
    double days;
};

constexpr std::array<TimeWord, 5> kTimeWords = {{
    {"yr", "years", 365.2425116},
    {"d", "days", 1.0},
    {"h", "hours", 1.0 / 24.0},
    {"min", "minutes", 1.0 / 1440.0},
    {"s", "seconds", 1.0 / 86400.0},
}};

constexpr double kLongestSpan = 3615897.0;

}  // namespace

bool is_time_word(const std::string& word, bool full_words) {
    return std::any_of(kTimeWords.begin(), kTimeWords.end(), [&](const TimeWord& known) {
        return word == known.brief || (full_words && word == known.full);
    });
}

double day_factor(const std::string& word, bool full_words, bool& used) {
    for (const TimeWord& known : kTimeWords) {
        if (word == known.brief) return known.days;
        if (full_words && word == known.full) {
            if (known.days != 1.0) used = true;
            return known.days;
        }
    }
    return 1.0;
}

std::string time_text(double time) {
    std::array<char, kFixedMax> buffer;
    std::string text(buffer.data(), format_fixed3(buffer.data(), time));
    std::replace(text.begin(), text.end(), '.', '_');
    return text;
}

std::string UniqueTimeTexts::next(double time) { return unique(time_text(time)); }

std::string UniqueTimeTexts::unique(std::string text) {
    const int count = ++seen_[text];
    if (count > 1) text.append("_").append(std::to_string(count));
    return text;
}

std::string step_date(double start_date, double days) {
    if (!(std::fabs(days) <= kLongestSpan)) return "Invalid DateTime";
    return platform::date_text(start_date + days);
}

}  // namespace plx
