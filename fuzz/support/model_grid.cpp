#include "support/model_grid.h"

#include <filesystem>

#include "plxutils/converters/ModelSummary.h"

namespace plx::fuzz {
namespace {

constexpr GridSize kGrid{2, 3, 4};

/// Arrays for HDF5 records, in the folder once.
void copy_arrays() {
    static const bool done = std::filesystem::copy_file(
        std::string(PLX_EXAMPLES) + "/valley/valley_arrays.h5", folder() + "/valley.h5");
    (void)done;
}

}  // namespace

ModelTexts::ModelTexts(const Input& input) : streams_(files_, [] { return stored(folder()); }) {
    copy_arrays();
    const auto parts = input.parts(3);
    streams_.open_unit(kFile, stored(write_file("site.txt", parts[0])));
    streams_.open_unit(kOther, stored(write_file("other.txt", parts[1])));
    write_file("values.dat", parts[2]);
}

SmallModel::SmallModel(const Input& input) : model(plx_model_state(factory)) {
    static const std::string project = write_file("site.nam", "");
    factory.project_file = VXFile(project.c_str());
    if (input.flag(0)) factory.reading_rules = ReadingRules::modflow();
    factory.nlay = kGrid.layers;
    factory.nrow = kGrid.rows;
    factory.ncol = kGrid.columns;
    factory.nper = 2;
    model.periods.periods = {{10.0, 1, 1.0, true}, {20.0, 3, 1.5, false}};
    factory.total_steps = model.periods.total_steps();
    model.no_flow_head = 999.0;
    model.has_no_flow_head = true;
    model.dry_head = 0.0;
    model.flags.resize(kGrid);
    for (std::size_t cell = 0; cell < kGrid.cells(); ++cell) {
        model.flags.set(cell, cell % 5 == 0 ? -1 : static_cast<int>(cell % 3), true, true);
    }
    for (int c = 0; c <= kGrid.columns; ++c) model.geometry.column_edges.push_back(c);
    for (int r = 0; r <= kGrid.rows; ++r) model.geometry.row_edges.push_back(kGrid.rows - r);
    for (int k = 0; k <= kGrid.layers; ++k) {
        const auto surface = std::make_shared<const std::vector<double>>(kGrid.per_layer(), -k);
        if (k < kGrid.layers) model.geometry.tops.push_back(surface);
        if (k > 0) model.geometry.bottoms.push_back(surface);
    }
}

void SmallModel::open(int unit, const char* name, std::string_view bytes) {
    model.streams.open_unit(unit, stored(write_file(name, bytes)));
}

void SmallModel::open_flows(std::string_view bytes) {
    open(51, "site.cbb", bytes);
    factory.ccf_unit = 51;
}

void SmallModel::load_some_flows(void (*load)(ModelState&)) {
    int loaded = 0;
    for (const auto& [step, slots] : model.flows.positions) {
        model.current = {.period = step.first, .step = step.second};
        load(model);
        for (const TermCells& term : model.flows.terms) {
            for (const int cell : term.cells)
                if (cell < 0 || static_cast<std::size_t>(cell) >= model.size().cells()) __builtin_trap();
        }
        if (++loaded == 10) break;
    }
    summarize_result_file((folder() + "/site.cbb").c_str());
}

}  // namespace plx::fuzz
