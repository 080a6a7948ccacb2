// Everything that a conversion tells its host, in order, as it was checked by hand once. To renew the files
// after a deliberate change run the test with PLX_RENEW_GOLDENS=1 and read the difference.

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <fstream>

#include "gms/small_project.h"
#include "support/hdf5_file.h"

namespace {

namespace fs = std::filesystem;
using plx::test::Hdf5Writer;
using plx::test::MessageLog;
using plx::test::replaced;
using plx::test::TempFolder;

/// One line for each message, with the folder's name in both of its forms taken out.
std::string sequence(const TempFolder& folder) {
    std::string native = folder.path().string();
    std::string stored = replaced("c:" + native, "/", "\\");
    std::transform(stored.begin(), stored.end(), stored.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    std::string text;
    for (const std::string& line : MessageLog::lines()) {
        text +=
            replaced(replaced(replaced(line, native, "<folder>"), stored, "<folder>"), "\n", "\\n") + "\n";
    }
    return text;
}

void expect_golden(const char* name, const std::string& text) {
    const fs::path golden = fs::path(PLX_TEST_DATA) / "gms" / name;
    if (std::getenv("PLX_RENEW_GOLDENS") != nullptr) {
        std::ofstream(golden, std::ios::binary) << text;
    }
    EXPECT_EQ(plx::test::read_bytes(golden), text);
}

void write_text_project(const TempFolder& folder) {
    folder.write("site.ini", "[Units]\nLength Units=m\n");
    folder.write(
        "hill.tin",
        "TIN\nBEGT\nTNAM \"my hill\"\nID 1\nMAT 1\nVERT 3\n0 0 1\n1 0 2\n0 1 3\nTRI 1\n1 2 3\nENDT\n");
    folder.write("depth.dat",
                 "DATASET\nOBJTYPE tin\nBEGSCL\nOBJID 1\nND 3\nNC 1\nNAME depth\nTS 0 0.0\n"
                 "1.5\n2.5\n3.5\nENDDS\n");
    folder.write("wells.xy", "BEGSET\nNAME wells\nID 2\nIXY 1\n1 4 5\nENDSET\n");
    folder.write("rock.mat", "MN 1 sand\nMN 2 \"blue clay\"\n");
    folder.write("logs.bor", "BEGH\nBNAM b1\nCONT 2\n0 0 9 1\n0 0 4 2\n");
    folder.write("site.gpr",
                 "GMSPROJECT\nSTNGS site.ini\nDATA depth.dat\nDATA missing.dat\nTIN hill.tin\n"
                 "SCAT2D wells.xy\nMODFLOW flow.mfs\nMAT rock.mat\nBHOLE logs.bor\nIMAGE last.img");
}

void write_hdf5_project(const std::string& path) {
    Hdf5Writer file(path);
    file.strings("TINModule/hill/PROPERTIES/Name", {"my hill"});
    file.doubles("TINModule/hill/Nodes/NodeLocs", {3, 3}, {0, 0, 1, 1, 0, 2, 0, 1, 3});
    file.ints("TINModule/hill/Elements/Nodeids", {1, 3}, {1, 2, 3});
    file.doubles("TINModule/hill/Datasets/depth/Values", {3}, {1.5, 2.5, 3.5});
    file.strings("TINModule/worn/PROPERTIES/Name", {"no nodes"});
    file.strings("2DScatterModule/wells/PROPERTIES/Name", {"wells"});
    file.doubles("2DScatterModule/wells/Nodes/NodeLocs", {1, 3}, {4, 5, 0});
    file.doubles("2DScatterModule/wells/Datasets/head/Values", {1}, {7});
    file.ints("Material/Id", {3}, {0, 1, 2});
    file.strings("Material/Name", {"none", "sand", "clay"});
    for (const char* axis : {"X Locations", "Y Locations", "Z Locations"}) {
        file.doubles(std::string("BoreholeModule/") + axis, {2}, {0, 4});
    }
    file.ints("BoreholeModule/Material", {2}, {1, 2});
    file.ints("BoreholeModule/Number of Contacts", {1}, {2});
    file.strings("BoreholeModule/Name", {"b1"});
    file.group("Solutions");
}

}  // namespace

TEST(MessageSequence, OfEitherKind) {
    for (const bool hdf5 : {false, true}) {
        const TempFolder folder;
        const MessageLog log;
        if (hdf5)
            write_hdf5_project(folder.file("site.gpr"));
        else
            write_text_project(folder);
        const plx::test::Converter converter(GMStoPLX_new());
        GMStoPLX* object = GMStoPLX_Set_Project(converter.get(), folder.file("site.gpr").c_str());
        GMStoPLX_Set_Destination(object, folder.path().c_str());
        GMStoPLX_parse_project(GMStoPLX_Use_Subfolders(object, 1));
        expect_golden(hdf5 ? "hdf5_messages.txt" : "text_messages.txt", sequence(folder));
    }
}
