#include "plxconvert/gms_report.h"

#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "plxconvert/info_output.h"
#include "plxconvert/print_cut.h"

namespace plx::tool {

void print_report(const GmsReport& report) {
    constexpr double kMegabyte = 1e6;
    std::printf("%s: %s\n  %12s\n", report.project.c_str(), gms_title(report.kind).c_str(), "bytes");
    print_cut(report.files.size(), "  ", [&report](std::size_t i) {
        const GmsReport::File& file = report.files[i];
        std::printf("  %12llu  %s\n", static_cast<unsigned long long>(file.size), file.path.c_str());
    });
    std::printf("  %-10s%12zu\n", "files", report.files.size());
    std::printf("  %-10s%12.2f\n", "MB", static_cast<double>(report.bytes) / kMegabyte);
    std::printf("  %-10s%12.2f\n", "seconds", report.seconds);
    std::printf("results in %s\n", report.place.c_str());
}

void print_report_json(const GmsReport& report) {
    using Json = nlohmann::ordered_json;
    Json json = {{"project", report.project}, {"kind", "gms " + report.kind}, {"dest", report.place},
                 {"files", Json::array()},    {"bytes", report.bytes},        {"warnings", report.warnings},
                 {"errors", report.errors},   {"seconds", report.seconds}};
    for (const GmsReport::File& file : report.files) {
        json["files"].push_back({{"file", file.path}, {"bytes", file.size}});
    }
    // Names are bytes of any code page; what is not UTF-8 is replaced.
    std::printf("%s\n", json.dump(2, ' ', false, Json::error_handler_t::replace).c_str());
}

}  // namespace plx::tool
