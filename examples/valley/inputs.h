#pragma once

#include <filesystem>

#include "model.h"

namespace valley {

/// Reads the packages that a MODFLOW 2000 name file names: DIS, BAS6, LPF, WEL, DRN, RIV, RCH and PCG; the
/// others are passed over. Throws std::runtime_error with file, line and fault when an input is missing,
/// cannot be read, or asks for what this solver leaves out (quasi-three-dimensional beds, convertible layers,
/// parameters).
Model read_model(const std::filesystem::path& name_file);

}  // namespace valley
