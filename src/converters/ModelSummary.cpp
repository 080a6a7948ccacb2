#include "plxutils/converters/ModelSummary.h"

#include <algorithm>
#include <cstdio>
#include <memory>

#include "converters/model_state.h"
#include "formats/budget_records.h"
#include "formats/concentration_records.h"
#include "formats/gms_cards.h"
#include "formats/gms_steps.h"
#include "formats/layer_records.h"
#include "formats/link_records.h"
#include "formats/record_checks.h"
#include "platform/platform.h"

namespace plx {
namespace {

struct Closer {
    void operator()(std::FILE* f) const { std::fclose(f); }
};

void add_step(ResultSummary& out, int period, int step, double time) {
    const bool known =
        !out.steps.empty() && out.steps.back().period == period && out.steps.back().step == step;
    if (!known) out.steps.push_back({period, step, time});
}

void note_layout(ResultSummary& out, RecordFile& in, const ResultLayout& layout) {
    in.set_layout(layout);
    out.record_markers = layout.record_markers;
    out.real_bytes = layout.real_bytes;
}

void describe_layers(RecordFile& in, ResultSummary& out) {
    LayerRecord record;
    bool cut = false;
    while (next_head_record(in, record, cut)) {
        const LayerHeader& h = record.header;
        if (out.label.empty()) {
            out.label = trimmed_label(h.label);
            out.kind = out.label == "HEAD" ? "heads" : out.label == "DRAWDOWN" ? "drawdown" : "layers";
            out.rows = h.rows;
            out.columns = h.columns;
        }
        out.layers = std::max(out.layers, h.layer);
        add_step(out, h.period, h.step, h.total_time);
    }
    if (cut) out.problem = "byte " + std::to_string(record.position) + ": the record is cut short";
}

/// Heads have the low bytes of a time where concentrations have their stress period.
bool begins_as_concentrations(RecordFile& in) {
    LayerHeader h;
    const bool whole = in.seek(0) && read_concentration_header(in, h) == ConcentrationField::kNone;
    return whole && h.transport_step >= 0 && plausible_step(h.step) && plausible_step(h.period) &&
           plausible_label(h.label) && plausible_extents(h.columns, h.rows, 1);
}

void describe_concentrations(RecordFile& in, ResultSummary& out) {
    out.kind = "concentrations";
    std::int64_t position = 0;
    for (; !in.at_end(); position = in.position()) {
        LayerHeader h;
        if (read_concentration_header(in, h) != ConcentrationField::kNone ||
            !plausible_extents(h.columns, h.rows, 1) ||
            !in.skip(std::int64_t{h.columns} * h.rows * in.layout().real_bytes)) {
            out.problem = "byte " + std::to_string(position) + ": the record is cut short";
            return;
        }
        if (out.label.empty()) {
            out.label = trimmed_label(h.label);
            out.rows = h.rows;
            out.columns = h.columns;
        }
        out.layers = std::max(out.layers, h.layer);
        // Several transport steps may end within one flow step.
        const bool known = !out.steps.empty() && out.steps.back().time == h.total_time;
        if (!known) out.steps.push_back({h.period, h.step, h.total_time});
    }
}

bool begins_as_gms_dataset(RecordFile& in) {
    std::int32_t first = 0, second = 0;
    if (!in.seek(0) || !in.read_int(first) || !in.read_int(second)) return false;
    return first == kBinaryVersion || (first == kFirstRecord && second == kBinaryVersion);
}

/// Concentrations that GMS keeps as a dataset of the grid; it has times, but no steps of the flow model.
void describe_gms_dataset(std::FILE* file, ResultSummary& out) {
    platform::seek(file, 0, SEEK_SET);
    GmsSteps steps(file, out.file);
    out.kind = "concentrations";
    auto next = GmsSteps::Next::kFault;
    if (steps.open()) {
        out.label = steps.dataset();
        double time = 0.0;
        while ((next = steps.next(nullptr, time)) == GmsSteps::Next::kStep) {
            out.steps.push_back({0, 0, time});
        }
    }
    if (next != GmsSteps::Next::kFault) return;
    if (out.steps.empty()) out.kind = "unreadable";
    out.problem = "byte " + std::to_string(steps.fault().position) + ": the dataset is damaged or cut short";
}

const char* form_of(const BudgetHeader& h) {
    if (!h.compact || h.type == 0 || h.type == 1) return "array";
    return h.type == 2 || h.type == 5 ? "list" : "layer array";
}

std::int64_t cells_of(RecordFile& in, const BudgetRecord& record) {
    const GridSize grid{record.header.layers, record.header.rows, record.header.columns};
    std::int64_t cells = 0;
    const std::int64_t back = in.position();
    read_budget_arrays(in, record, grid, [&](int, const double* values, const int*) {
        cells += std::count_if(values, values + grid.per_layer(), [](double v) { return v != 0.0; });
    });
    in.seek(back);
    return cells;
}

void add_term(ResultSummary& out, RecordFile& in, const BudgetRecord& record) {
    const BudgetHeader& h = record.header;
    out.layers = h.layers;
    out.rows = h.rows;
    out.columns = h.columns;
    add_step(out, h.period, h.step, h.total_time);
    const std::string form = form_of(h);
    auto term = std::find_if(out.terms.begin(), out.terms.end(),
                             [&](const TermSummary& t) { return t.label == h.label && t.form == form; });
    if (term == out.terms.end()) term = out.terms.insert(term, {h.label, form, 0, 0});
    ++term->records;
    term->entries += form == "list" ? record.entries : cells_of(in, record);
}

void describe_flows(RecordFile& in, ResultSummary& out) {
    out.kind = "flows";
    GridSize grid;
    for (;;) {
        BudgetRecord record;
        const BudgetNext next = next_budget_record(in, grid, record);
        if (next == BudgetNext::kEnd) return;
        if (next != BudgetNext::kRecord) {
            out.problem = "byte " + std::to_string(record.position) +
                          (next == BudgetNext::kCutShort
                               ? std::string(": the record is cut short")
                               : ": record type " + std::to_string(record.header.type) + " is not known");
            return;
        }
        const BudgetHeader& h = record.header;
        grid = {h.layers, h.rows, h.columns};
        add_term(out, in, record);
    }
}

void describe_link(RecordFile& in, ResultSummary& out, std::FILE* file) {
    out.kind = "flow link";
    const auto layout = detect_link_layout(file);
    bool old_version = false;
    if (layout) note_layout(out, in, *layout);
    if (!layout || !in.seek(0) || !read_link_header(in, old_version)) {
        out.problem = is_text_link(file) ? "a link file in text form is not read"
                                         : "byte 0: the link header is damaged";
        return;
    }
    for (;;) {
        BudgetRecord record;
        const LinkNext next = next_link_record(in, record);
        if (next == LinkNext::kEnd) return;
        if (next != LinkNext::kRecord) {
            out.problem =
                "byte " + std::to_string(record.position) + ": the record is cut short or not known";
            return;
        }
        add_term(out, in, record);
    }
}

ResultSummary describe(std::FILE* file, const std::string& path) {
    ResultSummary out;
    out.file = display_name(path);
    out.kind = "missing";
    if (file == nullptr) {
        out.problem = "the file cannot be opened";
        return out;
    }
    RecordFile in(file, out.file);
    if (begins_as_gms_dataset(in)) {
        describe_gms_dataset(file, out);
    } else if (const auto layers = detect_layer_layout(file)) {
        note_layout(out, in, *layers);
        const bool transport = begins_as_concentrations(in);
        if (!in.seek(0)) return out;
        if (transport) {
            describe_concentrations(in, out);
        } else {
            describe_layers(in, out);
        }
    } else if (const auto flows = detect_budget_layout(file)) {
        note_layout(out, in, *flows);
        if (in.seek(0)) describe_flows(in, out);
    } else if (begins_as_link(file, true)) {
        describe_link(in, out, file);
    } else {
        out.kind = "unreadable";
        out.problem = in.size() == 0 ? "the file is empty" : "byte 0: no head or budget record begins here";
    }
    return out;
}

LayerSummary describe_layer(const ModelState& model, int layer) {
    LayerSummary out;
    const auto k = static_cast<std::size_t>(layer);
    const std::size_t per_layer = model.size().per_layer();
    for (std::size_t i = 0; !model.flags.empty() && i < per_layer; ++i) {
        const bool active = model.flags.active(k * per_layer + i);
        out.active += active ? 1 : 0;
        out.constant_head += active && model.flags.constant_head(k * per_layer + i) ? 1 : 0;
    }
    if (k < model.geometry.tops.size() && per_layer > 0) {
        const auto [low_top, high_top] =
            std::minmax_element(model.geometry.tops[k]->begin(), model.geometry.tops[k]->end());
        const auto [low, high] =
            std::minmax_element(model.geometry.bottoms[k]->begin(), model.geometry.bottoms[k]->end());
        out.top_min = *low_top;
        out.top_max = *high_top;
        out.bottom_min = *low;
        out.bottom_max = *high;
    }
    return out;
}

/// The stream of a name-file line; a file that no output needed is opened here.
ResultSummary describe_entry(ModelState& model, const NameFileEntry& entry) {
    std::FILE* file = model.streams.file(entry.unit);
    if (file == nullptr) return summarize_result_file(entry.path.c_str());
    platform::seek(file, 0, SEEK_SET);
    return describe(file, entry.path);
}

/// Adds the concentrations that a conversion would write, but for files that the name file names, too.
void add_concentrations(ModelState& model, std::vector<ResultSummary>& results) {
    VX1DArray<String>& names = model.factory.species_names;
    for (const SpeciesFile& species : model.transport.species) {
        const KeepPosition keep(species.stream.get());
        platform::seek(species.stream.get(), 0, SEEK_SET);
        ResultSummary found = describe(species.stream.get(), species.name());
        if (species.number <= names.GetSize()) found.species = names[species.number - 1].c_str();
        const auto known = std::find_if(results.begin(), results.end(),
                                        [&](const ResultSummary& r) { return r.file == found.file; });
        if (known == results.end()) {
            results.push_back(std::move(found));
        } else {
            known->species = found.species;
        }
    }
}

double extent(const std::vector<double>& edges) {
    if (edges.empty()) return 0.0;
    const auto [low, high] = std::minmax_element(edges.begin(), edges.end());
    return *high - *low;
}

}  // namespace

ModelSummary summarize_model(ConverterFactory& factory) {
    ModelState& model = plx_model_state(factory);
    ModelSummary out;
    out.layers = factory.nlay;
    out.rows = factory.nrow;
    out.columns = factory.ncol;
    out.width = extent(model.geometry.column_edges);
    out.height = extent(model.geometry.row_edges);
    out.x_origin = factory.x_origin;
    out.y_origin = factory.y_origin;
    out.rotation = factory.rotation;
    // The zero of the date numbers stands for no date.
    if (factory.start_date != 0.0) out.start = platform::date_text(factory.start_date);
    out.time_units = factory.time_units.c_str();
    out.length_units = factory.length_units.c_str();
    for (int k = 0; k < factory.nlay; ++k) out.layer.push_back(describe_layer(model, k));
    for (const StressPeriod& p : model.periods.periods) out.periods.push_back({p.length, p.steps, p.steady});
    for (const NameFileEntry& entry : model.name_entries) {
        if (entry.type != "DATA(BINARY)") continue;
        out.results.push_back(describe_entry(model, entry));
    }
    add_concentrations(model, out.results);
    return out;
}

ResultSummary summarize_result_file(const char* path) {
    const std::unique_ptr<std::FILE, Closer> file(platform::open_file(path == nullptr ? "" : path, "rb"));
    return describe(file.get(), path == nullptr ? "" : path);
}

}  // namespace plx
