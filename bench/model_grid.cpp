#include "model_grid.h"

#include <cstdlib>
#include <cstring>

namespace bench {

std::uint32_t scatter(std::uint32_t a, std::uint32_t b) {
    std::uint32_t x = a * 0x9E3779B1U ^ b * 0x85EBCA77U;
    x = (x ^ (x >> 15)) * 0x2C1B3C6DU;
    x = (x ^ (x >> 12)) * 0x297A2D39U;
    return x ^ (x >> 15);
}

void Grid::fill() {
    // Widths are multiples of a half, so that every order of adding them up gives the same edges.
    for (std::size_t j = 0; j < columns; ++j)
        column_widths.push_back(50.0 + 0.5 * static_cast<double>(j % 7));
    for (std::size_t i = 0; i < rows; ++i) row_widths.push_back(40.0 + 0.5 * static_cast<double>(i % 5));
    for (std::size_t k = 0; k <= layers; ++k) {
        std::vector<double>& surface = surfaces.emplace_back();
        for (std::uint32_t cell = 0; cell < layer_cells(); ++cell) {
            const auto noise = static_cast<double>(scatter(cell, static_cast<std::uint32_t>(k)) % 20000);
            // Whole numbers over 10000: what reading the four printed decimals gives.
            surface.push_back((2000000.0 - 70000.0 * static_cast<double>(k) + noise) / 10000.0);
        }
    }
    const std::size_t first = corner > 0 ? corner : (rows + columns) / 8;
    for (std::size_t cell = 0; cell < layer_cells(); ++cell) {
        active.push_back(cell / columns + cell % columns >= first);
    }
}

std::filesystem::path files_folder(const std::filesystem::path& folder, const Grid& grid) {
    return grid.gms ? folder / "bench_MODFLOW" : folder;
}

bool read_arguments(int argc, char** argv, std::size_t folders, Arguments& arguments) {
    Grid& grid = arguments.grid;
    for (int i = 1; i < argc; ++i) {
        if (std::strncmp(argv[i], "--", 2) != 0) {
            arguments.folders.emplace_back(argv[i]);
            continue;
        }
        if (std::strcmp(argv[i], "--gms") == 0) {
            grid.gms = true;
            continue;
        }
        const long value = i + 1 < argc ? std::atol(argv[i + 1]) : 0;
        if (value < 1 || value > 10000) return false;
        const auto size = static_cast<std::size_t>(value);
        if (std::strcmp(argv[i], "--layers") == 0) {
            grid.layers = size;
        } else if (std::strcmp(argv[i], "--rows") == 0) {
            grid.rows = size;
        } else if (std::strcmp(argv[i], "--columns") == 0) {
            grid.columns = size;
        } else if (std::strcmp(argv[i], "--corner") == 0) {
            grid.corner = size;
        } else if (std::strcmp(argv[i], "--steps") == 0) {
            grid.steps = static_cast<int>(value);
        } else {
            return false;
        }
        ++i;
    }
    grid.fill();
    return arguments.folders.size() == folders;
}

}  // namespace bench
