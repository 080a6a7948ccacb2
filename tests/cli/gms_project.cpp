#include "cli/gms_project.h"

#include <bit>
#include <cstdint>
#include <initializer_list>

namespace plx::test {

namespace {

void add_int(std::string& bytes, std::uint32_t value) {
    for (int i = 0; i < 4; ++i) bytes += static_cast<char>(value >> (8 * i) & 255u);
}

}  // namespace

std::string write_gms_project(const TempFolder& folder) {
    folder.write("site.tin",
                 "TIN\nBEGT\nTNAM ground\nID 3\nVERT 3\n0 0 1\n10 0 2\n0 10 3\nTRI 1\n1 2 3\nENDT\n");
    folder.write("wells.xy", "XY1\nBEGSET\nNAME wells\nID 4\nIXY 2\n1 1 1\n2 5 5\nENDSET\n");
    folder.write("bores.bor", "BEGH\nNAME B1\nCONT 2\n1 1 10 1\n1 1 5 2\nENDH\n");
    folder.write("soils.mat", "MAT\nMN 1 sand\nMN 2 clay\n");
    folder.write("heads.dat",
                 "DATASET\nOBJTYPE tin\nBEGSCL\nOBJID 3\nND 3\nNC 1\nNAME head\n"
                 "TS 0 0.0\n5\n6\n7\nTS 0 30.0\n8\n9\n10\nENDDS\n");
    folder.write("wells.dat",
                 "DATASET\nOBJTYPE scat2d\nBEGSCL\nOBJID 4\nND 2\nNC 0\nNAME level\nTS 0 0\n1\n2\nENDDS\n");
    return folder.write("site.gpr",
                        "GMSPROJ\nTIN site.tin\nSCAT2D wells.xy\nBHOLE bores.bor\nMAT soils.mat\n"
                        "GRID2D grid.2dg\nDATA heads.dat\nDATA wells.dat\n");
}

std::string broken_hdf5() { return "\x89HDF\r\n\x1a\n" + std::string(200, '\x55'); }

std::string binary_dataset() {
    std::string bytes;
    for (const std::uint32_t card : {3000u, 100u, 1u, 110u, 4u, 120u, 4u, 130u, 160u, 3u, 170u, 3u, 180u, 0u})
        add_int(bytes, card);
    add_int(bytes, 190);
    std::string name = "depth";
    name.resize(40, '\0');
    bytes += name;
    add_int(bytes, 200);
    add_int(bytes, 0);
    for (const float value : {12.5f, 1.0f, -2.0f, 4.0f}) add_int(bytes, std::bit_cast<std::uint32_t>(value));
    add_int(bytes, 210);
    return bytes;
}

}  // namespace plx::test
