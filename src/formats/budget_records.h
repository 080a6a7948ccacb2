#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "formats/grid_geometry.h"
#include "formats/record_file.h"

namespace plx {

/// Header of one budget record. KSTP, KPER, TEXT[16], NCOL, NROW, NLAY; the compact form adds ITYPE, DELT,
/// PERTIM, TOTIM.
struct BudgetHeader {
    int step = 0, period = 0;  ///< KSTP, KPER, from 1
    std::string label;         ///< trimmed
    int columns = 0, rows = 0;
    int layers = 0;             ///< absolute value of NLAY; the grid's when NLAY is 0
    bool compact = false;       ///< NLAY was zero or negative
    int type = -1;              ///< ITYPE, -1 when not compact
    double step_length = -1.0;  ///< DELT, PERTIM, TOTIM: -1 when not compact
    double period_time = -1.0;
    double total_time = -1.0;
};

struct BudgetRecord {
    BudgetHeader header;
    std::int64_t position = 0;  ///< of the header
    std::int64_t data = 0;      ///< of the data that follow it
    std::int64_t entries = 0;   ///< list types: NLIST
};

/// Tells the layout of a budget file: record markers from the first header, the size of reals from where the
/// next header falls, else from the times of the first. Empty when the bytes are no budget record at all. The
/// stream's position is put back.
std::optional<ResultLayout> detect_budget_layout(std::FILE* file);

enum class BudgetNext { kRecord, kEnd, kCutShort, kUnknownType };
/// Reads the next record's header and passes over its data, whose size follows from the type, the extents and
/// the counts in the record; `grid` gives the layers where the record leaves them out. Impossible extents and
/// counts are kCutShort. kUnknownType: `record.header.type` is the type; the file cannot be followed further.
BudgetNext next_budget_record(RecordFile& in, const GridSize& grid, BudgetRecord& record);

/// Values of a full or one-layer array record (ITYPE 0, 1, 3, 4 and not compact), a layer at a time in block
/// reads: `store(layer, values, layers_of_cells)`, index row * columns + column. For ITYPE 3 the layer is 0
/// and each cell's own layer (from 0; -1 for a number that is none, and it may be below the grid) is given,
/// null otherwise; ITYPE 4 is layer 0. False when the record is of another grid (nothing is stored then) or
/// cut short.
using LayerValues = std::function<void(int layer, const double* values, const int* layers_of_cells)>;
bool read_budget_arrays(RecordFile& in, const BudgetRecord& record, const GridSize& grid,
                        const LayerValues& store);

struct BudgetEntry {
    int cell = 0;       ///< as in the file, 1-based, layer-major
    double flow = 0.0;  ///< first value of the entry
};
/// Adds the entries of a list record (ITYPE 2: NLIST, then cell and value; ITYPE 5: NVAL, the 16-byte names
/// of the NVAL - 1 values after the first, NLIST, then cell and NVAL values). False when the record is no
/// list or is cut short; nothing is added then.
bool read_budget_list(RecordFile& in, const BudgetRecord& record, std::vector<BudgetEntry>& entries);

}  // namespace plx
