#pragma once

#include <optional>
#include <string>

#include "formats/record_file.h"

namespace plx {

/// Header of one layer of a head, drawdown or concentration file: 44 bytes with 32-bit reals.
struct LayerHeader {
    int transport_step = 0;  ///< NTRANS, concentration files only
    int step = 0;            ///< KSTP, from 1
    int period = 0;          ///< KPER, from 1
    double period_time = 0;  ///< PERTIM (absent from concentration files)
    double total_time = 0;   ///< TOTIM
    std::string label;       ///< TEXT, 16 characters as they stand
    int columns = 0, rows = 0;
    int layer = 0;  ///< ILAY, from 1
};

/// Tells the layout of a layer file from its first header (plain or with record markers, 32 or 64-bit reals);
/// empty when the bytes are no layer record at all. The stream's position is put back.
std::optional<ResultLayout> detect_layer_layout(std::FILE* file);

/// Reads a head file's header at the position (KSTP, KPER, PERTIM, TOTIM, TEXT, NCOL, NROW, ILAY), its
/// numbers as they stand; false at the end of the file or when it is cut short.
bool read_head_header(RecordFile& in, LayerHeader& header);

/// A layer's record: where its header and its values begin.
struct LayerRecord {
    LayerHeader header;
    std::int64_t position = 0;  ///< of the header
    std::int64_t values = 0;    ///< of the values
};

/// Reads the next header and passes over its values by the header's own NCOL and NROW; false at the end of
/// the file or when the record is cut short or its size is impossible (`cut` is set then).
bool next_head_record(RecordFile& in, LayerRecord& record, bool& cut);

/// Label without blanks, tabs and line ends at both sides, upper case kept. A zero byte ends it.
std::string trimmed_label(const std::string& label);

}  // namespace plx
