#include "formats/concentration_records.h"

#include <array>

#include "formats/record_checks.h"

namespace plx {

ConcentrationField read_concentration_header(RecordFile& in, LayerHeader& header) {
    using Field = ConcentrationField;
    std::array<char, kLabelBytes> label{};
    header = {};
    if (!in.read_int(header.transport_step)) return Field::kTransportStep;
    if (!in.read_int(header.step)) return Field::kStep;
    if (!in.read_int(header.period)) return Field::kPeriod;
    if (!in.read_real(header.total_time)) return Field::kTime;
    if (!in.read(label.data(), label.size())) return Field::kText;
    header.label.assign(label.data(), label.size());
    if (!in.read_int(header.columns)) return Field::kColumns;
    if (!in.read_int(header.rows)) return Field::kRows;
    return in.read_int(header.layer) ? Field::kNone : Field::kLayer;
}

std::string concentration_grid_fault(const LayerHeader& header, const GridSize& grid, int layer) {
    if (header.columns != grid.columns || header.rows != grid.rows) {
        return "concentrations of " + std::to_string(header.rows) + " rows and " +
               std::to_string(header.columns) + " columns, the model has " + std::to_string(grid.rows) +
               " and " + std::to_string(grid.columns);
    }
    if (header.layer == layer) return {};
    return "concentrations of layer " + std::to_string(header.layer) + " where layer " +
           std::to_string(layer) + " of " + std::to_string(grid.layers) + " must follow";
}

std::string check_first_concentrations(RecordFile& in, const GridSize& grid, bool any_layer,
                                       std::int64_t& time_bytes) {
    time_bytes = 0;
    const auto layer_bytes = static_cast<std::int64_t>(grid.per_layer()) * in.layout().real_bytes;
    std::string fault;
    in.seek(0);
    for (int k = 0; k <= grid.layers && fault.empty(); ++k) {
        const std::int64_t position = in.position();
        if (k == grid.layers) time_bytes = position;
        LayerHeader header;
        if (read_concentration_header(in, header) != ConcentrationField::kNone) break;
        fault = concentration_grid_fault(header, grid, any_layer ? header.layer : k % grid.layers + 1);
        if (!fault.empty()) fault = in.place(position) + ": " + fault;
        if (!in.skip(layer_bytes)) break;
    }
    in.seek(0);
    return fault;
}

}  // namespace plx
