#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "support/result_files.h"

namespace plx::test {

/// An entry of a list in a link file; layer, row and column from 1.
struct LinkEntry {
    int layer, row, column;
    double flow;
    bool grouped = false;  ///< a group number and a second value follow
};

/// Writes a flow-transport link file byte by byte, in the pieces in which the models write it.
class LinkWriter {
public:
    explicit LinkWriter(ResultStyle style = {}, bool old_version = false);
    const std::string& bytes() const { return bytes_; }

    void array(const ResultStamp& at, std::string_view text, const std::vector<double>& values);
    void list(const ResultStamp& at, std::string_view text, const std::vector<LinkEntry>& entries);
    void layers(const ResultStamp& at, std::string_view text, const std::vector<int>& layers,
                const std::vector<double>& values);

private:
    void integers(const std::vector<int>& values);
    void reals(const std::vector<double>& values);
    void header(const ResultStamp& at, std::string_view text);
    void end_record();

    ResultStyle style_;
    std::string bytes_, record_;
};

}  // namespace plx::test
