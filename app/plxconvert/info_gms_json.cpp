#include <cmath>
#include <nlohmann/json.hpp>

#include "plxconvert/info_json.h"
#include "plxconvert/info_output.h"

namespace plx::tool {

namespace {

using Json = nlohmann::ordered_json;

/// null for what JSON has no number for.
Json finite(double value) { return std::isfinite(value) ? Json(value) : Json(); }

Json describe(const GmsDatasetSummary& dataset) {
    Json json = {{"name", dataset.name},
                 {"object_type", dataset.object_type},
                 {"object_id", dataset.object_id},
                 {"components", dataset.components},
                 {"values", dataset.values},
                 {"times", Json::array()},
                 {"min", finite(dataset.min)},
                 {"max", finite(dataset.max)},
                 {"file", dataset.file}};
    for (const double time : dataset.times) {
        json["times"].push_back(finite(time));
    }
    return json;
}

Json describe(const GmsObjectSummary& object) {
    Json json = {{"type", object.type},           {"name", object.name},           {"id", object.id},
                 {"file", object.file},           {"converted", object.converted}, {"points", object.points},
                 {"triangles", object.triangles}, {"datasets", Json::array()}};
    for (const GmsDatasetSummary& dataset : object.datasets) json["datasets"].push_back(describe(dataset));
    return json;
}

}  // namespace

void print_json(const GmsDescription& project) {
    const GmsProjectSummary& summary = project.summary;
    Json json = {{"file", project.file},
                 {"kind", "gms " + summary.kind},
                 {"files", Json::array()},
                 {"objects", Json::array()},
                 {"datasets", Json::array()},
                 {"materials", Json::array()},
                 {"materials_used", summary.materials_used},
                 {"problem", summary.problem},
                 {"errors", project.errors}};
    for (const GmsFileSummary& file : summary.files) {
        json["files"].push_back({{"keyword", file.keyword}, {"name", file.name}, {"exists", file.exists}});
    }
    for (const GmsObjectSummary& object : summary.objects) json["objects"].push_back(describe(object));
    for (const GmsDatasetSummary& dataset : summary.datasets) json["datasets"].push_back(describe(dataset));
    for (const GmsMaterialSummary& material : summary.materials) {
        json["materials"].push_back({{"number", material.number}, {"name", material.name}});
    }
    if (summary.kind != "datasets") json["model"] = project.model ? to_json(*project.model) : Json();
    print(json);
}

}  // namespace plx::tool
