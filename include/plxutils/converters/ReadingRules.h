#pragma once

#include "plxutils/export.h"

namespace plx {

/// Single points in which a converter can follow what the modelling programs themselves do instead of the
/// plain rules that hosts rely on. Every flag is off in prescribed() and on in modflow();
/// docs/reading_rules.md tells what each one changes in the output.
struct ReadingRules {
    /// Flow-record positions are kept per stress period and step; otherwise per step, and the last period
    /// wins.
    bool flows_by_period = false;
    /// With reversed rows, a row edge is the total less the widths of the rows before it; otherwise the list
    /// of running sums is turned around, which differs when the widths do.
    bool true_row_edges = false;
    /// An empty word in an array is no value; otherwise it stores 0.0.
    bool skip_empty_words = false;
    /// A fixed control record with unit 0 fills the array with its second field; otherwise the array stays 0.
    bool unit_zero_is_constant = false;
    /// A multiplier 0 in unit, EXTERNAL and OPEN/CLOSE records means 1; otherwise it is used as read.
    bool zero_multiplier_is_one = false;
    /// The Fortran format of an array's control record decides how its lines are cut; otherwise values are
    /// words.
    bool obey_array_formats = false;
    /// Inactive cells stay out of node elevations and heads; otherwise all cells take part.
    bool average_active_only = false;
    /// Every cell whose IBOUND is not 0 is active; otherwise only 1 and -1.
    bool any_nonzero_ibound = false;
    /// No-flow and dry heads are those of the model (HNOFLO, HDRY, 1e29 and above, -888, -999), leave node
    /// averages and are written as the cell's bottom; otherwise heads above 100000 become the bottom less 10.
    bool model_no_flow_heads = false;
    /// A binary file's role is found in its first record, whatever its name, and several flow files are
    /// joined; otherwise the lower-case extension decides.
    bool result_files_by_content = false;
    /// A list record of type 2 counts by its label; otherwise each is constant head.
    bool list_terms_by_label = false;
    /// Several records of one term in a step are joined; otherwise the last one counts.
    bool join_repeated_terms = false;
    /// Heads are loaded for cell heads alone too; otherwise cell heads without node heads are 0.
    bool load_heads_for_cells = false;
    /// Seconds, minutes, hours, days and years are time units, and MODFLOW-88/96 models take theirs from
    /// ITMUNI; otherwise such words give times in days and those models have no unit.
    bool full_time_words = false;
    /// Without a material list a cell's material is its layer, from 0; otherwise 0.
    bool material_is_layer = false;
    /// Only records labelled HEAD count, their layer is ILAY, and some layers may be missing; otherwise every
    /// record counts and a step is all layers in order.
    bool head_records_only = false;
    /// 64-bit reals and Fortran record markers are found and read; otherwise such a file is refused with a
    /// message.
    bool detect_result_layout = false;
    /// Without a head output the steps come from the flow file; otherwise no field file is written.
    bool steps_from_flow_file = false;
    /// A tab separates words like a blank; otherwise it is part of a word.
    bool tab_separates_words = false;
    /// The first record of a block-centred-flow package is free words when the options said FREE; otherwise
    /// it is seven fields of ten columns.
    bool free_bcf_record = false;

    static constexpr ReadingRules prescribed() { return {}; }
    static constexpr ReadingRules modflow() {
        return {true, true, true, true, true, true, true, true, true, true,
                true, true, true, true, true, true, true, true, true, true};
    }
};

/// One rule with its name (as in the field) and its member, for programs that list them.
struct ReadingRuleName {
    const char* name;
    bool ReadingRules::*flag;
};

/// All rules in the order of the struct; `count` receives their number.
PLX_EXPORT const ReadingRuleName* reading_rule_names(int& count);

}  // namespace plx
