#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <vector>

namespace bench {

/// The grid of a generated model; both the generator and the floor program make it from the sizes alone.
struct Grid {
    std::size_t layers = 10, rows = 316, columns = 316;
    int steps = 10;
    std::size_t corner = 0;  ///< row + column of the first active cells; 0: an eighth of rows and columns
    bool gms = false;        ///< a GMS project with its arrays in HDF5, in place of a MODFLOW 2000 model
    std::vector<double> column_widths, row_widths;
    std::vector<std::vector<double>> surfaces;  ///< top, then the bottom of each layer, by row and column
    std::vector<bool> active;                   ///< by row and column, the same in all layers

    std::size_t layer_cells() const { return rows * columns; }
    std::size_t cells() const { return layers * layer_cells(); }
    /// Builds the arrays from the sizes.
    void fill();
};

/// A number without pattern, the same for the same arguments everywhere.
std::uint32_t scatter(std::uint32_t a, std::uint32_t b);

struct Arguments {
    Grid grid;
    std::vector<std::filesystem::path> folders;
};

/// Folder of a model's inputs and results; those of a GMS project lie beside it.
std::filesystem::path files_folder(const std::filesystem::path& folder, const Grid& grid);

constexpr const char* kSizeOptions = "[--gms] [--layers N] [--rows N] [--columns N] [--steps N] [--corner N]";
/// Reads the options and one argument for each folder, and fills the grid; false on wrong usage.
bool read_arguments(int argc, char** argv, std::size_t folders, Arguments& arguments);

}  // namespace bench
