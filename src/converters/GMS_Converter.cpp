#include "plxutils/converters/GMS_Converter.h"

#include <cstdio>

#include "converters/gms_concentrations.h"
#include "converters/gms_project.h"
#include "converters/project_steps.h"
#include "converters/transport.h"

namespace plx {
namespace {

constexpr GmsTexts kTexts = {"GMS_Converter parseMFS\t\t\t\t\t\t\t\t\t\t\t\t\r",
                             "GMS_Converter parseMFN\t\t\t\t\t\t\t\t\t\t\t\t\r",
                             "GMS_Converter parseDIS\n",
                             "GMS_Converter parseBA6\n",
                             "Error reading ba6 file\n",
                             "MODFLOW : Write_File - Error reading translation coordinates! \n%s\n",
                             "MODFLOW : Write_File - Error reading column coordinates! \n%s\n",
                             "MODFLOW : Write_File - Error reading row coordinates! \n%s\n",
                             "MODFLOW : Write_File - Error reading cell elevation! \n%s\n"};

}  // namespace
}  // namespace plx

GMS_Converter::GMS_Converter() = default;

GMS_Converter::~GMS_Converter() = default;

void GMS_Converter::parsePROJECT() {
    std::printf("GMS_Converter parsePROJECT\t\t\t\t\t\t\t\t\t\t\t\r");
    plx::ModelState& m = model();
    if (project_file.GetFileExtension() != "mfs") {
        std::printf("Invalid project name [%s] detected for GMS converter, please select a *.mfs file\n",
                    project_file.GetFilePath().c_str());
        m.note(plx::display_name(project_file.GetFilePath().c_str()) + ": not a super file (.mfs)");
        return;
    }
    m.gms_files = true;
    super_file = project_file;
    parseMFS();
    parseMFN();
    parseDIS();
    parseBA6();
    plx::read_gms_results(m);
    plx::scan_results(m, plx::ScanOrder::kFlowsFirst);
    if (!out_mt3d) return;
    if (mt3d_project_file.GetFilePath().length() > 0) parseMTS();
    if (reading_rules.result_files_by_content) {
        plx::find_gms_concentrations(m);
    } else {
        plx::find_concentrations(m);
    }
}

void GMS_Converter::parseMFS() { plx::parse_super_file(model(), plx::kTexts); }

void GMS_Converter::parseMFN() { plx::parse_gms_name_file(model(), plx::kTexts); }

void GMS_Converter::parseDIS() { plx::parse_gms_grid(model(), plx::kTexts); }

void GMS_Converter::parseBA6() { plx::parse_gms_basic(model(), plx::kTexts); }
