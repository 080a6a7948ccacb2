#include "plxutils/converters/GMS_HDF5_Converter.h"

#include <cstdio>

#include "converters/gms_concentrations.h"
#include "converters/gms_project.h"
#include "converters/project_steps.h"
#include "converters/transport.h"

namespace plx {
namespace {

constexpr GmsTexts kTexts = {
    "GMS_HDF5_Converter parseMFS\t\t\t\t\t\t\t\t\t\t\t\r",
    "GMS_HDF5_Converter parseMFN\t\t\t\t\t\t\t\t\t\t\t\r",
    "GMS_HDF5_Converter parseDIS\t\t\t\t\t\t\t\t\t\t\t\r",
    "GMS_HDF5_Converter parseBA6\t\t\t\t\t\t\t\t\t\t\t\r",
    "BA6 File not detected.\n",
    "GMS_HDF5_Converter : Write_File - Error reading translation coordinates! \n%s\n",
    "GMS_HDF5_Converter : Write_File - Error reading column coordinates! \n%s\n",
    "GMS_HDF5_Converter : Write_File - Error reading row coordinates! \n%s\n",
    "GMS_HDF5_Converter : Write_File - Error reading cell elevation! \n%s\n"};

}  // namespace
}  // namespace plx

GMS_HDF5_Converter::GMS_HDF5_Converter() = default;

GMS_HDF5_Converter::~GMS_HDF5_Converter() = default;

void GMS_HDF5_Converter::parsePROJECT() {
    std::printf("GMS_HDF5_Converter parsePROJECT\t\t\t\t\t\t\t\t\t\t\r");
    plx::ModelState& m = model();
    m.gms_files = true;
    if (!plx::find_super_file(m)) return;
    parseMFS();
    parseMFN();
    parseDIS();
    parseBA6();
    plx::read_gms_results(m);
    if (m.streams.file(hed_unit) != nullptr) {
        std::printf("opened [%s] hed file\n", head_file.GetFilePath().c_str());
    }
    plx::scan_results(m, plx::ScanOrder::kFlowsFirst);
    if (!out_mt3d) return;
    if (mt3d_project_file.GetFilePath().length() > 0) parseMTS();
    plx::find_gms_concentrations(m);
}

void GMS_HDF5_Converter::parseMFS() { plx::parse_super_file(model(), plx::kTexts); }

void GMS_HDF5_Converter::parseMFN() { plx::parse_gms_name_file(model(), plx::kTexts); }

void GMS_HDF5_Converter::parseDIS() { plx::parse_gms_grid(model(), plx::kTexts); }

void GMS_HDF5_Converter::parseBA6() { plx::parse_gms_basic(model(), plx::kTexts); }

int GMS_HDF5_Converter::parseConcentration(VXArray<double>& values, float& time) {
    return plx::read_transport_time(model(), values, time) ? 1 : 0;
}

// Heads and flows are read as those of the converter for discretization files; hosts look for its status
// lines.
void GMS_HDF5_Converter::parseHED_datapos() {
    std::printf("MODFLOW2000 parseHED_datapos\t\t\t\t\t\t\t\t\r");
    plx::scan_heads(model());
}

void GMS_HDF5_Converter::parseHED_data() {
    std::printf("MODFLOW2000_Converter parseHED_data\t\t\t\t\t\t\t\t\t\r");
    plx::load_heads(model());
}

void GMS_HDF5_Converter::parseCCF_datapos() {
    std::printf("MODFLOW2000 parseCCF_datapos\t\t\t\t\t\t\t\t\t\t\t\r");
    plx::scan_flows(model(), true);
}

void GMS_HDF5_Converter::parseCCF_data() {
    std::printf("MODFLOW2000 parseCCF\t\t\t\t\t\t\t\t\t\t\t\t\t\r");
    plx::load_flows(model());
}
