#include "converters/flow_results.h"

#include <cstdio>
#include <string>

#include "converters/model_state.h"

namespace plx {
namespace {

void set_term_flag(ConverterFactory& f, int slot) {
    static constexpr std::array<bool ConverterFactory::*, kSlotCount> kFlags = {
        nullptr,
        nullptr,
        nullptr,
        &ConverterFactory::has_storage,
        &ConverterFactory::has_constant_head,
        &ConverterFactory::has_wells,
        &ConverterFactory::has_drains,
        &ConverterFactory::has_recharge,
        &ConverterFactory::has_et,
        &ConverterFactory::has_river_leakage,
        &ConverterFactory::has_general_head,
    };
    if (const auto flag = kFlags[static_cast<std::size_t>(slot)]) f.*flag = true;
}

/// Opens a unit's stream as a flow file in the layout found at its begin; false after a message.
bool add_file(ModelState& model, int unit) {
    std::FILE* stream = model.streams.file(unit);
    if (stream == nullptr) return false;
    const std::string name = display_name(model.streams.path(unit));
    auto file = std::make_unique<RecordFile>(stream, name);
    const auto layout = detect_budget_layout(stream);
    if (!layout) {
        if (file->size() > 0) {
            model.fail(name + ": byte 0: no budget record begins here");
        } else {
            model.warn(name + ": the file is empty");
        }
        return false;
    }
    if (!adopt_layout(model, *file, *layout)) return false;
    model.flows.files.push_back(std::move(file));
    return true;
}

/// Records one budget term by period, step and slot.
class TermIndex {
public:
    TermIndex(ModelState& model, bool constant_head_anywhere)
        : model_(model),
          rules_{model.factory.reading_rules.list_terms_by_label, constant_head_anywhere},
          plain_{false, constant_head_anywhere} {}

