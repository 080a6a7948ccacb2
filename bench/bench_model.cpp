// Writes a model with results of any size: text inputs in MODFLOW 2000 form, heads and compact budget.

#include "model_grid.h"
#include "printer.h"

namespace {

using namespace bench;

constexpr double kNoFlow = 1e30;

void write_numbers(Printer& out, const Grid& grid, const std::vector<double>& values) {
    constexpr std::size_t kPerLine = 10;
    for (std::size_t cell = 0; cell < values.size(); ++cell) {
        const std::size_t column = cell % grid.columns;
        // Ten columns for each number: the values stay between 10 and 999.9999.
        out.text(values[cell] < 100.0 ? "   " : "  ").fixed(values[cell], 4);
        if (column + 1 == grid.columns || column % kPerLine == kPerLine - 1) out.text("\n");
    }
}

void write_discretization(const std::filesystem::path& folder, const Grid& grid) {
    Printer out(folder / "bench.dis");
    for (const std::size_t size : {grid.layers, grid.rows, grid.columns}) out.integer(size).text(" ");
    out.text("1 4 2\n");
    for (std::size_t k = 0; k < grid.layers; ++k) out.text("0 ");
    for (const auto* widths : {&grid.column_widths, &grid.row_widths}) {
        out.text("\nINTERNAL 1.0 (FREE) -1\n");
        for (const double width : *widths) out.fixed(width, 1).text(" ");
    }
    out.text("\n");
    for (const std::vector<double>& surface : grid.surfaces) {
        out.text("INTERNAL 1.0 (FREE) -1\n");
        write_numbers(out, grid, surface);
    }
    out.integer(grid.steps).text(".0 ").integer(grid.steps).text(" 1.0 TR\n");
}

void write_basic_package(const std::filesystem::path& folder, const Grid& grid) {
    Printer out(folder / "bench.ba6");
    out.text("# generated\nFREE\n");
    for (std::size_t k = 0; k < grid.layers; ++k) {
        out.text("INTERNAL 1 (FREE) -1\n");
        for (std::size_t cell = 0; cell < grid.layer_cells(); ++cell) {
            out.text(grid.active[cell] ? " 1" : " 0");
            if ((cell + 1) % grid.columns == 0) out.text("\n");
        }
    }
    out.text("1.0E+30\n");
    for (std::size_t k = 0; k < grid.layers; ++k) {
        out.text("INTERNAL 1.0 (10F10.4) -1\n");
        write_numbers(out, grid, grid.surfaces[k]);
    }
}

/// Values between 0 and 1 without pattern; inactive cells get `inactive`.
std::vector<float> layer_values(const Grid& grid, std::uint32_t seed, float first, float range,
                                float inactive) {
    std::vector<float> values(grid.layer_cells(), inactive);
    for (std::uint32_t cell = 0; cell < grid.layer_cells(); ++cell) {
        if (!grid.active[cell]) continue;
        values[cell] = first + range * static_cast<float>(scatter(cell, seed)) / 4294967296.0F;
    }
    return values;
}

void write_heads(const std::filesystem::path& folder, const Grid& grid) {
    Printer out(folder / "bench.hds");
    for (int step = 1; step <= grid.steps; ++step) {
        for (std::size_t k = 0; k < grid.layers; ++k) {
            const auto time = static_cast<float>(step);
            out.raw(step).raw(1).raw(time).raw(time).text("            HEAD");
            for (const std::size_t size : {grid.columns, grid.rows, k + 1})
                out.raw(static_cast<std::int32_t>(size));
            // Heads stay above the bottom of their layer.
            const float bottom = static_cast<float>(grid.surfaces[k + 1][0]) + 2.0F;
            const auto seed = static_cast<std::uint32_t>(step * 1000) + static_cast<std::uint32_t>(k);
            const auto heads = layer_values(grid, seed, bottom, 4.0F, static_cast<float>(kNoFlow));
            out.bytes(heads.data(), heads.size() * sizeof(float));
        }
    }
}

void write_record_header(Printer& out, const Grid& grid, int step, const char* label, std::int32_t type) {
    const auto time = static_cast<float>(step);
    out.raw(step).raw(1).text(label);
    for (const std::size_t size : {grid.columns, grid.rows}) out.raw(static_cast<std::int32_t>(size));
    out.raw(-static_cast<std::int32_t>(grid.layers)).raw(type).raw(1.0F).raw(time).raw(time);
}

void write_budget(const std::filesystem::path& folder, const Grid& grid) {
    Printer out(folder / "bench.cbb");
    const char* arrays[] = {"         STORAGE", "FLOW RIGHT FACE ", "FLOW FRONT FACE ", "FLOW LOWER FACE "};
    for (int step = 1; step <= grid.steps; ++step) {
        auto seed = static_cast<std::uint32_t>(step) << 16;
        for (const char* label : arrays) {
            write_record_header(out, grid, step, label, 1);
            for (std::size_t k = 0; k < grid.layers; ++k) {
                const auto flows = layer_values(grid, ++seed, -250.0F, 500.0F, 0.0F);
                out.bytes(flows.data(), flows.size() * sizeof(float));
            }
        }
        write_record_header(out, grid, step, "           WELLS", 5);
        const auto wells = static_cast<std::int32_t>(grid.columns);
        out.raw(1).raw(wells);
        for (std::int32_t n = 1; n <= wells; ++n) {
            // The last row of the last layer is active.
            out.raw(static_cast<std::int32_t>(grid.cells()) - wells + n).raw(-10.5F * static_cast<float>(n));
        }
        write_record_header(out, grid, step, "        RECHARGE", 3);
        for (std::size_t cell = 0; cell < grid.layer_cells(); ++cell) out.raw(1);
        const auto recharge = layer_values(grid, ++seed, 1.0F, 2.0F, 0.0F);
        out.bytes(recharge.data(), recharge.size() * sizeof(float));
    }
}

}  // namespace

int main(int argc, char** argv) {
    Arguments arguments;
    if (!read_arguments(argc, argv, 1, arguments)) {
        std::fputs("usage: bench_model [--layers N] [--rows N] [--columns N] [--steps N] FOLDER\n", stderr);
        return 2;
    }
    const std::filesystem::path& folder = arguments.folders[0];
    std::filesystem::create_directories(folder);
    Printer(folder / "bench.nam")
        .text("DIS 11 bench.dis\nBAS6 12 bench.ba6\n")
        .text("DATA(BINARY) 51 bench.hds\nDATA(BINARY) 52 bench.cbb\n");
    write_discretization(folder, arguments.grid);
    write_basic_package(folder, arguments.grid);
    write_heads(folder, arguments.grid);
    write_budget(folder, arguments.grid);
    return 0;
}
