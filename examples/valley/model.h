#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace valley {

/// Part of a cell's water balance that depends on its own head: flow into the aquifer = constant -
/// conductance * head.
struct Leak {
    double conductance = 0.0;  ///< m2/d
    double constant = 0.0;     ///< m3/d
};

/// One line of a list package.
struct ListEntry {
    std::size_t cell = 0;        ///< (layer * rows + row) * columns + column, from 0
    std::vector<double> values;  ///< the package's own numbers, then the auxiliary ones
};

/// Wells, drains or river reaches.
struct ListPackage {
    std::string label;           ///< of its budget term
    std::size_t own_values = 0;  ///< numbers an entry has without auxiliary ones
    Leak (*leak)(const ListEntry& entry, double head) = nullptr;
    std::vector<std::string> auxiliary;           ///< names of the further numbers of an entry
    std::vector<std::vector<ListEntry>> periods;  ///< entries of each stress period
};

struct Period {
    double length = 0.0;  ///< days
    int steps = 0;
    double factor = 1.0;  ///< each step is that much longer than the one before
    bool steady = false;
};

/// A groundwater model as its input files describe it: metres, days. Arrays of cells are indexed
/// (layer * rows + row) * columns + column, row 0 in the north.
struct Model {
    std::size_t layers = 0, rows = 0, columns = 0;
    std::vector<double> column_widths, row_widths;
    std::vector<double> top;  ///< of the first layer, by row and column
    std::vector<double> bottom;
    std::vector<int> ibound;  ///< 0 no cell, negative: head fixed, positive: head unknown
    double no_flow_head = 0.0;
    std::vector<double> starting_heads;
    std::vector<double> conductivity, vertical_conductivity;  ///< m/d
    std::vector<double> specific_storage;                     ///< 1/m
    std::vector<Period> periods;
    std::vector<ListPackage> lists;
    std::vector<std::vector<double>> recharge;  ///< m/d, by period, then by row and column
    int outer_iterations = 0, inner_iterations = 0;
    double head_tolerance = 0.0;  ///< m, change between outer iterations
    double flow_tolerance = 0.0;  ///< m3/d, largest residual of a cell

    std::size_t layer_cells() const { return rows * columns; }
    std::size_t cells() const { return layers * rows * columns; }
    double area(std::size_t cell) const {
        return column_widths[cell % columns] * row_widths[cell % layer_cells() / columns];
    }
    double thickness(std::size_t cell) const {
        return (cell < layer_cells() ? top[cell] : bottom[cell - layer_cells()]) - bottom[cell];
    }
};

}  // namespace valley
