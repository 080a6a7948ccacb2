#pragma once

#include "converters/model_state.h"
#include "support/temp_folder.h"

namespace plx::test {

/// A model "site.nam" of active unit cells in a folder of its own, as if it had been parsed.
struct GridModel {
    explicit GridModel(const GridSize& size, bool modflow_rules = false) {
        if (modflow_rules) factory.reading_rules = ReadingRules::modflow();
        factory.project_file = VXFile(folder.write("site.nam", "").c_str());
        factory.nlay = size.layers;
        factory.nrow = size.rows;
        factory.ncol = size.columns;
        model.flags.resize(size);
        for (std::size_t cell = 0; cell < size.cells(); ++cell) model.flags.set(cell, 1, true, true);
        for (int c = 0; c <= size.columns; ++c) model.geometry.column_edges.push_back(c);
        for (int r = 0; r <= size.rows; ++r) model.geometry.row_edges.push_back(size.rows - r);
        for (int k = 0; k <= size.layers; ++k) {
            const auto surface = std::make_shared<const std::vector<double>>(size.per_layer(), -k);
            if (k < size.layers) model.geometry.tops.push_back(surface);
            if (k > 0) model.geometry.bottoms.push_back(surface);
        }
    }

    TempFolder folder;
    ConverterFactory factory;
    ModelState& model = plx_model_state(factory);
    ConversionReport& report = factory.report;
    std::string printed;
};

}  // namespace plx::test
