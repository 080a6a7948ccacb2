#include "plxutils/converters/MODFLOW2000_Converter.h"

#include <array>
#include <cstdio>

#include "converters/grid_helpers.h"
#include "converters/output_paths.h"
#include "converters/project_steps.h"
#include "formats/basic_package.h"
#include "formats/block_centered_flow.h"
#include "formats/discretization.h"
#include "plxutils/core/VXOutputFile.h"

namespace plx {
namespace {

constexpr NameFileTexts kTexts = {
    "Error opening [%s], BA6 data not used.\n", "Error opening [%s], DIS data not used.\n",
    "Error opening [%s], head data not used.\n", "Error opening [%s], cell by cell flow data not used.\n",
    "Error opening [%s], data not used.\n"};

/// HDRY stands in the first record of whichever flow package the model uses.
void find_dry_head(ModelState& model) {
    static constexpr std::array<const char*, 5> kPackages = {"BCF6", "LPF", "UPW", "HUF", "HUF2"};
    for (const NameFileEntry& entry : model.name_entries) {
        for (const char* package : kPackages) {
            TextSource* in = entry.type == package ? model.streams.unit(entry.unit) : nullptr;
            double value = 0.0;
            if (in != nullptr && read_flow_package_dry_head(*in, value)) model.dry_head = value;
        }
    }
}

/// The log names the model and what could not be read, for users who send it in.
void create_log(ModelState& model) {
    const OutputPaths paths(model.factory);
    const VXFile file(paths.root, "conversion_log.txt");
    VXOutputFile log;
    if (log.Open(file.GetFilePath().c_str(), false, false)) {
        log.Format("Conversion of %s\n", model.factory.project_file.GetFilePath());
    }
    std::printf("printed to [%s]\n", file.GetFilePath().c_str());
}

void extend_log(ModelState& model) {
    const OutputPaths paths(model.factory);
    VXOutputFile log;
    if (!log.Open(VXFile(paths.root, "conversion_log.txt").GetFilePath().c_str(), false, true)) return;
    const ConverterFactory& f = model.factory;
    log.Format("%d layers, %d rows, %d columns, %d stress periods, %d saved steps\n", f.nlay, f.nrow, f.ncol,
               f.nper, static_cast<int>(model.times.size()));
    for (const std::string& text : f.report.errors) log.Format("Error: %s\n", text.c_str());
    for (const std::string& text : f.report.warnings) log.Format("Warning: %s\n", text.c_str());
}

}  // namespace
}  // namespace plx

MODFLOW2000_Converter::MODFLOW2000_Converter() { unit_files.SetSize(100, nullptr); }

MODFLOW2000_Converter::~MODFLOW2000_Converter() = default;

void MODFLOW2000_Converter::parsePROJECT() {
    std::printf("MODFLOW2000_Converter parsePROJECT\t\t\t\t\t\t\t\t\t\r");
    const bool by_name_file = project_file.GetFileExtension() == "nam";
    if (by_name_file) {
        name_file = project_file;
        if (keep_log) plx::create_log(model());
    }
    parseNAM();
    parseDIS();
    parseBA6();
    parsePOR();
    plx::scan_results(model());
    if (by_name_file && keep_log) plx::extend_log(model());
}

void MODFLOW2000_Converter::parseNAM() {
    std::printf("MODFLOW2000_Converter parseNAM\t\t\t\t\t\t\t\t\t\t\r");
    if (!plx::read_name_entries(model())) return;
    for (const plx::NameFileEntry& entry : model().name_entries) {
        if (entry.type == "BAS6") {
            bas_unit = entry.unit;
            basic_file = VXFile(entry.path.c_str());
        } else if (entry.type == "DIS") {
            dis_unit = entry.unit;
            discretization_file = VXFile(entry.path.c_str());
        }
        plx::open_entry(model(), entry, plx::kTexts);
    }
    if (reading_rules.model_no_flow_heads) plx::find_dry_head(model());
}

void MODFLOW2000_Converter::parseDIS() {
    std::printf("MODFLOW2000_Converter parseDIS\n");
    plx::ModelState& m = model();
    plx::TextSource* in = m.streams.unit(dis_unit);
    if (in == nullptr) {
        std::printf("DIS file not detected.\n");
        m.note("no discretization file (DIS)");
        return;
    }
    plx::Discretization dis;
    const bool read = plx::read_discretization(*in, m.streams, m.text_rules(), m.text_used, dis, m.problems);
    m.note_text_rules();
    m.report_problems();
    nper = static_cast<int>(dis.periods.periods.size());
    if (!read) return;
    nlay = dis.size.layers;
    nrow = dis.size.rows;
    ncol = dis.size.columns;
    time_units = plx::time_unit_word(dis.time_unit).c_str();
    length_units = plx::length_unit_word(dis.length_unit).c_str();
    plx::store_geometry(m, dis.delr, dis.delc, std::move(dis.tops), std::move(dis.bottoms));
    plx::store_periods(m, std::move(dis.periods));
}

void MODFLOW2000_Converter::parseBA6() {
    std::printf("MODFLOW2000_Converter parseBA6\n");
    if (bas_unit == -1) {
        std::printf("BA6 file not found. Conversion cannot complete.\n");
        model().note("no basic package (BAS6) in the name file");
        return;
    }
    plx::ModelState& m = model();
    plx::TextSource* in = plx::text_input(m, bas_unit, "BAS6");
    if (in == nullptr || nlay < 1) return;
    const plx::Bas6Options options = plx::read_bas6_options(*in);
    m.free_format = options.free_format;
    if (options.cross_section) {
        std::printf("MODFLOW2000-XSECTION option is not supported.\n");
        report.warnings.push_back("cross sections (XSECTION) are not converted: the mesh is empty");
        return;
    }
    const plx::TextRules rules = m.text_rules();
    m.flags.resize(m.size());
    const auto store = [&m](int layer, const std::vector<double>& values) {
        plx::store_ibound(m, layer, values);
    };
    plx::read_ibound(*in, m.streams, rules, m.text_used, m.size(), store, m.problems);
    m.no_flow_head = plx::read_no_flow_head(*in, rules);
    m.has_no_flow_head = true;
    plx::read_starting_heads(*in, m.streams, rules, m.text_used, m.size(), m.problems);
    m.note_text_rules();
    m.report_problems();
}

void MODFLOW2000_Converter::parsePOR() {
    std::printf("MODFLOW2000_Converter parsePOR\t\t\t\t\t\t\t\t\t\t\r");
}

void MODFLOW2000_Converter::parseHED_datapos() {
    std::printf("MODFLOW2000_Converter parseHED_datapos\t\t\t\t\t\t\t\t\r");
    plx::scan_heads(model());
}

void MODFLOW2000_Converter::parseHED_data() {
    std::printf("MODFLOW2000_Converter parseHED_data\t\t\t\t\t\t\t\t\t\r");
    plx::load_heads(model());
}

void MODFLOW2000_Converter::parseCCF_datapos() {
    std::printf("MODFLOW2000_Converter parseCCF_datapos\t\t\t\t\t\t\t\t\t\t\t\r");
    if (model().streams.file(ccf_unit) == nullptr) {
        std::printf("%s file not found\n", flow_file.GetFilePath().c_str());
        return;
    }
    has_general_head = false;
    plx::scan_flows(model(), true);
}

void MODFLOW2000_Converter::parseCCF_data() { plx::load_flows(model()); }
