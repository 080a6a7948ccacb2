#include "converters/boundary_flows.h"

#include <array>
#include <cstdio>

namespace plx {
namespace {

struct Section {
    BudgetSlot slot;
    bool ConverterFactory::*present;
    const char* status;
    const char* line_end;
};

constexpr std::array<Section, 8> kSections = {{
    {kDrains, &ConverterFactory::has_drains, "writing drains\t\t\t\t\t\t\t\t\t\t\t\t\t\r", " 6.0\n"},
    {kWells, &ConverterFactory::has_wells, "writing wells\t\t\t\t\t\t\t\t\t\t\t\t\t\r", " 0.0\n"},
    {kConstantHead, &ConverterFactory::has_constant_head, "writing constant head\t\t\t\t\t\t\t\t\t\t\t\r",
     "\n"},
    {kGeneralHead, &ConverterFactory::has_general_head, "writing general head\t\t\t\t\t\t\t\t\t\t\t\r", "\n"},
    {kRiverLeakage, &ConverterFactory::has_river_leakage, "writing river leakage\t\t\t\t\t\t\t\t\t\t\t\r",
     "\n"},
    {kRecharge, &ConverterFactory::has_recharge, "writing recharge\t\t\t\t\t\t\t\t\t\t\t\t\r", "\n"},
    {kEt, &ConverterFactory::has_et, "writing et\t\t\t\t\t\t\t\t\t\t\t\t\t\t\r", "\n"},
    {kStorage, &ConverterFactory::has_storage, "writing storage\t\t\t\t\t\t\t\t\t\t\t\t\t\r", "\n"},
}};

void write_term(BlockWriter& out, const ModelState& model, const VX4X4Matrix& transform,
                const TermCells& term, const char* line_end) {
    const GridSize size = model.size();
    const auto columns = static_cast<std::size_t>(size.columns);
    const auto& x_edges = model.geometry.column_edges;
    const auto& y_edges = model.geometry.row_edges;
    for (std::size_t i = 0; i < term.cells.size(); ++i) {
        const auto cell = static_cast<std::size_t>(term.cells[i]);
        const std::size_t layer = cell / size.per_layer();
        const std::size_t in_layer = cell % size.per_layer();
        const std::size_t row = in_layer / columns, column = in_layer % columns;
        double x = (x_edges[column] + x_edges[column + 1]) * 0.5;
        double y = (y_edges[row] + y_edges[row + 1]) * 0.5;
        double z =
            ((*model.geometry.tops[layer])[in_layer] + (*model.geometry.bottoms[layer])[in_layer]) * 0.5;
        transform.transformPoint(x, y, z);
        out.fixed(x).put(' ').fixed(y).put(' ').fixed(z).put(' ').fixed(term.flows[i]).text(line_end);
    }
}

}  // namespace

void write_flow_header(BlockWriter& out, const ConverterFactory& factory) {
    out.text("# PLX\\GRV generated file\nGRID\n");
    out.fixed(factory.rotation)
        .put(' ')
        .fixed(factory.x_origin)
        .put(' ')
        .fixed(factory.y_origin)
        .text(" 0.0\n");
    out.text("TIME ").text(factory.time_units.c_str()).put('\n');
}

void write_boundary_flows(BlockWriter& out, const ModelState& model, const VX4X4Matrix& transform,
                          const std::string& date) {
    const ConverterFactory& factory = model.factory;
    if (factory.total_steps > 1) {
        out.text("DATE ").text(date).put('\n');
    } else {
        out.text("STEADY_STATE\n");
    }
    for (const Section& section : kSections) {
        if (!(factory.*section.present)) continue;
        std::fputs(section.status, stdout);
        out.text(budget_terms()[static_cast<std::size_t>(section.slot)].section).put('\n');
        if (model.geometry.tops.empty()) continue;
        write_term(out, model, transform, model.flows.terms[static_cast<std::size_t>(section.slot)],
                   section.line_end);
    }
}

}  // namespace plx
