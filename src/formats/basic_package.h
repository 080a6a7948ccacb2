#pragma once

#include <functional>
#include <string>
#include <vector>

#include "formats/array_record.h"
#include "formats/grid_geometry.h"
#include "formats/stress_periods.h"

namespace plx {

/// Start of a MODFLOW-88/96 basic package: headings, grid size, options.
struct BasicHeader {
    GridSize size;
    int periods = 0;
    int time_unit = 0;           ///< ITMUNI
    bool free_format = false;    ///< FREE
    bool cross_section = false;  ///< XSECTION: nothing more may be read
    bool chtoch = false;
    bool unit_list = false;  ///< the older IUNIT list stood in the options' place
    int first_unit = 0;      ///< its first entry
};

/// Reads headings, sizes and options line of a MODFLOW-88/96 basic package; false when they are no grid,
/// whose size is then 0.
bool read_basic_header(TextSource& in, const ArrayStreams& streams, const TextRules& rules, BasicHeader& out,
                       Problems& problems);
/// IAPART and ISTRT.
void skip_iapart(TextSource& in, const TextRules& rules);

/// Options line of a BAS6 file, with the comment lines before it.
struct Bas6Options {
    bool free_format = false;
    bool cross_section = false;
};
Bas6Options read_bas6_options(TextSource& in);

/// Reads the IBOUND arrays of all layers. `store(layer, values)` gets each layer's values in row, column
/// order.
bool read_ibound(TextSource& in, ArrayStreams& streams, const TextRules& rules, TextRules& used,
                 const GridSize& size,
                 const std::function<void(int layer, const std::vector<double>& values)>& store,
                 Problems& problems);
/// HNOFLO, one word; the rest of its line is dropped.
double read_no_flow_head(TextSource& in, const TextRules& rules);
/// Reads the starting heads of all layers and drops them (nothing converts them).
bool read_starting_heads(TextSource& in, ArrayStreams& streams, const TextRules& rules, TextRules& used,
                         const GridSize& size, Problems& problems);
/// PERLEN, NSTP, TSMULT, one line each period, and with `steady_word` (discretization file) SS or TR.
bool read_stress_periods(TextSource& in, const TextRules& rules, int count, bool steady_word,
                         StressPeriods& out, Problems& problems);

}  // namespace plx
