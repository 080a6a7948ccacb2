#include "formats/layer_records.h"

#include <array>
#include <cstring>

#include "formats/record_checks.h"

namespace plx {

namespace {

/// The numbers before the label: heads have KSTP, KPER, PERTIM, TOTIM; concentrations NTRANS, KSTP, KPER,
/// TIME.
struct HeaderForm {
    int integers;
    int reals;
};
constexpr HeaderForm kHeads{2, 2};
constexpr HeaderForm kConcentrations{3, 1};

std::int32_t int_at(const char* bytes) {
    std::int32_t v = 0;
    std::memcpy(&v, bytes, sizeof v);
    return v;
}

bool starts_with_header(std::FILE* file, const ResultLayout& layout, const HeaderForm& form) {
    RecordFile in(file, {});
    in.set_layout(layout);
    std::array<char, 64> header{};
    const int label = 4 * form.integers + layout.real_bytes * form.reals;
    const int sizes = label + static_cast<int>(kLabelBytes);
    if (!in.read(header.data(), static_cast<std::size_t>(sizes) + 12) || !in.at_record_start()) return false;

    const char* bytes = header.data();
    const bool transport = form.integers == 3;
    if (transport && int_at(bytes) < 0) return false;
    const char* step = transport ? bytes + 4 : bytes;
    const std::int32_t layer = int_at(bytes + sizes + 8);
    return plausible_step(int_at(step)) && plausible_step(int_at(step + 4)) &&
           plausible_label({bytes + label, kLabelBytes}) &&
           plausible_extents(int_at(bytes + sizes), int_at(bytes + sizes + 4), 1) && layer >= 1 &&
           layer <= kMaxCells;
}

}  // namespace

std::optional<ResultLayout> detect_layer_layout(std::FILE* file) {
    const KeepPosition keep(file);
    // The label of marked concentrations stands where that of plain 64-bit heads does, and so for the other
    // way round: the markers, which must agree, are looked at first.
    for (const bool markers : {true, false}) {
        for (const int real_bytes : {4, 8}) {
            const ResultLayout layout{markers, real_bytes};
            for (const HeaderForm& form : {kHeads, kConcentrations}) {
                if (starts_with_header(file, layout, form)) return layout;
            }
        }
    }
    return std::nullopt;
}

bool read_head_header(RecordFile& in, LayerHeader& header) {
    std::array<char, kLabelBytes> label{};
    header = {};
    if (!in.read_int(header.step) || !in.read_int(header.period) || !in.read_real(header.period_time) ||
        !in.read_real(header.total_time) || !in.read(label.data(), label.size()) ||
        !in.read_int(header.columns) || !in.read_int(header.rows) || !in.read_int(header.layer)) {
        return false;
    }
    header.label.assign(label.data(), label.size());
    return true;
}

bool next_head_record(RecordFile& in, LayerRecord& record, bool& cut) {
    cut = !in.at_end();
    if (!cut) return false;
    record.position = in.position();
    if (!read_head_header(in, record.header)) return false;
    record.values = in.position();
    const std::int64_t columns = record.header.columns, rows = record.header.rows;
    if (!plausible_extents(columns, rows, 1) || !in.skip(columns * rows * in.layout().real_bytes))
        return false;
    cut = false;
    return true;
}

std::string trimmed_label(const std::string& label) {
    const std::string text = label.substr(0, label.find('\0'));
    const std::size_t begin = text.find_first_not_of(" \n\r\t");
    if (begin == std::string::npos) return {};
    return text.substr(begin, text.find_last_not_of(" \n\r\t") + 1 - begin);
}

}  // namespace plx
