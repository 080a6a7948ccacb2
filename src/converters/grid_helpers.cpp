#include "converters/grid_helpers.h"

#include <algorithm>
#include <cstdio>
#include <string>

#include "converters/model_writer.h"
#include "core/text_number.h"

namespace plx {

void store_ibound(ModelState& model, int layer, const std::vector<double>& values) {
    const ConverterFactory& f = model.factory;
    const GridSize size = model.size();
    const bool any = f.reading_rules.any_nonzero_ibound;
    const bool known = !model.geometry.column_edges.empty();
    const auto& xs = model.geometry.column_edges;
    const auto& ys = model.geometry.row_edges;
    const VX4X4Matrix transform = grid_transform(f);
    std::size_t i = 0;
    const std::size_t first = static_cast<std::size_t>(layer) * size.per_layer();
    for (std::size_t row = 0; row < static_cast<std::size_t>(size.rows); ++row) {
        for (std::size_t column = 0; column < static_cast<std::size_t>(size.columns); ++column, ++i) {
            const int ibound = truncate_to_int(values[i]);
            bool inside = true;
            if (f.crop_to_extents && ibound != 0) {
                double x = known ? (xs[column] + xs[column + 1]) * 0.5 : static_cast<double>(column);
                double y = known ? (ys[row] + ys[row + 1]) * 0.5 : static_cast<double>(row);
                double z = 0.0;
                transform.transformPoint(x, y, z);
                inside = x >= f.x_min && x <= f.x_max && y >= f.y_min && y <= f.y_max;
            }
            model.flags.set(first + i, ibound, inside, any);
            if (any && inside && ibound != 0 && ibound != 1 && ibound != -1) {
                model.factory.report.rules_used.any_nonzero_ibound = true;
            }
        }
    }
}

namespace {

void check_widths(ModelState& model, const std::string& name, const std::vector<double>& widths) {
    const auto bad = std::find_if(widths.begin(), widths.end(), [](double w) { return !(w > 0.0); });
    if (bad == widths.end()) return;
    model.fail(name + ": width " + std::to_string(bad - widths.begin() + 1) + " is " + std::to_string(*bad));
}

}  // namespace

void store_geometry(ModelState& model, const std::string& file, const std::vector<double>& delr,
                    const std::vector<double>& delc, std::vector<GridGeometry::Surface> tops,
                    std::vector<GridGeometry::Surface> bottoms) {
    ConverterFactory& f = model.factory;
    const bool reversed = f.row_order == -1;
    const bool true_rows = f.reading_rules.true_row_edges;
    GridGeometry& g = model.geometry;
    check_widths(model, file + ": DELR", delr);
    check_widths(model, file + ": DELC", delc);
    g.column_edges = running_sums(delr);
    g.row_edges = row_edges(delc, reversed, true_rows);
    if (true_rows && g.row_edges != row_edges(delc, reversed, false))
        f.report.rules_used.true_row_edges = true;
    g.tops = std::move(tops);
    g.bottoms = std::move(bottoms);
}

void store_periods(ModelState& model, StressPeriods periods) {
    ConverterFactory& f = model.factory;
    model.periods = std::move(periods);
    f.total_steps = model.periods.total_steps();
    model.times.clear();
    std::printf("setting time conversion size to %d stress_per, %d max_steps\n", f.nper,
                model.periods.largest_steps());
}

}  // namespace plx
