#include "plxutils/converters/finish_report.h"

#include <algorithm>

#include "converters/model_state.h"

namespace plx {

namespace {

std::string counted(std::size_t count, const char* noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

void check_porosity_count(ConverterFactory& factory, const ConversionRequest& request) {
    const std::size_t given = request.porosities;
    const auto layers = static_cast<std::size_t>(std::max(factory.nlay, 0));
    // The values are fitted to the layers when they are written, and not when the model has its own.
    const bool written = factory.default_porosity.GetSize() == factory.nlay;
    if (given <= 1 || layers == 0 || given == layers || !written) return;
    factory.report.warnings.push_back(request.porosity_name + " has " + counted(given, "value") + " for " +
                                      counted(layers, "layer") + ": " +
                                      (given < layers ? "the last one serves the remaining layers"
                                                      : "those beyond the layers are left out"));
}

/// What was written as asked for, and is hardly what was meant.
void check_contents(ConverterFactory& factory, const ConversionRequest& request) {
    const ModelState& model = plx_model_state(factory);
    // Without a grid there are no results, and its errors tell more.
    if (!is_whole(model.geometry, model.size())) return;
    for (std::size_t i = 0; i < request.named.size(); ++i) {
        // The layers have values of their own when the model has none, which are 0.0 when none were given.
        if (request.named[i] && conversion_outputs()[i].flag == &ConverterFactory::out_porosity &&
            request.porosities == 0 && factory.default_porosity.GetSize() == factory.nlay) {
            factory.report.warnings.emplace_back("no porosity is known; 0.0 was written");
        }
    }
    if (factory.crop_to_extents && factory.report.cells == 0) {
        factory.report.warnings.emplace_back("no active cell lies in the extents");
    }
}

void add_missing(ConverterFactory& factory, const ConversionRequest& request) {
    ConversionReport& report = factory.report;
    for (std::size_t i = 0; i < request.named.size(); ++i) {
        const ConversionOutput& output = conversion_outputs()[i];
        // A conversion clears the choices that it cannot serve, but leaves MT3D on.
        const bool served = factory.*output.flag &&
                            (output.flag != &ConverterFactory::out_mt3d || report.transport_times > 0);
        if (request.named[i] && !served) {
            report.errors.push_back(std::string("output '") + output.name +
                                    "' was asked for, but the model has none");
        }
    }
    if (report.errors.empty() && report.steps == 0 && report.transport_times == 0) {
        report.errors.emplace_back(
            "no field file was written, only the mesh: the model has no saved time steps");
    }
}

}  // namespace

const ConversionOutputs& conversion_outputs() {
    static constexpr ConversionOutputs kOutputs{{
        {"elevation", &ConverterFactory::out_elevation},
        {"geo_layer", &ConverterFactory::out_geo_layer},
        {"head_nodes", &ConverterFactory::out_head_nodes},
        {"ccf", &ConverterFactory::out_ccf},
        {"elev_top", &ConverterFactory::out_elev_top},
        {"elev_bottom", &ConverterFactory::out_elev_bottom},
        {"material", &ConverterFactory::out_material},
        {"porosity", &ConverterFactory::out_porosity},
        {"head_cells", &ConverterFactory::out_head_cells},
        {"boundary_flows", &ConverterFactory::out_boundary_flows},
        {"mt3d", &ConverterFactory::out_mt3d},
    }};
    return kOutputs;
}

void finish_report(ConverterFactory& factory, const ErrorTexts& heard, const ConversionRequest& request) {
    check_porosity_count(factory, request);
    check_contents(factory, request);
    factory.report.errors = heard.merged_with(factory.report);
    add_missing(factory, request);
}

}  // namespace plx
