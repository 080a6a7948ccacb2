#include "plxutils/converters/Visual_MODFLOW_Converter.h"

#include <algorithm>
#include <cstdio>
#include <string>

#include "converters/grid_helpers.h"
#include "converters/project_steps.h"
#include "converters/transport.h"
#include "core/ascii_text.h"
#include "formats/link_records.h"
#include "formats/record_checks.h"
#include "formats/visual_modflow.h"

namespace plx {
namespace {

// The project has no name file that would number its files.
constexpr int kHeadUnit = 50, kFlowUnit = 51, kGridUnit = 52;

// Deliberate: 29 bytes between the layers of a step, as in the head files that this converter was built for.
constexpr HeadDialect kHeads{29, "Head data not found.\n"};

VXFile beside(const VXFile& project, const char* extension) {
    return VXFile(project.GetDirectoryName(), project.GetFileTitle() + extension);
}

void read_units(ModelState& model) {
    ConverterFactory& f = model.factory;
    VisualUnits units;
    Problems warnings;
    if (!read_vmf(f.project_file, units, warnings)) {
        std::printf("Error opening *.vmf\n");
        model.note(std::string(f.project_file.GetFileName().c_str()) + ": the project cannot be opened");
        return;
    }
    f.length_units = units.length.c_str();
    f.time_units = units.time.c_str();
    for (const std::string& warning : warnings) model.warn(warning);
}

/// Opens a result file and lists it with the model's files; `number` stays when it is not there.
void open_results(ModelState& model, const VXFile& file, int unit, int& number) {
    const std::string path = file.GetFilePath().c_str();
    if (!model.streams.open_unit(unit, path)) {
        std::printf("%s file not found\n", path.c_str());
        return;
    }
    number = unit;
    model.name_entries.push_back({"DATA(BINARY)", unit, file.GetFileName().c_str(), path, 0});
}

/// Stress periods as result files name them: no other file of a project tells.
class PeriodTable {
public:
    explicit PeriodTable(ModelState& model) : model_(model) {}
    bool empty() const { return table_.periods.empty(); }

    /// Heads: period lengths are the times of the last steps saved.
    void add_heads(std::FILE* file, const std::string& name) {
        const auto layout = file != nullptr ? detect_layer_layout(file) : std::nullopt;
        if (!layout) return;
        RecordFile in(file, name);
        in.set_layout(*layout);
        HeadWalk walk(in, model_.size(), find_head_gap(in, model_.size(), kHeads.gap));
        LayerRecord record;
        bool cut = false;
        while (walk.next(record, cut)) {
            const LayerHeader& h = record.header;
            if (!add(h.period, h.step, h.period_time, in.place(record.position))) return;
        }
    }

    void add_flows(std::FILE* file, const std::string& name) {
        if (file == nullptr) return;
        const bool link = begins_as_link(file, true);
        const auto layout = link ? detect_link_layout(file) : detect_budget_layout(file);
        if (!layout) return;
        RecordFile in(file, name);
        in.set_layout(*layout);
        bool old_version = false;
        if (link && !read_link_header(in, old_version)) return;
        for (;;) {
            BudgetRecord record;
            const bool found = link ? next_link_record(in, record) == LinkNext::kRecord
                                    : next_budget_record(in, model_.size(), record) == BudgetNext::kRecord;
            const BudgetHeader& h = record.header;
            if (!found || !add(h.period, h.step, h.period_time, in.place(record.position))) return;
        }
    }

    StressPeriods take() {
        // A period of which nothing was saved has a step too.
        for (StressPeriod& period : table_.periods) period.steps = std::max(period.steps, 1);
        return std::move(table_);
    }

private:
    static constexpr int kMostPeriods = 100'000;

    bool add(int period, int step, double period_time, const std::string& place) {
        if (!plausible_step(step) || period < 1 || period > kMostPeriods) {
            model_.fail(place + ": stress period " + std::to_string(period) + ", time step " +
                        std::to_string(step) + ": there is no such step");
            return false;
        }
        const auto count = static_cast<std::size_t>(period);
        if (table_.periods.size() < count) table_.periods.resize(count);
        StressPeriod& own = table_.periods[count - 1];
        own.steps = std::max(own.steps, step);
        own.length = std::max(own.length, period_time);
        return true;
    }

