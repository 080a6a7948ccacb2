#pragma once

#include <string>
#include <vector>

namespace plx::tool {

/// Separator of lines whose cells stand between runs of blanks and tabs.
constexpr char kBlanks = ' ';

/// The cells of a line, up to a comment: a '#' at the beginning of the line, of a cell or of a word in it.
///
/// Blanks around a cell do not belong to it. A cell that begins with a double quote or an apostrophe runs to
/// the next such mark that ends a word, and may hold separators; a double quote in it may be doubled. With a
/// separator other than kBlanks every separator counts, so that cells may be empty.
/// @return no cell for an empty line and for a comment
std::vector<std::string> cells_of(const std::string& line, char separator);

/// Reads a whole word as a finite decimal number, a plus sign allowed. Free of the locale.
bool whole_number(const std::string& word, double& number);
/// Reads a whole word as a number no farther than kFarthest.
bool coordinate(const std::string& word, double& number);
/// True for a number, also one behind a '<' as for a detection limit; that is not below 0 then.
bool is_measured(std::string word);

}  // namespace plx::tool
