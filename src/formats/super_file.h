#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "formats/problems.h"
#include "plxutils/core/VXFile.h"

namespace plx {

/// What a GMS MODFLOW super file (.mfs) says of a model beyond MODFLOW's own inputs.
struct SuperFile {
    /// A card whose numbers are none.
    struct Fault {
        enum class Kind { kPlacement, kDate };
        Kind kind;
        std::string line;  ///< as it stands in the file
    };

    std::string name_file;  ///< path of the name file (.mfn); empty without one
    bool x_reversed = false, y_reversed = false, z_reversed = false;
    std::optional<std::array<double, 3>> origin;  ///< world coordinates, model length units
    std::optional<double> rotation;               ///< degrees, counter-clockwise
    std::optional<double> start_date;             ///< days since 30 December 1899
    std::string length_units, time_units;         ///< as written; empty without them
    std::optional<int> default_material;
    std::vector<int> materials;  ///< in file order
    bool unstructured = false;   ///< the model has no rows and columns; nothing else was read
    std::vector<Fault> faults;
};

/// Reads a super file.
///
/// Source: text cards by the first word of each line, compared with case: NAME, IJK, ORIG, ROTZ, REFTIME,
/// UNITS, DMAT and MAT; other cards, lines of numbers that belong to them, and comments ("#") are passed
/// over. The material numbers of MAT stand on the lines after it. A first line MFUSGSUP means an unstructured
/// model. ORIG or ROTZ without numbers ends the reading.
///
/// @param problems  faults of cards, each with file and line.
/// @return false when the file cannot be opened; `out` is empty then.
bool read_super_file(const VXFile& file, SuperFile& out, Problems& problems);

}  // namespace plx