    void add(int file, const BudgetRecord& record) {
        const BudgetHeader& h = record.header;
        if (h.step < 1 || h.period < 1) return;
        const int type = h.compact ? h.type : kNotCompact;
        const BudgetSlot slot = slot_of_record(type, h.label, rules_);
        if (slot != slot_of_record(type, h.label, plain_)) {
            model_.factory.report.rules_used.list_terms_by_label = true;
        }
        index_flow(model_, file, record, slot);
    }

private:
    ModelState& model_;
    TermRules rules_, plain_;
};

void scan_file(ModelState& model, int file, TermIndex& index) {
    RecordFile& in = *model.flows.files[static_cast<std::size_t>(file)];
    const GridSize size = model.size();
    if (!in.seek(0)) return;
    for (;;) {
        BudgetRecord record;
        const BudgetNext next = next_budget_record(in, size, record);
        if (next == BudgetNext::kEnd) return;
        if (next == BudgetNext::kUnknownType) {
            std::printf("MODFLOW::read_CCF found unidentified case %d\n", record.header.type);
            model.note(in.place(record.position) + ": budget record type " +
                       std::to_string(record.header.type) + " is not known");
            return;
        }
        if (next == BudgetNext::kCutShort) {
            model.note(in.place(record.position) + ": the record is cut short");
            return;
        }
        if (!fits_grid(model, in, record)) return;
        index.add(file, record);
    }
}

void load_face(ModelState& model, int slot, const FlowRecord& flow) {
    const GridSize size = model.size();
    RealColumn& face = model.flows.faces[static_cast<std::size_t>(slot)];
    read_budget_arrays(*model.flows.files[static_cast<std::size_t>(flow.file)], flow.record, size,
                       [&](int layer, const double* values, const int*) {
                           const std::size_t first = static_cast<std::size_t>(layer) * size.per_layer();
                           for (std::size_t i = 0; i < size.per_layer(); ++i) face.set(first + i, values[i]);
                       });
}

void load_list(ModelState& model, TermCells& term, const FlowRecord& flow, const FlowListReader& read_list) {
    const auto cells = static_cast<std::int64_t>(model.size().cells());
    std::vector<BudgetEntry> entries;
    if (!read_list(*model.flows.files[static_cast<std::size_t>(flow.file)], flow.record, entries)) return;
    for (const BudgetEntry& entry : entries) {
        if (entry.cell < 1 || entry.cell > cells) continue;
        term.cells.push_back(entry.cell - 1);
        term.flows.push_back(entry.flow);
    }
}

void load_array(ModelState& model, TermCells& term, const FlowRecord& flow) {
    const GridSize size = model.size();
    read_budget_arrays(
        *model.flows.files[static_cast<std::size_t>(flow.file)], flow.record, size,
        [&](int layer, const double* values, const int* layers) {
            for (std::size_t i = 0; i < size.per_layer(); ++i) {
                if (values[i] == 0.0) continue;
                const int k = layers == nullptr ? layer : layers[i];
                if (k < 0 || k >= size.layers) continue;
                term.cells.push_back(static_cast<int>(static_cast<std::size_t>(k) * size.per_layer() + i));
                term.flows.push_back(values[i]);
            }
        });
}

bool is_list(const BudgetHeader& h) { return h.compact && (h.type == 2 || h.type == 5); }

}  // namespace

bool begin_flow_scan(ModelState& model) {
    ConverterFactory& f = model.factory;
    if (model.streams.file(f.ccf_unit) == nullptr) {
        std::printf("%s file not found\n", f.flow_file.GetFilePath().c_str());
        return false;
    }
    f.has_general_head = false;
    return true;
}

void scan_flows(ModelState& model, bool constant_head_anywhere) {
    if (!begin_flow_scan(model) || model.size().cells() == 0) return;
    FlowResults& flows = model.flows;
    flows.files.clear();
    flows.positions.clear();
    flows.times.clear();
    TermIndex index(model, constant_head_anywhere);
    std::vector<int> units = model.flow_units;
    if (units.empty()) units.push_back(model.factory.ccf_unit);
    if (units.size() > 1) model.factory.report.rules_used.result_files_by_content = true;
    for (const int unit : units) {
        if (add_file(model, unit)) scan_file(model, static_cast<int>(std::ssize(flows.files)) - 1, index);
    }
}

bool fits_grid(ModelState& model, const RecordFile& file, const BudgetRecord& record) {
    const BudgetHeader& h = record.header;
    const GridSize size = model.size();
    if (h.columns == size.columns && h.rows == size.rows && (h.layers == size.layers || h.layers == 0))
        return true;
    model.fail(file.place(record.position) + ": flows of " + std::to_string(h.layers) + " layers, " +
               std::to_string(h.rows) + " rows and " + std::to_string(h.columns) +
               " columns, the model has " + std::to_string(size.layers) + ", " + std::to_string(size.rows) +
               " and " + std::to_string(size.columns));
    return false;
}

void index_flow(ModelState& model, int file, const BudgetRecord& record, BudgetSlot slot) {
    const BudgetHeader& h = record.header;
    const ReadingRules& wanted = model.factory.reading_rules;
    ReadingRules& used = model.factory.report.rules_used;
    const std::pair<int, int> own{h.period - 1, h.step - 1};
    if (h.total_time >= 0.0 || !model.flows.times.contains(own)) model.flows.times[own] = h.total_time;
    if (slot == kNoSlot) return;
    set_term_flag(model.factory, slot);
    const std::pair<int, int> key{wanted.flows_by_period ? h.period - 1 : 0, h.step - 1};
    if (wanted.flows_by_period && h.period > 1) used.flows_by_period = true;
    auto& records = model.flows.positions[key][static_cast<std::size_t>(slot)];
    // Without periods in the key the last period wins, with all of its records.
    if (!records.empty() && records.back().record.header.period != h.period) records.clear();
    if (!records.empty()) {
        if (wanted.join_repeated_terms) {
            used.join_repeated_terms = true;
        } else {
            records.clear();
        }
    }
    records.push_back({file, record});
}

const FlowResults::Slots* flows_of_step(const ModelState& model) {
    const int period = model.factory.reading_rules.flows_by_period ? model.current.period : 0;
    const auto found = model.flows.positions.find({period, model.current.step});
    return found == model.flows.positions.end() ? nullptr : &found->second;
}

void load_flows(ModelState& model) { load_flows(model, read_budget_list); }

void load_flows(ModelState& model, const FlowListReader& read_list) {
    FlowResults& flows = model.flows;
    bool wide = false;
    for (const auto& file : flows.files) wide |= file->layout().real_bytes == 8;
    for (RealColumn& face : flows.faces) {
        face.set_wide(wide);
        face.assign(model.size().cells(), 0.0);
    }
    for (TermCells& term : flows.terms) {
        term.cells.clear();
        term.flows.set_wide(wide);
    }
    const FlowResults::Slots* slots = flows_of_step(model);
    if (slots == nullptr) return;
    for (int slot = 0; slot < kSlotCount; ++slot) {
        for (const FlowRecord& flow : (*slots)[static_cast<std::size_t>(slot)]) {
            TermCells& term = flows.terms[static_cast<std::size_t>(slot)];
            if (slot < 3 && !is_list(flow.record.header)) {
                load_face(model, slot, flow);
            } else if (is_list(flow.record.header)) {
                load_list(model, term, flow, read_list);
            } else {
                load_array(model, term, flow);
            }
        }
    }
}

}  // namespace plx
