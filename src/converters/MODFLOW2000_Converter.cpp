#include "plxutils/converters/MODFLOW2000_Converter.h"

#include <cstdio>
#include <string>

#include "converters/grid_steps.h"
#include "converters/output_paths.h"
#include "converters/project_steps.h"
#include "converters/transport.h"
#include "plxutils/core/VXOutputFile.h"
#include "plxutils/core/WholeFile.h"

namespace plx {
namespace {

constexpr NameFileTexts kTexts = {
    "Error opening [%s], BA6 data not used.\n", "Error opening [%s], DIS data not used.\n",
    "Error opening [%s], head data not used.\n", "Error opening [%s], cell by cell flow data not used.\n",
    "Error opening [%s], data not used.\n"};

/// Closes the log and tells when not all of it could be written.
void finish_log(ModelState& model, VXOutputFile& log) {
    log.Close();
    if (log.Failed()) {
        model.note(std::string(log.Filename().c_str()) + ": " + kNotAllWritten);
    }
}

/// The log names the model and what could not be read, for users who send it in.
void create_log(ModelState& model) {
    const OutputPaths paths(model.factory);
    const VXFile file(paths.root, "conversion_log.txt");
    VXOutputFile log;
    if (log.Open(file.GetFilePath().c_str(), false, false)) {
        log.Format("Conversion of %s\n", model.factory.project_file.GetFilePath());
        finish_log(model, log);
    } else {
        model.factory.report.warnings.push_back(std::string(file.GetFilePath().c_str()) +
                                                ": cannot be opened for writing");
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
    finish_log(model, log);
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
    if (out_mt3d) plx::find_concentrations(model());
    if (by_name_file && keep_log) plx::extend_log(model());
}

void MODFLOW2000_Converter::parseNAM() {
    std::printf("MODFLOW2000_Converter parseNAM\t\t\t\t\t\t\t\t\t\t\r");
    if (!plx::read_name_entries(model())) return;
    for (const plx::NameFileEntry& entry : model().name_entries) {
        plx::note_grid_package(model(), entry);
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
    plx::read_grid(m, *in, [&m] { m.report_problems(); });
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
    plx::read_active_cells(m, *in, "MODFLOW2000-XSECTION option is not supported.\n");
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
    plx::scan_flows(model(), true);
}

void MODFLOW2000_Converter::parseCCF_data() { plx::load_flows(model()); }
