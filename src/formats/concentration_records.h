#pragma once

#include <cstdint>
#include <string>

#include "formats/grid_geometry.h"
#include "formats/layer_records.h"
#include "formats/record_file.h"

namespace plx {

/// The parts of a concentration record in their order; kNone: nothing is missing.
enum class ConcentrationField {
    kTransportStep,
    kStep,
    kPeriod,
    kTime,
    kText,
    kColumns,
    kRows,
    kLayer,
    kValues,
    kNone
};

/// Bytes of a header without record markers and with 32-bit reals.
inline constexpr std::int64_t kConcentrationHeader = 44;

/// Reads a concentration file's header at the position.
///
/// Source: MT3D unformatted concentration file, little-endian: NTRANS, KSTP, KPER (int32), TIME (real),
/// TEXT[16], NCOL, NROW, ILAY (int32), then NCOL * NROW reals, row by row; one record per layer and transport
/// time.
///
/// @return the first field that could not be read. `total_time` is TIME, `period_time` stays 0.
ConcentrationField read_concentration_header(RecordFile& in, LayerHeader& header);

/// Why a header is not that of layer `layer` (from 1) of the grid; empty when it is.
std::string concentration_grid_fault(const LayerHeader& header, const GridSize& grid, int layer);

/// Looks at the headers of the first transport time, and of what follows it, and goes back to the begin.
///
/// @param any_layer        records count in their order, whatever layer they name.
/// @param[out] time_bytes  size of the first transport time; 0 when the file is shorter.
/// @return "file: byte N: ..." for a file of another grid; empty otherwise, also for a file that ends early.
std::string check_first_concentrations(RecordFile& in, const GridSize& grid, bool any_layer,
                                       std::int64_t& time_bytes);

}  // namespace plx
