#include "converters/link_flows.h"

#include <cstdio>
#include <memory>
#include <string>

#include "converters/model_state.h"
#include "formats/link_records.h"

namespace plx {
namespace {

/// Opens the flow unit's stream as a link file and passes its header; null after a message.
RecordFile* open_link(ModelState& model) {
    std::FILE* stream = model.streams.file(model.factory.ccf_unit);
    const std::string name = display_name(model.streams.path(model.factory.ccf_unit));
    if (is_text_link(stream)) {
        model.fail(name + ": line 1: the file is a link file written as text, which is not read");
        return nullptr;
    }
    auto file = std::make_unique<RecordFile>(stream, name);
    const auto layout = detect_link_layout(stream);
    if (!layout) {
        model.fail(name + ": byte 0: no flow-transport link file begins here");
        return nullptr;
    }
    bool old_version = false;
    if (!adopt_layout(model, *file, *layout) || !read_link_header(*file, old_version)) return nullptr;
    if (old_version) model.transport.naming_style = 1;
    model.flows.files.push_back(std::move(file));
    return model.flows.files.back().get();
}

void tell_skipped(const std::string& label) {
    if (label.starts_with("STR")) std::printf("Stream data not supported... Skipping.\n");
    if (label.starts_with("RES")) std::printf("Reservoir data not supported... Skipping.\n");
}

}  // namespace

void scan_link_flows(ModelState& model) {
    if (!begin_flow_scan(model) || model.size().cells() == 0) return;
    FlowResults& flows = model.flows;
    flows.files.clear();
    flows.positions.clear();
    flows.times.clear();
    RecordFile* in = open_link(model);
    if (in == nullptr) return;
    for (;;) {
        BudgetRecord record;
        const LinkNext next = next_link_record(*in, record);
        if (next == LinkNext::kEnd) return;
        const std::string where = in->place(record.position) + ": ";
        if (next == LinkNext::kCutShort) {
            model.note(where + "the record is cut short or damaged");
            return;
        }
        tell_skipped(record.header.label);
        if (next == LinkNext::kUnknown) {
            model.note(where + "the size of a record \"" + record.header.label + "\" is not known");
            return;
        }
        if (!fits_grid(model, *in, record)) return;
        index_flow(model, 0, record, slot_of_link_label(record.header.label));
    }
}

void load_link_flows(ModelState& model) {
    if (const FlowResults::Slots* slots = flows_of_step(model)) {
        for (const auto& records : *slots) {
            for (const FlowRecord& flow : records) {
                if (model.flows.files.front()->seek(flow.record.position)) continue;
                std::printf("Error seeking CCF data position\n");
            }
        }
    }
    load_flows(model, read_link_list);
}

}  // namespace plx

void ConverterFactory::parseMT3D_CCF_datapos() {
    std::printf("Generic parseMT3D_FLO_datapos\t\t\t\t\t\t\t\t\t\t\r");
    plx::scan_link_flows(model());
}

void ConverterFactory::parseMT3D_CCF_data() {
    std::printf("Generic parseMT3D_FLO_data\t\t\t\t\t\t\t\t\t\t\t\r");
    plx::load_link_flows(model());
}
