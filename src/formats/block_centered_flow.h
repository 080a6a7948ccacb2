#pragma once

#include <vector>

#include "formats/array_record.h"
#include "formats/grid_geometry.h"

namespace plx {

struct BlockCenteredFlow {
    std::vector<double> delr, delc;
    std::vector<int> laycon;    ///< per layer, averaging digit dropped
    double dry_head = 0.0;      ///< HDRY
    bool has_dry_head = false;  ///< its field is not blank
    GridGeometry::Surface top;
    std::vector<GridGeometry::Surface> tops, bottoms;  ///< one per layer
};

/// Reads a MODFLOW-88/96 block-centred-flow package (BCF): the widths and the layer surfaces; other arrays
/// are passed.
///
/// @param free_format  the basic package's options said FREE; obeyed for the first record and LAYCON only
/// when
///                     `free_bcf_record` is set too.
/// @param free_used    set when that made a difference.
bool read_block_centered_flow(TextSource& in, ArrayStreams& streams, const TextRules& rules, TextRules& used,
                              const GridSize& size, bool free_format, bool free_bcf_record, bool& free_used,
                              BlockCenteredFlow& out, Problems& problems);

/// HDRY of the first record of a flow package of MODFLOW 2000 and later (BCF6, LPF, HUF, UPW): its second
/// field, by words or, in fixed form, columns 11 to 20. False when there is none.
bool read_flow_package_dry_head(TextSource& in, double& dry_head);

}  // namespace plx
