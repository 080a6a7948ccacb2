#pragma once

#include <cstdint>
#include <cstdio>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "formats/layer_records.h"
#include "formats/record_file.h"

class ConverterFactory;

namespace plx {

struct ModelState;

/// Heads of a conversion: record positions by (stress period, step) from 0, and the values of the current
/// step.
struct HeadResults {
    std::unique_ptr<RecordFile> file;
    /// Positions of a step's layer records; with plain rules one, of the first layer.
    std::map<std::pair<int, int>, std::vector<std::int64_t>> positions;
    /// Model length units, (layer * rows + row) * columns + column. Not-a-number: the cell has no head.
    std::vector<float> values;
};

/// Walks the whole head file once: positions, step times and a trace line per record.
void scan_heads(ModelState& model);
/// Loads the heads of the current step.
void load_heads(ModelState& model);

}  // namespace plx
