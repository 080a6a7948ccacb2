#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "plxutils/converters/ErrorTexts.h"

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

    /// What was heard so far.
    const ErrorTexts& heard() const { return heard_; }
    /// See ErrorTexts.
    std::vector<std::string> merged_with(const ConversionReport& report) const {
        return heard_.merged_with(report);
    }
    std::vector<std::string> texts() const { return heard_.texts(); }

private:
    static void keep(const char* message);

    ErrorTexts heard_;
};

}  // namespace plx::tool
