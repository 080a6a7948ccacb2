#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "plxutils/export.h"

class ConverterFactory;

namespace plx {

/// A time that a result file holds; stress period and flow step count from 1 and are 0 when the file does not
/// say.
struct SavedStep {
    int period = 0;
    int step = 0;
    double time = 0.0;  ///< elapsed model time at its end; -1 when the file does not say
};

/// A budget term of a flow file.
struct TermSummary {
    std::string label;  ///< trimmed
    std::string form;   ///< "array", "layer array" or "list"
    int records = 0;
    std::int64_t entries = 0;  ///< list entries, or cells of the arrays, of all records
};

/// One binary result file.
struct ResultSummary {
    std::string file;     ///< name without folder, as on disk
    std::string kind;     ///< "heads", "drawdown", "layers" (another label), "concentrations", "flows",
                          ///< "flow link", "missing", "unreadable"
    std::string label;    ///< label of the first record of a layer file; name of a GMS dataset
    std::string species;  ///< of concentrations: the name that the model gives it; empty when none is known
    bool record_markers = false;
    int real_bytes = 4;
    int layers = 0, rows = 0, columns = 0;
    std::vector<SavedStep> steps;
    std::vector<TermSummary> terms;  ///< flow files, in the order of first appearance
    std::string problem;             ///< why the file is missing, unreadable or cut short; empty when whole
};

struct LayerSummary {
    std::int64_t active = 0;  ///< cells that a conversion writes
    std::int64_t constant_head = 0;
    double top_min = 0.0, top_max = 0.0, bottom_min = 0.0, bottom_max = 0.0;
};

struct PeriodSummary {
    double length = 0.0;
    int steps = 0;
    bool steady = false;
};

/// What a parsed model holds.
struct ModelSummary {
    int layers = 0, rows = 0, columns = 0;
    double width = 0.0;                     ///< sum of the column widths
    double height = 0.0;                    ///< sum of the row widths
    double x_origin = 0.0, y_origin = 0.0;  ///< world coordinates of the grid's lower left corner
    double rotation = 0.0;                  ///< degrees, counter-clockwise about that corner
    std::string start;  ///< date of the begin, "YYYY-MM-DD hh:mm:ss"; empty when the model has none
    std::string time_units, length_units;
    std::vector<LayerSummary> layer;
    std::vector<PeriodSummary> periods;
    std::vector<ResultSummary> results;  ///< in the name file's order, then the concentrations by species
};

/// Describes a factory whose parsePROJECT has run.
PLX_EXPORT ModelSummary summarize_model(ConverterFactory& factory);

/// Describes a binary result file by its contents. `path`: stored or native name.
PLX_EXPORT ResultSummary summarize_result_file(const char* path);

}  // namespace plx
