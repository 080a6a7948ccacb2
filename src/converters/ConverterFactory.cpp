#include "plxutils/converters/ConverterFactory.h"

#include <cstdio>

#include "converters/grid_helpers.h"
#include "converters/model_writer.h"
#include "converters/project_steps.h"
#include "converters/transport.h"
#include "formats/basic_package.h"
#include "formats/block_centered_flow.h"
#include "formats/discretization.h"
#include "platform/host_path.h"

namespace plx {
namespace {

constexpr NameFileTexts kTexts = {"Error opening file [%s]\n", "Error opening file [%s]\n",
                                  "Error opening file [%s]\n", "Error opening file [%s]\n",
                                  "Error opening file [%s]\n"};

/// Projects without a name file keep their packages beside them under their own title.
void open_packages_by_title(ModelState& model, int first_unit) {
    ConverterFactory& f = model.factory;
    const std::string base =
        std::string(f.project_file.GetDirectoryName().c_str()) + "\\" + f.project_file.GetFileTitle().c_str();
    f.bcf_unit = first_unit;
    if (!model.streams.open_unit(first_unit, base + ".BCF")) {
        std::printf("Error opening [%s], BCF data not used.\n", (base + ".BCF").c_str());
    }
    f.hed_unit = 99;
    if (!model.streams.open_unit(99, base + ".hed")) {
        std::printf("Error opening [%s], HEAD data not used.\n", (base + ".hed").c_str());
    }
}

void print_surfaces(const BlockCenteredFlow& bcf) {
    int number = 0;
    const auto print = [&number](const std::vector<double>& surface) {
        std::printf("\nSurface %d\n", number++);
        char buffer[kFixedMax + 1];
        for (const double z : surface) {
            char* end = format_fixed6(buffer, z);
            *end++ = ' ';
            std::fwrite(buffer, 1, static_cast<std::size_t>(end - buffer), stdout);
        }
    };
    for (std::size_t k = 0; k < bcf.tops.size(); ++k) {
        print(*bcf.tops[k]);
        print(*bcf.bottoms[k]);
    }
}

}  // namespace

ModelState& plx_model_state(ConverterFactory& factory) { return *factory.model_; }

}  // namespace plx

ConverterFactory::ConverterFactory() : model_(std::make_unique<plx::ModelState>(*this)) {
    unit_files.SetSize(100, nullptr);
}

ConverterFactory::~ConverterFactory() = default;

void ConverterFactory::parsePROJECT() {
    std::printf("Generic parsePROJECT\t\t\t\t\t\t\t\t\t\t\t\t\r");
    const String extension = project_file.GetFileExtension();
    if (extension == "nam" || extension == "mfn") {
        name_file = project_file;
        parseNAM();
    }
    parseBA6();
    parseBCF();
    plx::scan_results(model());
    if (out_mt3d) plx::find_concentrations(model());
    std::printf("Project parsed writing to PLX file formats\n");
}

void ConverterFactory::parseNAM() {
    std::printf("Generic parseNAM\t\t\t\t\t\t\t\t\t\t\t\t\t\r");
    if (!plx::read_name_entries(model())) return;
    for (const plx::NameFileEntry& entry : model().name_entries) {
        if (entry.type == "BAS") {
            bas_unit = entry.unit;
            basic_file = VXFile(entry.path.c_str());
        } else if (entry.type == "BCF") {
            bcf_unit = entry.unit;
            bcf_file = VXFile(entry.path.c_str());
            std::printf("found bcf [%s]\n", entry.path.c_str());
        }
        plx::open_entry(model(), entry, plx::kTexts);
    }
}

