#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

#include "plxconvert/info_output.h"
#include "plxconvert/print_cut.h"
#include "plxconvert/words.h"

namespace plx::tool {

namespace {

void print_layers(const ModelSummary& model) {
    std::printf("\n  %5s %12s %14s %27s %27s\n", "layer", "active", "constant head", "top", "bottom");
    print_cut(model.layer.size(), "  ", [&model](std::size_t i) {
        const LayerSummary& layer = model.layer[i];
        std::printf("  %5zu %12lld %14lld %12.3f .. %11.3f %12.3f .. %11.3f\n", i + 1,
                    static_cast<long long>(layer.active), static_cast<long long>(layer.constant_head),
                    layer.top_min, layer.top_max, layer.bottom_min, layer.bottom_max);
    });
}

/// Equal periods in a row share a line.
struct PeriodGroup {
    std::size_t first, last;
};

std::vector<PeriodGroup> group_periods(const std::vector<PeriodSummary>& periods) {
    std::vector<PeriodGroup> groups;
    for (std::size_t i = 0; i < periods.size(); ++i) {
        const PeriodSummary& period = periods[i];
        const bool same = i > 0 && period.length == periods[i - 1].length &&
                          period.steps == periods[i - 1].steps && period.steady == periods[i - 1].steady;
        if (same) {
            groups.back().last = i;
        } else {
            groups.push_back({i, i});
        }
    }
    return groups;
}

void print_periods(const ModelSummary& model) {
    std::printf("\n  %-14s %14s %8s\n", "stress period", "length", "steps");
    const auto groups = group_periods(model.periods);
    print_cut(groups.size(), "  ", [&](std::size_t i) {
        const PeriodGroup& group = groups[i];
        const PeriodSummary& period = model.periods[group.first];
        std::string numbers = std::to_string(group.first + 1);
        if (group.last > group.first) numbers += " to " + std::to_string(group.last + 1);
        std::printf("  %-14s %14g %8d   %s\n", numbers.c_str(), period.length, period.steps,
                    period.steady ? "steady state" : "transient");
    });
}

std::string result_heading(const ResultSummary& result) {
    std::string text = result.file + ": " + result.kind;
    if (!result.species.empty()) text += ", species " + result.species;
    if (!result.label.empty() && result.kind != "flows") text += ", label " + result.label;
    if (result.layers > 0) {
        text += ", " + counted(result.layers, "layer") + ", " + counted(result.rows, "row") + ", " +
                counted(result.columns, "column");
    }
    if (!result.steps.empty()) {
        const char* noun = result.kind == "concentrations" ? "saved time" : "saved step";
        text += ", " + counted(static_cast<long long>(result.steps.size()), noun);
    }
    if (result.record_markers) text += ", record markers";
    if (result.real_bytes == 8) text += ", 64-bit reals";
    return text;
}

void print_result(const ResultSummary& result) {
    std::printf("\n%s\n", result_heading(result).c_str());
    if (!result.problem.empty()) std::printf("  problem: %s\n", result.problem.c_str());
    if (!result.steps.empty()) std::printf("  %6s %6s %16s\n", "period", "step", "time");
    print_cut(result.steps.size(), "  ", [&result](std::size_t i) {
        const SavedStep& step = result.steps[i];
        char time[32] = "unknown";
        if (step.time >= 0.0) std::snprintf(time, sizeof time, "%.9g", step.time);
        const auto count = [](int number) { return number > 0 ? std::to_string(number) : "-"; };
        std::printf("  %6s %6s %16s\n", count(step.period).c_str(), count(step.step).c_str(), time);
    });
    if (result.terms.empty()) return;
    std::printf("  %-18s %-12s %9s %14s\n", "budget term", "form", "records", "entries");
    for (const TermSummary& term : result.terms) {
        std::printf("  %-18s %-12s %9d %14lld\n", term.label.c_str(), term.form.c_str(), term.records,
                    static_cast<long long>(term.entries));
    }
}

}  // namespace

void print_text(const ModelDescription& model) {
    const ModelSummary& summary = model.summary;
    std::int64_t active = 0;
    for (const LayerSummary& layer : summary.layer) active += layer.active;
    const auto named = [](const std::string& unit) { return unit.empty() ? "not given" : unit.c_str(); };
    std::printf("%s: %s model\n\n", model.file.c_str(), model.title.c_str());
    std::printf("  %-8s%s, %s, %s; %s\n", "grid", counted(summary.layers, "layer").c_str(),
                counted(summary.rows, "row").c_str(), counted(summary.columns, "column").c_str(),
                counted(active, "active cell").c_str());
    std::printf("  %-8s%g wide, %g high\n", "size", summary.width, summary.height);
    std::printf("  %-8slength %s, time %s\n", "units", named(summary.length_units),
                named(summary.time_units));
    if (summary.x_origin != 0.0 || summary.y_origin != 0.0 || summary.rotation != 0.0) {
        std::printf("  %-8sx %.12g, y %.12g; rotated by %g degrees\n", "origin", summary.x_origin,
                    summary.y_origin, summary.rotation);
    }
    if (!summary.start.empty()) std::printf("  %-8s%s\n", "start", summary.start.c_str());
    print_layers(summary);
    print_periods(summary);
    if (summary.results.empty()) std::printf("\nno result files\n");
    for (const ResultSummary& result : summary.results) print_result(result);
}

void print_text(const ResultSummary& result) { print_result(result); }

}  // namespace plx::tool
