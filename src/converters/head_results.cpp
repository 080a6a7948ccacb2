#include "converters/head_results.h"

#include <cmath>
#include <cstdlib>
#include <limits>

#include "converters/model_state.h"
#include "formats/record_checks.h"
#include "plxutils/core/ArrayPosition.h"

namespace plx {
namespace {

void trace_header(const LayerHeader& h) {
    std::printf("[%d %d][%f %f][%s][%d %d %d]\n", h.step, h.period, h.period_time, h.total_time,
                h.label.c_str(), h.columns, h.rows, h.layer);
}

/// A number from 1 as one from 0; of a damaged record it may be any.
int from_zero(int number) { return static_cast<int>(static_cast<unsigned>(number) - 1U); }

/// Notes a record's step in the time table; false, after the array's bound message, when the table has no
/// such step.
bool note_step(ModelState& model, const LayerHeader& h) {
    std::printf("Attempting to set value in time conversion %d, %d, to %f\n", from_zero(h.period),
                from_zero(h.step), h.total_time);
    const int steps = model.periods.largest_steps();
    const bool inside = h.period >= 1 && h.period <= model.factory.nper && h.step >= 1 && h.step <= steps;
    if (!inside) {
        // The bound message of a table of periods and steps.
        ArrayPosition(model.factory.nper, steps, 1, 1)(from_zero(h.period), from_zero(h.step), 0, 0);
        return false;
    }
    model.times[{h.period - 1, h.step - 1}] = h.total_time;
    return true;
}

std::string grid_mismatch(const RecordFile& file, std::int64_t position, const LayerHeader& h,
                          const GridSize& size) {
    return file.place(position) + ": a layer of " + std::to_string(h.rows) + " rows and " +
           std::to_string(h.columns) + " columns, the model has " + std::to_string(size.rows) + " and " +
           std::to_string(size.columns);
}

/// Every record counts, a step is all layers in order, and the model's own size decides where the next one
/// begins.
void scan_plain(ModelState& model, int gap) {
    RecordFile& in = *model.heads.file;
    const GridSize size = model.size();
    const std::int64_t real = in.layout().real_bytes;
    const std::int64_t header_bytes = 36 + 2 * real;
    const std::int64_t layer_bytes = real * static_cast<std::int64_t>(size.per_layer());
    // Deliberate: a gap is assumed even where headers part the layers; the hosts' own head files rely on it.
    const std::int64_t between = gap > 0 ? gap : header_bytes;
    bool other_grid = false;
    while (!in.at_end()) {
        const std::int64_t position = in.position();
        LayerHeader h;
        if (!read_head_header(in, h)) break;
        const bool inside = note_step(model, h);
        trace_header(h);
        if (!other_grid && (h.columns != size.columns || h.rows != size.rows)) {
            other_grid = true;
            model.fail(gap > 0 && position > 0
                           ? in.place(position) + ": no step begins here, where a gap of " +
                                 std::to_string(gap) + " bytes between the layers would have it"
                           : grid_mismatch(in, position, h, size));
        }
        const std::pair<int, int> step{from_zero(h.period), from_zero(h.step)};
        if (inside) model.heads.positions[step] = {position};
        if (!in.skip(layer_bytes + (size.layers - 1) * (between + layer_bytes))) {
            // Half a step is no step; those before it stay good.
            model.heads.positions.erase(step);
            model.times.erase(step);
            if (gap == 0 || !other_grid)
                model.note(in.place(position) + ": the heads of this step are cut short");
            break;
        }
    }
}

/// Only records labelled HEAD count, each for the layer that it names.
void scan_by_label(ModelState& model, int gap) {
    RecordFile& in = *model.heads.file;
    const GridSize size = model.size();
    ReadingRules& used = model.factory.report.rules_used;
    LayerRecord record;
    bool cut = false;
    int expected = 1;
    model.heads.gap = find_head_gap(in, size, gap);
    HeadWalk walk(in, size, model.heads.gap);
    while (walk.next(record, cut)) {
        const LayerHeader& h = record.header;
        if (trimmed_label(h.label) != "HEAD") {
            used.head_records_only = true;
            continue;
        }
        trace_header(h);
        if (h.columns != size.columns || h.rows != size.rows || h.layer < 1 || h.layer > size.layers) {
            model.fail(h.layer < 1 || h.layer > size.layers
                           ? in.place(record.position) + ": layer " + std::to_string(h.layer) +
                                 ", the model has " + std::to_string(size.layers)
                           : grid_mismatch(in, record.position, h, size));
            return;
        }
        if (!note_step(model, h)) continue;
        if (h.layer != expected) used.head_records_only = true;
        expected = h.layer % size.layers + 1;
        auto& layers = model.heads.positions[{h.period - 1, h.step - 1}];
        layers.resize(static_cast<std::size_t>(size.layers), -1);
        layers[static_cast<std::size_t>(h.layer - 1)] = record.position;
    }
    if (cut) model.note(in.place(record.position) + ": the record is cut short");
    // Beyond the first step, headers lie elsewhere than the plain scan looks, and so do values behind a gap.
    const bool elsewhere = model.heads.gap > 0 || model.heads.positions.size() > 1;
    if (gap > 0 && size.layers > 1 && elsewhere) used.head_records_only = true;
}

/// What a value of the head file means in a cell: by the plain rule markers become elevations, otherwise the
/// values that stand for "no head" become not-a-number, and it is noted whether the plain meaning was
/// another.
class HeadMeaning {
public:
    HeadMeaning(const ModelState& model, bool& used)
        : plain_(!model.factory.reading_rules.model_no_flow_heads),
          flags_(model.flags),
          no_flow_(model.has_no_flow_head ? static_cast<float>(model.no_flow_head) : kNone),
          dry_(model.dry_head ? static_cast<float>(*model.dry_head) : kNone),
          used_(used) {}

