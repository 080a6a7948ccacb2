#pragma once

#include <cstdint>
#include <cstdio>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "formats/grid_geometry.h"
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
    /// Bytes before the values of a step's second and further layers when they stand there in place of a
    /// header; 0 when every layer has one.
    int gap = 0;
};

/// In what a converter's head files and messages differ from those of the others.
struct HeadDialect {
    /// Bytes that may part the layers of a step in place of their headers; 0: headers always do.
    int gap = 0;
    const char* missing = "Head data not found.\r";
};

/// Walks the whole head file once: positions, step times and a trace line per record.
void scan_heads(ModelState& model, const HeadDialect& dialect = {});
/// Loads the heads of the current step.
void load_heads(ModelState& model, const HeadDialect& dialect = {});

/// The gap by which a head file is laid out: `gap` when the second layer has no header of its own and the
/// file ends or the next step begins where such a gap between all layers would have it, else 0. The file is
/// left at its start.
int find_head_gap(RecordFile& in, const GridSize& size, int gap);

/// The records of a head file from its position on, one for each layer of a step whether or not it has a
/// header of its own.
class HeadWalk {
public:
    /// @param gap  what find_head_gap gave.
    HeadWalk(RecordFile& in, const GridSize& size, int gap) : in_(in), layers_(size.layers), gap_(gap) {}
    /// As next_head_record. Behind a gap the header is that of the step's first layer with the layer's own
    /// number, and the record begins with the gap.
    bool next(LayerRecord& record, bool& cut);

private:
    RecordFile& in_;
    int layers_, gap_;
    int layer_ = 0;
    LayerHeader first_;
};

}  // namespace plx
