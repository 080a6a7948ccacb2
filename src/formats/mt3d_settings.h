#pragma once

#include <optional>
#include <string>
#include <vector>

#include "formats/problems.h"
#include "plxutils/core/VXFile.h"

namespace plx {

/// What the converters take from an MT3D project file (.mts).
struct Mt3dSettings {
    std::vector<std::string> species;  ///< names in file order
    std::optional<double> start_date;  ///< days since 30 December 1899
    std::string time_units;            ///< as written; empty without them
    std::string transport_package;     ///< path of the basic-transport file (BTN); empty without one
    bool old_version = false;          ///< the file names MT3D 3.00.99
};

/// Reads an MT3D project file.
///
/// Source: text cards by the first word of each line: SPC (a species' name), REFTIME (year, month, day, hour,
/// minute and second are the last six words), UNITS (the time unit), all before the card CON; BTN (the file
/// name, which a unit number may precede) anywhere.
///
/// @param problems  a date that is none.
/// @return false when the file cannot be opened; `settings` is empty then.
bool read_mt3d_settings(const VXFile& file, Mt3dSettings& settings, Problems& problems);

}  // namespace plx