    ModelState& model_;
    StressPeriods table_;
};

void find_periods(ModelState& model) {
    ConverterFactory& f = model.factory;
    if (model.size().cells() == 0) return;
    PeriodTable table(model);
    table.add_heads(model.streams.file(kHeadUnit), display_name(f.head_file.GetFilePath().c_str()));
    if (table.empty())
        table.add_flows(model.streams.file(kFlowUnit), display_name(f.flow_file.GetFilePath().c_str()));
    StressPeriods periods = table.take();
    const bool timed = std::any_of(periods.periods.begin(), periods.periods.end(),
                                   [](const StressPeriod& period) { return period.length > 0.0; });
    if (!periods.periods.empty() && !timed) model.warn("no file tells the times of the steps: all are at 0");
    f.nper = static_cast<int>(periods.periods.size());
    store_periods(model, std::move(periods));
}

void print_fault(const VmgFault& fault) {
    const char* text = fault.text.c_str();
    switch (fault.section) {
        case VmgSection::kColumns:
            std::printf("Visual_MODFLOW_Converter : Write_File - Error reading column coordinates! \n%s\n",
                        text);
            break;
        case VmgSection::kRows:
            std::printf("MODFLOW : Write_File - Error reading row coordinates! \n%s\n", text);
            break;
        case VmgSection::kStatus:
            std::printf("MODFLOW : Write_File - Error reading cell status on line %d!\n%s\n", fault.line,
                        text);
            break;
        case VmgSection::kElevations:
            std::printf("MODFLOW : Write_File - Error reading cell elevation! \n%s\n", text);
            break;
    }
}

void store_grid(ModelState& model, VisualGrid& grid) {
    ConverterFactory& f = model.factory;
    f.nlay = grid.size.layers;
    f.nrow = grid.size.rows;
    f.ncol = grid.size.columns;
    // The file gives positions, so there are no widths to be summed up in one order or another.
    model.geometry.column_edges = std::move(grid.column_edges);
    model.geometry.row_edges = std::move(grid.row_edges);
    model.geometry.tops.assign(grid.surfaces.begin(), grid.surfaces.end() - 1);
    model.geometry.bottoms.assign(grid.surfaces.begin() + 1, grid.surfaces.end());
    model.flags.resize(model.size());
    for (int layer = 0; layer < f.nlay; ++layer) {
        std::vector<std::int32_t>& status = grid.status[static_cast<std::size_t>(layer)];
        store_ibound(model, layer, std::vector<double>(status.begin(), status.end()));
        status = {};
    }
}

/// The project names no species; those whose files are there are numbered.
void name_species(ModelState& model) {
    for (const SpeciesFile& species : model.transport.species) {
        const std::string name = "Species_" + std::to_string(species.number);
        model.factory.species_names[species.number - 1] = name.c_str();
    }
}

}  // namespace
}  // namespace plx

Visual_MODFLOW_Converter::Visual_MODFLOW_Converter() = default;

Visual_MODFLOW_Converter::~Visual_MODFLOW_Converter() = default;

void Visual_MODFLOW_Converter::parsePROJECT() {
    std::printf("Visual_MODFLOW_Converter parsePROJECT\t\t\t\t\t\t\t\t\r");
    plx::ModelState& m = model();
    if (!plx::equal_no_case(project_file.GetFileExtension().c_str(), "vmf")) {
        std::printf("Invalid project name [%s] detected for standard MODFLOW, please select a *.nam file\n",
                    project_file.GetFilePath().c_str());
        m.note(plx::display_name(project_file.GetFilePath().c_str()) +
               ": a Visual MODFLOW project ends in .vmf");
        return;
    }
    flow_file = plx::beside(project_file, ".flo");
    head_file = plx::beside(project_file, ".hds");
    grid_file = plx::beside(project_file, ".vmg");
    plx::read_units(m);
    parseDIS();
    plx::open_results(m, head_file, plx::kHeadUnit, hed_unit);
    plx::open_results(m, flow_file, plx::kFlowUnit, ccf_unit);
    plx::find_periods(m);
    plx::scan_results(m);
    // The concentration files of such a project have a dot before their number.
    m.transport.naming_style = 1;
    if (!out_mt3d) return;
    plx::find_concentrations(m);
    plx::name_species(m);
}

void Visual_MODFLOW_Converter::parseDIS() {
    std::printf("Visual_MODFLOW_Converter parseVMG\t\t\t\t\t\t\t\t\t\r");
    plx::ModelState& m = model();
    plx::TextSource* in = m.streams.open_unit(plx::kGridUnit, grid_file.GetFilePath().c_str())
                              ? m.streams.unit(plx::kGridUnit)
                              : nullptr;
    if (in == nullptr) {
        std::printf("VMG file not detected.\n");
        m.note(plx::display_name(grid_file.GetFilePath().c_str()) + ": the grid file cannot be opened");
        return;
    }
    plx::VisualGrid grid;
    if (const auto fault = plx::read_vmg(*in, grid)) {
        plx::print_fault(*fault);
        m.note(fault->problem);
        return;
    }
    plx::store_grid(m, grid);
}

void Visual_MODFLOW_Converter::parseHED_datapos() {
    std::printf("Visual_MODFLOW_Converter parseHED_datapos\t\t\t\t\t\t\t\r");
    plx::scan_heads(model(), plx::kHeads);
}

void Visual_MODFLOW_Converter::parseHED_data() {
    std::printf("Visual_MODFLOW_Converter parseHED_data\t\t\t\t\t\t\t\t\r");
    plx::load_heads(model(), plx::kHeads);
}
