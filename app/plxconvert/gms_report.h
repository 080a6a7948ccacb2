#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace plx::tool {

/// What came out of the conversion of a GMS project.
struct GmsReport {
    struct File {
        std::string path;         ///< native
        std::uintmax_t size = 0;  ///< bytes on disk
    };
    std::string project, place;  ///< native paths
    std::string kind;            ///< "text" or "hdf5"
    std::vector<File> files;
    std::int64_t bytes = 0;  ///< before compression
    std::vector<std::string> warnings, errors;
    double seconds = 0.0;
};

/// Prints the files written and how much there is, to standard output.
void print_report(const GmsReport& report);
/// The same as one JSON object, with the errors.
void print_report_json(const GmsReport& report);

}  // namespace plx::tool
