#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace plx::tool {

/// ASCII letters in lower case.
std::string lower(std::string text);
/// A text without the mark that some editors put before it; it is no part of the first word.
std::string_view without_utf8_mark(std::string_view text);
/// The parts between separators, blanks around them removed; one empty part for an empty text.
std::vector<std::string> split(const std::string& text, char separator);
/// Reads a whole word as a finite decimal number. Free of the locale.
bool parse_number(std::string_view word, double& number);
/// The word without a plus sign before a number.
std::string_view without_plus(std::string_view word);
/// Reads a list of decimal numbers; false when a part is anything else or not finite. Free of the locale.
bool parse_numbers(const std::string& list, std::vector<double>& numbers);
/// Checks XMIN YMIN XMAX YMAX of an option; none given is fine.
///
/// @throws std::invalid_argument with a text for the user.
void check_rectangle(const std::string& option, const std::vector<double>& edges);
/// "1 step", "2 steps".
std::string counted(long long count, const std::string& noun);

}  // namespace plx::tool
