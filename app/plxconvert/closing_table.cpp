#include "plxconvert/closing_table.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include "plxconvert/paths.h"
#include "plxutils/core/VXNativePath.h"

namespace plx::tool {

namespace {

constexpr double kMegabyte = 1e6;

void print_count(const char* name, std::int64_t count) {
    std::printf("  %-10s%12lld\n", name, static_cast<long long>(count));
}

double bytes_on_disk(const ConversionReport& report) {
    double bytes = 0.0;
    for (const std::string& file : report.files) {
        std::error_code fault;
        const auto size = std::filesystem::file_size(path_of(VXNativePath(file.c_str()).c_str()), fault);
        if (!fault) bytes += static_cast<double>(size);
    }
    return bytes;
}

std::string rule_names(const ReadingRules& rules) {
    int count = 0;
    const ReadingRuleName* all = reading_rule_names(count);
    std::string names;
    for (int i = 0; i < count; ++i) {
        if (rules.*all[i].flag) names += (names.empty() ? "" : ", ") + std::string(all[i].name);
    }
    return names.empty() ? "none" : names;
}

}  // namespace

void print_closing_table(const RunFacts& facts, const ConversionReport& report) {
    std::printf("%s: %s model, rules %s\n", facts.project.c_str(), facts.kind.c_str(), facts.rules.c_str());
    print_count("nodes", report.nodes);
    print_count("cells", report.cells);
    print_count("steps", report.steps);
    if (report.transport_times > 0) print_count("transport", report.transport_times);
    print_count("files", static_cast<std::int64_t>(report.files.size()));
    std::printf("  %-10s%12.2f\n", "MB", static_cast<double>(report.bytes) / kMegabyte);
    if (facts.compressed) std::printf("  %-10s%12.2f\n", "MB on disk", bytes_on_disk(report) / kMegabyte);
    std::printf("  %-10s%12.2f\n", "seconds", facts.seconds);
    print_count("warnings", static_cast<std::int64_t>(report.warnings.size()));
    std::printf("rules that changed this conversion: %s\n", rule_names(report.rules_used).c_str());
    std::printf("results in %s\n", facts.place.c_str());
    if (!facts.log.empty()) std::printf("trace in %s\n", facts.log.c_str());
}

}  // namespace plx::tool
