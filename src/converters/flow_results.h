#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "converters/real_column.h"
#include "formats/budget_records.h"
#include "formats/budget_terms.h"
#include "formats/record_file.h"

namespace plx {

struct ModelState;

/// A budget record of one of the flow files.
struct FlowRecord {
    int file = 0;  ///< index into FlowResults::files
    BudgetRecord record;
};

/// Cells of a boundary term in the current step.
struct TermCells {
    std::vector<int> cells;  ///< from 0, layer by layer, row by row
    RealColumn flows;
};

/// Flows of a conversion: record positions, and the values of the current step.
struct FlowResults {
    using Slots = std::array<std::vector<FlowRecord>, kSlotCount>;

    std::vector<std::unique_ptr<RecordFile>> files;
    /// By (stress period, step) from 0; with plain rules the period is always 0.
    std::map<std::pair<int, int>, Slots> positions;
    /// Times of the compact records by (stress period, step); -1 where the file does not say.
    std::map<std::pair<int, int>, double> times;
    std::array<RealColumn, 3>
        faces;  ///< right, front and lower face, one value per cell; empty when never loaded
    std::array<TermCells, kSlotCount> terms;
};

/// Prepares the scan of the flow file; false, after the converters' message, when it is not there.
bool begin_flow_scan(ModelState& model);
/// Walks all flow files once. `constant_head_anywhere`: see TermRules.
void scan_flows(ModelState& model, bool constant_head_anywhere);
/// Loads the face flows and boundary terms of the current step.
void load_flows(ModelState& model);

/// Adds a list record's entries; false when it is cut short.
using FlowListReader =
    std::function<bool(RecordFile& in, const BudgetRecord& record, std::vector<BudgetEntry>& entries)>;
/// The same for files whose lists are laid out in another way.
void load_flows(ModelState& model, const FlowListReader& read_list);
/// Notes a record of a file for its step and slot, and sets the factory's flag of the term. `times` gets the
/// record's time even for kNoSlot, whose data are not kept.
void index_flow(ModelState& model, int file, const BudgetRecord& record, BudgetSlot slot);
/// The current step's records; null when the files hold none.
const FlowResults::Slots* flows_of_step(const ModelState& model);
/// True when a record has the model's extents; a message tells when it does not.
bool fits_grid(ModelState& model, const RecordFile& file, const BudgetRecord& record);

}  // namespace plx
