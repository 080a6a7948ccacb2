#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "model.h"

namespace valley {

/// What is dissolved in the water, as the MT3DMS inputs describe it: mg/l (g/m3).
struct TransportModel {
    std::vector<std::string> species;
    std::vector<double> porosity;              ///< by cell
    std::vector<bool> fixed;                   ///< cells that keep their concentrations
    std::vector<std::vector<double>> initial;  ///< by species, then by cell
    double no_cell = 0.0;                      ///< concentration written where there is no cell
    std::vector<double> print_times;           ///< days, when concentrations are written, rising
    /// Concentration of the recharge by period, species, then row and column.
    std::vector<std::vector<std::vector<double>>> recharge;
};

/// Reads the settings (.mts) and the basic (BTN) and source (SSM) packages of MT3DMS that they name. Throws
/// std::runtime_error with file, line and fault.
TransportModel read_transport(const std::filesystem::path& settings, const Model& model);

}  // namespace valley
