#pragma once

#include <string_view>

namespace plx::platform {

/// A value without one pair of quotes around it.
inline std::string_view without_quotes(std::string_view value) {
    if (value.size() >= 2 && (value.front() == '"' || value.front() == '\'') && value.front() == value.back())
        return value.substr(1, value.size() - 2);
    return value;
}

/// What stands in for a missing value of an ini file: cut as a value is, but for the blanks in front.
inline std::string_view ini_default(const char* fallback) {
    const std::string_view text(fallback ? fallback : "");
    return without_quotes(text.substr(0, text.find_last_not_of(' ') + 1));
}

}  // namespace plx::platform