    /// @param cell  counts over all layers; `bottom` is that cell's.
    float operator()(float h, std::size_t cell, double bottom) const {
        return plain_ ? plain_head(h, bottom) : model_head(h, cell);
    }

private:
    static constexpr float kNone = std::numeric_limits<float>::quiet_NaN();

    static float plain_head(float h, double bottom) {
        if (static_cast<double>(h) > 100000.0) return static_cast<float>(bottom - 10.0);
        return h == -888.0F ? static_cast<float>(bottom) : h;
    }

    float model_head(float h, std::size_t cell) const {
        const bool marker = std::fabs(h) >= 1e29F || h == -888.0F || h == -999.0F || std::isnan(h);
        // HNOFLO and HDRY are ordinary numbers in many models, and a constant head may be one of them.
        const bool own = !flags_.constant_head(cell) && (h == no_flow_ || h == dry_);
        if (!flags_.active(cell)) return marker || own ? kNone : h;
        if (marker || own) {
            if (h != -888.0F) used_ = true;
            return kNone;
        }
        if (h > 100000.0F) used_ = true;
        return h;
    }

    bool plain_;
    const CellFlags& flags_;
    float no_flow_, dry_;
    bool& used_;
};

/// Reads a layer's values at the file's position; false when they are cut short.
bool load_layer(ModelState& model, std::size_t k, const HeadMeaning& meaning) {
    const std::size_t per_layer = model.size().per_layer(), first = k * per_layer;
    float* layer = model.heads.values.data() + first;
    if (!model.heads.file->read_reals(layer, per_layer)) return false;
    const auto& bottoms = *model.geometry.bottoms[k];
    for (std::size_t cell = 0; cell < per_layer; ++cell) {
        layer[cell] = meaning(layer[cell], first + cell, bottoms[cell]);
    }
    return true;
}

void load_plain(ModelState& model, std::int64_t position, const HeadMeaning& meaning) {
    if (!model.heads.file->seek(position)) return;
    for (int k = 0; k < model.factory.nlay; ++k) {
        LayerHeader h;
        if (!read_head_header(*model.heads.file, h)) return;
        trace_header(h);
        if (h.layer != k + 1) std::printf("Layer check failed\n");
        if (!load_layer(model, static_cast<std::size_t>(k), meaning)) return;
    }
}

void load_by_layer(ModelState& model, const std::vector<std::int64_t>& positions,
                   const HeadMeaning& meaning) {
    RecordFile& in = *model.heads.file;
    for (std::size_t k = 0; k < positions.size(); ++k) {
        LayerHeader h;
        if (positions[k] < 0 || !in.seek(positions[k])) continue;
        if (k > 0 && model.heads.gap > 0) {
            if (!in.skip(model.heads.gap)) continue;
        } else {
            if (!read_head_header(in, h)) continue;
            trace_header(h);
        }
        load_layer(model, k, meaning);
    }
}

}  // namespace

int find_head_gap(RecordFile& in, const GridSize& size, int gap) {
    LayerRecord first, next;
    bool cut = false;
    const auto follows = [&](std::int64_t position) {
        LayerHeader h;
        return in.seek(position) && read_head_header(in, h) && plausible_step(h.step) &&
               plausible_step(h.period) && plausible_label(h.label) && h.columns == first.header.columns &&
               h.rows == first.header.rows && h.layer >= 1;
    };
    int found = 0;
    const bool possible = gap > 0 && size.layers > 1 && !in.layout().record_markers;
    if (possible && in.seek(0) && next_head_record(in, first, cut) && first.header.layer == 1) {
        const std::int64_t second = in.position(), bytes = second - first.values;
        const std::int64_t end = second + (size.layers - 1) * (gap + bytes);
        const bool fits = end == in.size() || follows(end);
        if (fits && second < in.size() && !follows(second)) found = gap;
    }
    in.seek(0);
    return found;
}

bool HeadWalk::next(LayerRecord& record, bool& cut) {
    if (gap_ == 0 || layer_ == 0 || layer_ == layers_) {
        if (!next_head_record(in_, record, cut)) return false;
        first_ = record.header;
        layer_ = 1;
        return true;
    }
    cut = true;
    record.position = in_.position();
    record.values = record.position + gap_;
    record.header = first_;
    record.header.layer = ++layer_;
    const std::int64_t cells = static_cast<std::int64_t>(first_.columns) * first_.rows;
    if (!in_.skip(gap_ + cells * in_.layout().real_bytes)) return false;
    cut = false;
    return true;
}

void scan_heads(ModelState& model, const HeadDialect& dialect) {
    ConverterFactory& f = model.factory;
    std::FILE* stream = model.streams.file(f.hed_unit);
    // A model without a grid has been told already.
    if (stream == nullptr || model.size().cells() == 0) return;
    std::printf("Reading head with %d stress_periods and %d tot_timesteps\n", f.nper, f.total_steps);
    model.heads.positions.clear();
    const std::string name = display_name(model.streams.path(f.hed_unit));
    const auto layout = detect_layer_layout(stream);
    model.heads.file = std::make_unique<RecordFile>(stream, name);
    if (!layout) {
        if (model.heads.file->size() > 0) {
            model.fail(name + ": byte 0: no head record begins here");
        } else {
            model.warn(name + ": the file is empty");
        }
        if (f.reading_rules.head_records_only) return;
    } else if (!adopt_layout(model, *model.heads.file, *layout)) {
        return;
    }
    if (f.reading_rules.head_records_only) {
        scan_by_label(model, dialect.gap);
    } else {
        scan_plain(model, dialect.gap);
    }
}

void load_heads(ModelState& model, const HeadDialect& dialect) {
    HeadResults& heads = model.heads;
    const auto found = heads.positions.find({model.current.period, model.current.step});
    const bool by_layer = model.factory.reading_rules.head_records_only;
    heads.values.assign(model.size().cells(), by_layer ? std::numeric_limits<float>::quiet_NaN() : 0.0F);
    if (heads.positions.empty()) {
        std::printf("%s", dialect.missing);
        return;
    }
    // Without active cells nobody asks for a head.
    if (found == heads.positions.end() || model.geometry.bottoms.empty() || model.flags.empty()) return;
    const HeadMeaning meaning(model, model.factory.report.rules_used.model_no_flow_heads);
    if (by_layer) {
        load_by_layer(model, found->second, meaning);
    } else {
        load_plain(model, found->second.front(), meaning);
    }
}

}  // namespace plx