void ConverterFactory::parseBA6() {
    std::printf("Generic parseBAS\n");
    if (bas_unit == -1) {
        std::printf("BAS file not found. Conversion cannot complete.\n");
        model().note("no basic package (BAS) in the name file");
        return;
    }
    plx::ModelState& m = model();
    plx::TextSource* in = plx::text_input(m, bas_unit, "BAS");
    if (in == nullptr) return;
    plx::TextRules& used = m.text_used;
    const plx::TextRules rules = m.text_rules();
    plx::BasicHeader header;
    if (!plx::read_basic_header(*in, m.streams, rules, header, m.problems)) return m.report_problems();
    nlay = header.size.layers;
    nrow = header.size.rows;
    ncol = header.size.columns;
    nper = header.periods;
    m.free_format = header.free_format;
    if (reading_rules.full_time_words) {
        time_units = plx::time_unit_word(header.time_unit).c_str();
        report.rules_used.full_time_words = true;
    }
    if (header.chtoch) std::printf("CHTOCH option is ignored.\n");
    if (header.cross_section) {
        std::printf("XSECTION option is not supported.\n");
        report.warnings.push_back("cross sections (XSECTION) are not converted: the mesh is empty");
        return;
    }
    if (header.unit_list && name_file.GetFilePath().length() == 0) {
        plx::open_packages_by_title(m, header.first_unit);
    }
    if (crop_to_extents)
        m.warn("the basic package comes before the cell widths: cropping is by column and row number");
    plx::skip_iapart(*in, rules);
    m.flags.resize(m.size());
    const auto store = [&m](int layer, const std::vector<double>& values) {
        plx::store_ibound(m, layer, values);
    };
    plx::read_ibound(*in, m.streams, rules, used, m.size(), store, m.problems);
    m.no_flow_head = plx::read_no_flow_head(*in, rules);
    m.has_no_flow_head = true;
    plx::read_starting_heads(*in, m.streams, rules, used, m.size(), m.problems);
    plx::StressPeriods periods;
    plx::read_stress_periods(*in, rules, nper, false, periods, m.problems);
    plx::store_periods(m, std::move(periods));
    m.note_text_rules();
    m.report_problems();
}

void ConverterFactory::parseBCF() {
    std::printf("Generic parseBCF\n");
    if (bcf_unit == -1) {
        std::printf("BCF file not found. Conversion cannot complete.\n");
        model().note("no block-centred-flow package (BCF) in the name file");
        return;
    }
    plx::ModelState& m = model();
    plx::TextSource* in = plx::text_input(m, bcf_unit, "BCF");
    if (in == nullptr || nlay < 1) return;
    plx::BlockCenteredFlow bcf;
    bool free_used = false;
    const bool read =
        plx::read_block_centered_flow(*in, m.streams, m.text_rules(), m.text_used, m.size(), m.free_format,
                                      reading_rules.free_bcf_record, free_used, bcf, m.problems);
    if (free_used) report.rules_used.free_bcf_record = true;
    m.note_text_rules();
    m.report_problems();
    if (!read) return;
    if (reading_rules.model_no_flow_heads && bcf.has_dry_head) m.dry_head = bcf.dry_head;
    plx::print_surfaces(bcf);
    plx::store_geometry(m, in->name(), bcf.delr, bcf.delc, std::move(bcf.tops), std::move(bcf.bottoms));
}

void ConverterFactory::parseHED_datapos() {
    std::printf("ConverterFactory! parseHED_datapos\t\t\t\t\t\t\t\t\r");
    plx::scan_heads(model());
}

void ConverterFactory::parseHED_data() {
    std::printf("ConverterFactory parseHED_data\t\t\t\t\t\t\t\t\t\r");
    plx::load_heads(model());
}

void ConverterFactory::parseCCF_datapos() {
    std::printf("Generic parseCCF_datapos\t\t\t\t\t\t\t\t\t\t\t\r");
    plx::scan_flows(model(), false);
}

void ConverterFactory::parseCCF_data() { plx::load_flows(model()); }

void ConverterFactory::write_to_PLX() {
    std::printf("Writing to PLX\t\t\t\t\t\t\t\t\t\t\t\t\t\t\r");
    z_origin = 0.0;
    plx::ModelState& m = model();
    if (out_porosity && m.porosity.empty()) {
        plx::fit_default_porosity(*this);
    } else if (out_porosity && default_porosity.GetSize() > 0) {
        m.warn("the porosity of the model itself is written, not the one that was given");
    }
    // Without edges and surfaces there is nothing to stand on: the mesh is empty.
    if (!plx::is_whole(m.geometry, m.size())) m.flags = plx::CellFlags();
    plx::ModelWriter(m).write();
}
