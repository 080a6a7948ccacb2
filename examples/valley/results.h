#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "equations.h"
#include "model.h"
#include "record.h"

namespace valley {

/// One term of a step's water budget; flows in m3/d, positive into the aquifer (faces: towards higher
/// indices).
struct Term {
    /// ITYPE of its record in a compact budget file.
    enum Type { kAllCells = 1, kCellList = 2, kOneLayer = 3, kAuxiliaryList = 5 };
    std::string label;
    Type type = kAllCells;
    std::vector<double> flows;             ///< one a cell, a column of cells or a list entry
    std::vector<std::int32_t> where;       ///< lists: cell numbers from 1; one layer: the layer from 1
    std::vector<std::string> auxiliary;    ///< names of further values of an entry
    std::vector<double> auxiliary_values;  ///< entry by entry
    bool is_face() const { return label.starts_with("FLOW "); }
};

/// All terms of a step, in the order of the budget file.
std::vector<Term> budget(const Model& model, const Conductances& between, const Step& step,
                         const std::vector<double>& before, const std::vector<double>& heads);

/// MODFLOW's binary head file and compact cell-by-cell budget file, without record marks.
class ResultFiles {
public:
    /// Throws std::runtime_error when a file cannot be made.
    ResultFiles(const std::filesystem::path& heads, const std::filesystem::path& budget);
    void write_heads(const Model& model, const Step& step, const std::vector<double>& heads);
    void write_budget(const Model& model, const Step& step, const std::vector<Term>& terms);
    /// Throws std::runtime_error when not everything could be written.
    void close();
    void publish();

private:
    ResultFile heads_, budget_;
};

}  // namespace valley
