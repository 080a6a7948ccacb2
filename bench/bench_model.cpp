// Writes a model with results of any size: inputs in MODFLOW 2000 form, their arrays as text or as those of a
// GMS project in HDF5, heads and compact budget.

#include <memory>

#include "array_file.h"
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

/// Writes the arrays of the text inputs, or the records that name them in an HDF5 file beside.
class ArrayWriter {
public:
    ArrayWriter(const std::filesystem::path& folder, const Grid& grid) : grid_(grid) {
        if (grid.gms) file_ = std::make_unique<ArrayFile>(folder / "bench.h5");
    }

    void reals(Printer& out, const std::string& name, const char* control,
               const std::vector<double>& values) {
        if (file_) {
            file_->doubles(name, values);
            record(out, name);
        } else {
            out.text(control);
            write_numbers(out, grid_, values);
        }
    }
    void activity(Printer& out, const std::string& name) {
        if (file_) {
            file_->integers(name, std::vector<int>(grid_.active.begin(), grid_.active.end()));
            return record(out, name);
        }
        out.text("INTERNAL 1 (FREE) -1\n");
        for (std::size_t cell = 0; cell < grid_.layer_cells(); ++cell) {
            out.text(grid_.active[cell] ? " 1" : " 0");
            if ((cell + 1) % grid_.columns == 0) out.text("\n");
        }
    }

private:
    void record(Printer& out, const std::string& name) const {
        out.text("HDF5 1.0 -1 \"bench.h5\" \"Arrays/").text(name).text("\" 1 0 ");
        out.integer(grid_.layer_cells()).text("\n");
    }

    const Grid& grid_;
    std::unique_ptr<ArrayFile> file_;
};

void write_discretization(const std::filesystem::path& folder, const Grid& grid, ArrayWriter& arrays) {
    Printer out(folder / "bench.dis");
    for (const std::size_t size : {grid.layers, grid.rows, grid.columns}) out.integer(size).text(" ");
    out.text("1 4 2\n");
    for (std::size_t k = 0; k < grid.layers; ++k) out.text("0 ");
    for (const auto* widths : {&grid.column_widths, &grid.row_widths}) {
        out.text("\nINTERNAL 1.0 (FREE) -1\n");
        for (const double width : *widths) out.fixed(width, 1).text(" ");
    }
    out.text("\n");
    for (std::size_t k = 0; k <= grid.layers; ++k) {
        const std::string name = k == 0 ? "top1" : "bot" + std::to_string(k);
        arrays.reals(out, name, "INTERNAL 1.0 (FREE) -1\n", grid.surfaces[k]);
    }
    out.integer(grid.steps).text(".0 ").integer(grid.steps).text(" 1.0 TR\n");
}

void write_basic_package(const std::filesystem::path& folder, const Grid& grid, ArrayWriter& arrays) {
    Printer out(folder / "bench.ba6");
    out.text("# generated\nFREE\n");
    for (std::size_t k = 1; k <= grid.layers; ++k) arrays.activity(out, "ibound" + std::to_string(k));
    out.text("1.0E+30\n");
    for (std::size_t k = 1; k <= grid.layers; ++k) {
        arrays.reals(out, "StartHead" + std::to_string(k), "INTERNAL 1.0 (10F10.4) -1\n",
                     grid.surfaces[k - 1]);
    }
}

void write_super_file(const std::filesystem::path& folder, const Grid& grid) {
    write_project(folder / "bench.gpr", ".\\bench_MODFLOW\\bench.mfs");
    Printer(files_folder(folder, grid) / "bench.mfs")
        .text("MF2KSUP\nIJK -y +x -z\nNAME   99 \"bench.mfn\"\nUNITS \"meters\"\t\"days\"\n");
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
    Printer out(folder / (grid.gms ? "bench.hed" : "bench.hds"));
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
    Printer out(folder / (grid.gms ? "bench.ccf" : "bench.cbb"));
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
        std::fprintf(stderr, "usage: bench_model %s FOLDER\n", kSizeOptions);
        return 2;
    }
    const Grid& grid = arguments.grid;
    const std::filesystem::path folder = files_folder(arguments.folders[0], grid);
    std::filesystem::create_directories(folder);
    if (grid.gms) write_super_file(arguments.folders[0], grid);
    Printer(folder / (grid.gms ? "bench.mfn" : "bench.nam"))
        .text("DIS 11 bench.dis\nBAS6 12 bench.ba6\nDATA(BINARY) 51 bench.")
        .text(grid.gms ? "hed" : "hds")
        .text("\nDATA(BINARY) 52 bench.")
        .text(grid.gms ? "ccf" : "cbb")
        .text("\n");
    ArrayWriter arrays(folder, grid);
    write_discretization(folder, grid, arrays);
    write_basic_package(folder, grid, arrays);
    write_heads(folder, grid);
    write_budget(folder, grid);
    return 0;
}
