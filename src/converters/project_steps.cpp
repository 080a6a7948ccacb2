#include "converters/project_steps.h"

#include <algorithm>
#include <cstdio>

#include "formats/link_records.h"
#include "platform/platform.h"

namespace plx {

ResultRole role_by_extension(const ModelState& model, const std::string& name) {
    const std::string extension = name.substr(name.find_last_of('.') + 1);
    if (extension == "hds" || extension == "hed") return ResultRole::kHeads;
    if (extension == "cbb" || extension == "bud") return ResultRole::kFlows;
    return extension == "ccf" && model.gms_files ? ResultRole::kFlows : ResultRole::kNone;
}

namespace {

using Role = ResultRole;

Role role_by_content(std::FILE* file) {
    if (begins_as_link(file, true)) return Role::kNone;
    if (const auto layout = detect_layer_layout(file)) {
        RecordFile in(file, "");
        in.set_layout(*layout);
        LayerHeader header;
        const bool heads =
            in.seek(0) && read_head_header(in, header) && trimmed_label(header.label) == "HEAD";
        platform::seek(file, 0, SEEK_SET);
        return heads ? Role::kHeads : Role::kNone;
    }
    return detect_budget_layout(file) ? Role::kFlows : Role::kNone;
}

/// What a file that is named like results holds instead.
MisnamedFile examine_misnamed(std::FILE* file, const std::string& name, Role by_name) {
    RecordFile in(file, name);
    if (in.size() == 0) return {name + ": the file is empty", false};
    if (const auto layout = detect_layer_layout(file)) {
        LayerHeader header;
        in.set_layout(*layout);
        if (in.seek(0) && read_head_header(in, header)) {
            return {in.place(0) + ": the file holds " + trimmed_label(header.label), false};
        }
    }
    const char* kind = by_name == Role::kHeads ? "head" : "budget";
    return {in.place(0) + ": no " + kind + " record begins here", true};
}

void assign_role(ModelState& model, const NameFileEntry& entry) {
    ConverterFactory& f = model.factory;
    std::FILE* file = model.streams.file(entry.unit);
    const Role by_name = role_by_extension(model, entry.name);
    Role role = by_name;
    if (f.reading_rules.result_files_by_content) {
        role = role_by_content(file);
        // A link file stands in for a flow file where its name says so and no flow file is there.
        if (role == Role::kNone && by_name == Role::kFlows && begins_as_link(file, true)) role = by_name;
        if (role != by_name) f.report.rules_used.result_files_by_content = true;
        if (role == Role::kNone && by_name != Role::kNone) {
            auto& misnamed = by_name == Role::kHeads ? model.misnamed_heads : model.misnamed_flows;
            misnamed.push_back(examine_misnamed(file, display_name(entry.path), by_name));
        }
    }
    if (role == Role::kHeads) {
        f.hed_unit = entry.unit;
        f.head_file = VXFile(entry.path.c_str());
    } else if (role == Role::kFlows) {
        const bool link = begins_as_link(file, true);
        if (link && !model.flow_units.empty()) return;
        f.ccf_unit = entry.unit;
        f.flow_file = VXFile(entry.path.c_str());
        if (!link && f.reading_rules.result_files_by_content) model.flow_units.push_back(entry.unit);
    }
}

const char* text_for(const ModelState& model, const NameFileEntry& entry, const NameFileTexts& texts) {
    if (entry.type == "BAS6") return texts.basic;
    if (entry.type == "DIS") return texts.discretization;
    if (entry.type != "DATA(BINARY)") return texts.other;
    const Role role = role_by_extension(model, entry.name);
    if (role == Role::kHeads) return texts.heads;
    return role == Role::kFlows ? texts.flows : texts.other;
}

/// Nothing is told of a model without a grid, which has been told already.
void tell_missing_results(ModelState& model, const std::vector<MisnamedFile>& misnamed,
                          const std::string& kind, const std::string& what) {
    if (model.size().cells() == 0) return;
    for (const MisnamedFile& file : misnamed) {
        if (file.damaged) {
            model.fail(file.fault);
        } else {
            model.warn(file.fault);
        }
    }
    model.warn("no " + kind + " file: " + what + " are left out");
}

void switch_off_heads(ModelState& model) {
    ConverterFactory& f = model.factory;
    if (f.out_head_nodes || f.out_head_cells)
        tell_missing_results(model, model.misnamed_heads, "head", "heads");
    f.out_head_nodes = f.out_head_cells = false;
}

void switch_off_flows(ModelState& model) { model.factory.out_ccf = model.factory.out_boundary_flows = false; }

void scan_flow_file(ModelState& model) {
    ConverterFactory& f = model.factory;
    std::FILE* file = model.streams.file(f.ccf_unit);
    if (file == nullptr && f.out_ccf) tell_missing_results(model, model.misnamed_flows, "flow", "flows");
    if (file == nullptr || !f.out_ccf) {
        switch_off_flows(model);
        return;
    }
    if (begins_as_link(file, f.reading_rules.detect_result_layout)) {
        f.mt3d_ccf_mode = 1;
        f.parseMT3D_CCF_datapos();
    } else {
        f.parseCCF_datapos();
    }
}

/// Scans flows of which only the steps are wanted.
void scan_steps_of_flows(ModelState& model) {
    ConverterFactory& f = model.factory;
    // Rules about the terms change nothing.
    const ReadingRules before = f.report.rules_used;
    if (begins_as_link(model.streams.file(f.ccf_unit), f.reading_rules.detect_result_layout)) {
        f.parseMT3D_CCF_datapos();
    } else {
        f.parseCCF_datapos();
    }
    const bool layout = f.report.rules_used.detect_result_layout;
    f.report.rules_used = before;
    f.report.rules_used.detect_result_layout |= layout;
}

/// Fills the step times from the flow file, or from a head file whose heads nobody asked for. A flow file
/// need not hold times; those of the heads are better than what the stress periods give.
void take_steps_elsewhere(ModelState& model) {
    ConverterFactory& f = model.factory;
    if (!model.times.empty()) return;
    if (model.streams.file(f.ccf_unit) != nullptr && !f.out_ccf) scan_steps_of_flows(model);
    const auto& flows = model.flows.times;
    const bool timed =
        std::none_of(flows.begin(), flows.end(), [](const auto& step) { return step.second < 0.0; });
    if ((flows.empty() || !timed) && model.streams.file(f.hed_unit) != nullptr) f.parseHED_datapos();
    for (const auto& [step, time] : flows) {
        if (step.first >= f.nper || step.second >= model.periods.largest_steps()) continue;
        const double end = time >= 0.0 ? time : model.periods.end_time(step.first, step.second);
        model.times.try_emplace(step, end);
    }
    if (!model.times.empty()) f.report.rules_used.steps_from_flow_file = true;
}

}  // namespace

bool read_name_entries(ModelState& model, const char* missing, const char* unopened) {
    ConverterFactory& f = model.factory;
    if (f.name_file.GetFilePath().length() == 0) {
        std::printf("%s", missing);
        return false;
    }
    if (!read_name_file(f.name_file, model.name_entries)) {
        std::printf("%s", unopened);
        model.note(display_name(f.name_file.GetFilePath().c_str()) + ": the name file cannot be opened");
        return false;
    }
    std::erase_if(model.name_entries, [&](const NameFileEntry& entry) {
        if (VXFile(entry.path.c_str()).GetFilePath() != f.name_file.GetFilePath()) return false;
        model.fail(display_name(entry.path) + ": line " + std::to_string(entry.line) +
                   ": the name file names itself");
        return true;
    });
    return true;
}

void note_grid_package(ModelState& model, const NameFileEntry& entry) {
    ConverterFactory& f = model.factory;
    if (entry.type == "BAS6") {
        f.bas_unit = entry.unit;
        f.basic_file = VXFile(entry.path.c_str());
    } else if (entry.type == "DIS") {
        f.dis_unit = entry.unit;
        f.discretization_file = VXFile(entry.path.c_str());
    }
}

bool open_entry(ModelState& model, const NameFileEntry& entry, const NameFileTexts& texts) {
    if (!model.streams.open_unit(entry.unit, entry.path)) {
        std::printf(text_for(model, entry, texts), entry.path.c_str());
        const std::string where = display_name(model.factory.name_file.GetFilePath().c_str()) + ": line " +
                                  std::to_string(entry.line) + ": ";
        if (entry.unit < 0 || entry.unit > UnitStreams::kMaxUnit) {
            model.note(where + "unit " + std::to_string(entry.unit) + " is out of range");
        } else if (entry.type == "BAS6" || entry.type == "BAS" || entry.type == "DIS" ||
                   entry.type == "BCF") {
            model.note(where + entry.name + " cannot be opened");
        } else if (entry.type == "DATA(BINARY)") {
            model.warn(where + entry.name + " is not there");
        }
        return false;
    }
    if (entry.type == "DATA(BINARY)") assign_role(model, entry);
    return true;
}

void scan_results(ModelState& model, ScanOrder order) {
    ConverterFactory& f = model.factory;
    if (order == ScanOrder::kFlowsFirst) scan_flow_file(model);
    if (model.streams.file(f.hed_unit) == nullptr) {
        switch_off_heads(model);
    } else if (f.out_head_nodes || f.out_head_cells) {
        f.parseHED_datapos();
    }
    if (order == ScanOrder::kHeadsFirst) scan_flow_file(model);
    if (f.reading_rules.steps_from_flow_file) take_steps_elsewhere(model);
}

TextSource* text_input(ModelState& model, int unit, const char* what) {
    TextSource* in = model.streams.unit(unit);
    // A file that could not be opened has been told already.
    if (in == nullptr && model.factory.report.errors.empty()) {
        model.note(std::string(what) + ": no open file at unit " + std::to_string(unit));
    }
    return in;
}

}  // namespace plx
