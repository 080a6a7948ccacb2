#include "formats/budget_records.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "formats/layer_records.h"
#include "formats/record_checks.h"

namespace plx {

namespace {

/// The part of a header that compact and other records share.
struct Stamp {
    std::int32_t step, period;
    std::array<char, kLabelBytes> label;
    std::int32_t columns, rows, layers;

    std::int64_t layer_count() const { return layers < 0 ? -std::int64_t{layers} : layers; }
    bool plausible_size() const { return plausible_extents(columns, rows, layer_count()); }
    bool plausible() const {
        return plausible_step(step) && plausible_step(period) && plausible_size() &&
               plausible_label({label.data(), label.size()});
    }
};
static_assert(sizeof(Stamp) == 36);

bool is_list(const BudgetHeader& header) { return header.compact && (header.type == 2 || header.type == 5); }
bool is_full_array(const BudgetHeader& header) {
    return !header.compact || header.type == 0 || header.type == 1;
}

bool read_header(RecordFile& in, const GridSize& grid, BudgetHeader& header) {
    Stamp stamp{};
    header = {};
    if (!in.read(&stamp, sizeof stamp) || !stamp.plausible_size()) return false;
    header.step = stamp.step;
    header.period = stamp.period;
    header.label = trimmed_label({stamp.label.data(), stamp.label.size()});
    header.columns = stamp.columns;
    header.rows = stamp.rows;
    header.layers = stamp.layers == 0 ? grid.layers : static_cast<int>(stamp.layer_count());
    header.compact = stamp.layers <= 0;
    if (!header.compact) return true;
    return in.read_int(header.type) && in.read_real(header.step_length) && in.read_real(header.period_time) &&
           in.read_real(header.total_time);
}

/// What stands before the entries of a list.
struct ListShape {
    std::int64_t entries = 0;
    std::int64_t entry_bytes = 0;
};

bool read_list_shape(RecordFile& in, int type, ListShape& shape) {
    std::int32_t values = 1, entries = 0;
    if (type == 5) {
        if (!in.read_int(values) || values < 1) return false;
        if (!in.skip((std::int64_t{values} - 1) * static_cast<std::int64_t>(kLabelBytes))) return false;
    }
    if (!in.read_int(entries) || entries < 0) return false;
    shape.entries = entries;
    shape.entry_bytes = 4 + std::int64_t{values} * in.layout().real_bytes;
    return shape.entries <= in.remaining() / shape.entry_bytes;
}

bool pass_over_data(RecordFile& in, BudgetRecord& record) {
    const BudgetHeader& header = record.header;
    if (is_list(header)) {
        ListShape shape;
        if (!read_list_shape(in, header.type, shape)) return false;
        record.entries = shape.entries;
        return in.skip(shape.entries * shape.entry_bytes);
    }
    const std::int64_t cells = std::int64_t{header.columns} * header.rows;
    const std::int64_t reals = in.layout().real_bytes;
    if (is_full_array(header)) return in.skip(cells * reals * header.layers);
    return (header.type == 4 || in.skip(cells * 4)) && in.skip(cells * reals);
}

bool starts_with_stamp(RecordFile& in) {
    Stamp stamp{};
    return in.at_record_start() && in.read(&stamp, sizeof stamp) && in.at_record_start() && stamp.plausible();
}

/// Times of a real run: none negative, none smaller than the part of it that the one before is.
bool plausible_times(const BudgetHeader& header) {
    constexpr double kRounding = 1.0 - 1e-4, kSmallest = 1e-20, kLargest = 1e20;
    const double length = header.step_length, total = header.total_time;
    return length >= 0.0 && header.period_time >= length * kRounding &&
           total >= header.period_time * kRounding && total < kLargest &&
           (length == 0.0 || length > kSmallest);
}

/// How well a layout fits, 0 when not at all. A header where the next one must stand is proof; a file that
/// ends there may have been cut, so that the times weigh more.
int fit_of_layout(std::FILE* file, const ResultLayout& layout) {
    constexpr int kProof = 5, kTimes = 2, kEnds = 1, kFirstHeader = 1;
    RecordFile in(file, {});
    in.set_layout(layout);
    if (!starts_with_stamp(in) || !in.seek(0)) return 0;
    BudgetRecord record;
    const bool whole = next_budget_record(in, {}, record) == BudgetNext::kRecord;
    const bool ends = whole && in.at_end();
    if (whole && !ends && starts_with_stamp(in)) return kProof;
    const bool times = record.header.compact && plausible_times(record.header);
    return kFirstHeader + (times ? kTimes : 0) + (ends ? kEnds : 0);
}

}  // namespace

std::optional<ResultLayout> detect_budget_layout(std::FILE* file) {
    const KeepPosition keep(file);
    std::optional<ResultLayout> best;
    int best_fit = 0;
    for (const bool markers : {false, true}) {
        for (const int real_bytes : {4, 8}) {
            const ResultLayout layout{markers, real_bytes};
            const int fit = fit_of_layout(file, layout);
            if (fit <= best_fit) continue;
            best_fit = fit;
            best = layout;
        }
    }
    return best;
}

BudgetNext next_budget_record(RecordFile& in, const GridSize& grid, BudgetRecord& record) {
    record = {};
    if (in.at_end()) return BudgetNext::kEnd;
    record.position = in.position();
    if (!read_header(in, grid, record.header)) return BudgetNext::kCutShort;
    record.data = in.position();
    if (record.header.compact && (record.header.type < 0 || record.header.type > 5)) {
        return BudgetNext::kUnknownType;
    }
    return pass_over_data(in, record) ? BudgetNext::kRecord : BudgetNext::kCutShort;
}

bool read_budget_arrays(RecordFile& in, const BudgetRecord& record, const GridSize& grid,
                        const LayerValues& store) {
    const BudgetHeader& header = record.header;
    if (header.columns != grid.columns || header.rows != grid.rows || header.layers != grid.layers)
        return false;
    const bool full = is_full_array(header), indicated = header.compact && header.type == 3;
    if (!full && !indicated && header.type != 4) return false;
    // A record that leaves its layers to a grid without layers holds no values, whatever its extents are.
    if (full && grid.layers < 1) return true;

    const std::size_t cells = grid.per_layer();
    const int read_layers = full ? grid.layers : 1;
    const auto layer_bytes = static_cast<std::int64_t>(cells) * in.layout().real_bytes;
    if (!in.seek(record.data) || layer_bytes * read_layers > in.remaining()) return false;
    std::vector<std::int32_t> layers(indicated ? cells : 0);
    if (!in.read(layers.data(), layers.size() * sizeof(std::int32_t))) return false;
    for (std::int32_t& layer : layers) layer = std::max(layer, 0) - 1;

    std::vector<double> values(cells);
    for (int layer = 0; layer < read_layers; ++layer) {
        if (!in.read_reals(values.data(), cells)) return false;
        store(layer, values.data(), indicated ? layers.data() : nullptr);
    }
    return true;
}

bool read_budget_list(RecordFile& in, const BudgetRecord& record, std::vector<BudgetEntry>& entries) {
    ListShape shape;
    if (!is_list(record.header) || !in.seek(record.data) || !read_list_shape(in, record.header.type, shape)) {
        return false;
    }
    const std::size_t before = entries.size();
    const std::int64_t rest = shape.entry_bytes - 4 - in.layout().real_bytes;
    entries.reserve(before + static_cast<std::size_t>(shape.entries));
    for (std::int64_t i = 0; i < shape.entries; ++i) {
        BudgetEntry entry;
        if (!in.read_int(entry.cell) || !in.read_real(entry.flow) || !in.skip(rest)) {
            entries.resize(before);
            return false;
        }
        entries.push_back(entry);
    }
    return true;
}

}  // namespace plx
