#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <nlohmann/json.hpp>

#include "plxconvert/info_json.h"
#include "plxconvert/info_output.h"

namespace plx::tool {

namespace {

using Json = nlohmann::ordered_json;

Json describe(const ResultSummary& result) {
    Json json = {{"file", result.file},
                 {"kind", result.kind},
                 {"label", result.label},
                 {"record_markers", result.record_markers},
                 {"real_bytes", result.real_bytes},
                 {"layers", result.layers},
                 {"rows", result.rows},
                 {"columns", result.columns},
                 {"steps", Json::array()},
                 {"terms", Json::array()},
                 {"problem", result.problem}};
    for (const SavedStep& step : result.steps) {
        const Json time = step.time < 0.0 ? Json() : Json(step.time);
        const auto count = [](int number) { return number > 0 ? Json(number) : Json(); };
        json["steps"].push_back({{"period", count(step.period)}, {"step", count(step.step)}, {"time", time}});
    }
    if (result.kind == "concentrations") json["species"] = result.species;
    for (const TermSummary& term : result.terms) {
        json["terms"].push_back({{"label", term.label},
                                 {"form", term.form},
                                 {"records", term.records},
                                 {"entries", term.entries}});
    }
    return json;
}

Json describe(const LayerSummary& layer, std::size_t number) {
    return {{"layer", number},
            {"active_cells", layer.active},
            {"constant_head_cells", layer.constant_head},
            {"top_min", layer.top_min},
            {"top_max", layer.top_max},
            {"bottom_min", layer.bottom_min},
            {"bottom_max", layer.bottom_max}};
}

}  // namespace

Json to_json(const ModelDescription& model) {
    const ModelSummary& summary = model.summary;
    Json json = {{"file", model.file},
                 {"kind", model.kind},
                 {"grid",
                  {{"layers", summary.layers},
                   {"rows", summary.rows},
                   {"columns", summary.columns},
                   {"width", summary.width},
                   {"height", summary.height}}},
                 {"origin", {summary.x_origin, summary.y_origin}},
                 {"rotation", summary.rotation},
                 {"start", summary.start.empty() ? Json() : Json(summary.start)},
                 {"length_units", summary.length_units},
                 {"time_units", summary.time_units},
                 {"active_cells", 0},
                 {"constant_head_cells", 0},
                 {"layers", Json::array()},
                 {"stress_periods", Json::array()},
                 {"results", Json::array()}};
    std::int64_t active = 0;
    std::int64_t constant_head = 0;
    for (const LayerSummary& layer : summary.layer) {
        json["layers"].push_back(describe(layer, json["layers"].size() + 1));
        active += layer.active;
        constant_head += layer.constant_head;
    }
    json["active_cells"] = active;
    json["constant_head_cells"] = constant_head;
    for (const PeriodSummary& period : summary.periods) {
        json["stress_periods"].push_back({{"period", json["stress_periods"].size() + 1},
                                          {"length", period.length},
                                          {"steps", period.steps},
                                          {"steady", period.steady}});
    }
    for (const ResultSummary& result : summary.results) json["results"].push_back(describe(result));
    return json;
}

void print(const Json& json) {
    std::printf("%s\n", json.dump(2, ' ', false, Json::error_handler_t::replace).c_str());
}

void print_json(const ModelDescription& model) { print(to_json(model)); }

void print_json(const ResultSummary& result) { print(describe(result)); }

}  // namespace plx::tool
