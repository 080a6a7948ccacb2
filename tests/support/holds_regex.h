#pragma once

#include <gmock/gmock.h>

#include <regex>
#include <string>

namespace plx::test {

/// As GoogleMock's ContainsRegex, whose expressions know no character classes on Windows.
MATCHER_P(HoldsRegex, expression, "holds the regular expression " + testing::PrintToString(expression)) {
    return std::regex_search(std::string(arg), std::regex(expression));
}

}  // namespace plx::test
