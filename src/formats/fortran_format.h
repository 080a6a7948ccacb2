#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "formats/array_data.h"

namespace plx {

/// A Fortran input format, for instance "(10F8.2)" or "(1X,5(F10.3,1X))".
///
/// Known are I, F, E, EN, ES, D and G with repeat counts, X, "/", the scale factor P, nested groups, BN and
/// S; T, A, L and texts are not.
class FortranFormat {
public:
    enum class Kind { kValue, kSkip, kNewLine };
    struct Item {
        Kind kind = Kind::kValue;
        int repeat = 1;
        int width = 0;     ///< columns of a value or of a gap
        int decimals = 0;  ///< digits after the point that a value without a point has
        int scale = 0;     ///< a value without an exponent is divided by 10 to this power
    };

    /// @return nothing when the text is no format of the known kind.
    static std::optional<FortranFormat> parse(std::string_view text);

    const std::vector<Item>& items() const { return items_; }
    /// The item that a new line starts with when all items are used up: the last group of the outer list.
    std::size_t restart() const { return restart_; }
    /// Values that the items take before they are used up.
    std::size_t values_per_pass() const;

private:
    friend class FormatParser;
    std::vector<Item> items_;
    std::size_t restart_ = 0;
};

/// Reads a number as a Fortran field holds it: blanks inside do not count, the exponent's letter may be
/// missing
/// ("1.5+3"), without a point the last `decimals` digits are the fraction.
bool parse_fortran_number(std::string_view text, int decimals, int scale, double& value);

/// Reads an array by the columns of a format; a blank field is 0. A field that the last line of the file does
/// not reach is missing.
ArrayFindings read_formatted(TextSource& in, const FortranFormat& format, const ArrayData& data);

}  // namespace plx
