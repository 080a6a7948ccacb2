#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "plxutils/converters/ConversionReport.h"

namespace plx::tool {

/// An input or output that cannot be used; its text is ready for print_error and the program ends with 1.
struct InputFault : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Prints "plxconvert: <text>" as a line of standard error.
void print_error(const std::string& text);
/// Prints "plxconvert: warning: <text>" as a line of standard error.
void print_warning(const std::string& text);

/// Collects what the library hands to its error hook while the object lives. One at a time.
class ErrorCollector {
public:
    ErrorCollector();
    ~ErrorCollector();
    ErrorCollector(const ErrorCollector&) = delete;
    ErrorCollector& operator=(const ErrorCollector&) = delete;

    /// The report's errors, then those of the hook that say something new; no text twice.
    std::vector<std::string> merged_with(const ConversionReport& report) const;
    /// The hook's texts alone, no text twice in a row; of very many only the first, and how many followed.
    std::vector<std::string> texts() const;

private:
    static void keep(const char* message);

    std::vector<std::string> texts_;
    long long dropped_ = 0;
};

}  // namespace plx::tool
