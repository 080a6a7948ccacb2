#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace plx::tool {

/// A measured value and its place, in the file's own units.
struct Sample {
    double x = 0.0, y = 0.0, z = 0.0, value = 0.0;
};

/// How laboratory words become numbers.
struct ChemistryRules {
    double detection_factor = 0.5;  ///< a value below the detection limit counts as this part of the limit
    double nondetect = 0.0;         ///< value of a sample in which nothing was detected
};

struct SampleSet {
    std::string name = "Value";   ///< of the value's column
    std::vector<Sample> samples;  ///< those that have a value
    int missing = 0;              ///< samples left out: "missing", "na", ...
    int below_detection = 0;
    int nondetect = 0;
};

/// Coordinates beyond this are no place on any map; distances between them would lose their meaning.
constexpr double kFarthest = 1e12;

/// Reads samples from a text file, plain or gzip: cells between commas, semicolons, tabs or blanks (whichever
/// the first line has, in this order), "#" comments, a line with column names at the top when there is one.
/// An empty value cell is a missing measurement.
///
/// @param column  name of the value's column; when empty, the one called "value", else the first behind z.
/// Without names the first four columns are x, y, z and the value; so too with four names of other things.
/// @throws InputFault with a line of text for each fault, when a line is no sample, or there is no sample.
SampleSet read_samples(const std::filesystem::path& file, const std::string& column,
                       const ChemistryRules& rules);

}  // namespace plx::tool
