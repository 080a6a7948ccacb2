#pragma once

#include <map>
#include <string>

namespace plx {

/// Days of one model time unit by its word: "yr", "d", "h", "min", "s"; 1.0 for any other word.
///
/// @param full_words  the words of discretization files count too: "seconds", "minutes", "hours", "days",
/// "years".
/// @param used        set when that changed the factor.
double day_factor(const std::string& word, bool full_words, bool& used);

/// True for a word that day_factor knows.
bool is_time_word(const std::string& word, bool full_words);

/// Time with three decimals in which "." is "_": 365.25 gives "365_250".
std::string time_text(double time);

/// Time texts that no two steps share: the second step with a text gets "_2", the third "_3".
class UniqueTimeTexts {
public:
    std::string next(double time);
    /// The same for a text of the caller's.
    std::string unique(std::string text);

private:
    std::map<std::string, int> seen_;
};

/// Text of the date `days` after `start_date` (days since 30 December 1899); "Invalid DateTime" when there is
/// no such date or when the span is longer than dates can be apart.
std::string step_date(double start_date, double days);

}  // namespace plx
