#include <gtest/gtest.h>

#include <algorithm>

#include "gms/small_project.h"
#include "support/hdf5_file.h"
#include "support/host_system.h"

namespace {

using plx::test::ascii_dataset;
using plx::test::Hdf5Writer;
using plx::test::kWindows;
using plx::test::Only;
using plx::test::SmallProject;

/// Everything below a folder, in order.
std::vector<std::string> entries(const std::filesystem::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
        names.push_back(entry.path().lexically_relative(folder).string());
    std::sort(names.begin(), names.end());
    return names;
}

const std::string kTin = "ID 3\nVERT 3\n0 0 1\n4 0 2\n0 3 3\nTRI 1\n1 2 3\nENDT\n";

void text_tin(const SmallProject& p, const std::string& name) {
    p.folder.write("a.tin", "BEGT\nTNAM '" + name + "'\n" + kTin);
    p.folder.write("p.gpr", "TIN a.tin\n");
}

void tin_dataset(const SmallProject& p, const std::string& name) {
    p.folder.write("a.tin", "BEGT\nTNAM '" + name + "'\n" + kTin);
    p.folder.write("d.dat", "DATASET\nOBJTYPE tin\nBEGSCL\nOBJID 3\nND 3\nNAME '" + name +
                                "'\nTS 0 1.0\n1\n2\n3\nENDDS\n");
    p.folder.write("p.gpr", "TIN a.tin\nDATA d.dat\n");
}

void text_scatter(const SmallProject& p, const std::string& name) {
    p.folder.write("a.xy", "BEGSET\nNAME '" + name + "'\nID 3\nIXY 1\n1 10 20\nENDSET\n");
    p.folder.write("d.dat", ascii_dataset("scat2d", 3, "head", "5\n", 1));
    p.folder.write("p.gpr", "SCAT2D a.xy\nDATA d.dat\n");
}

void hdf5_tin(const SmallProject& p, const std::string& name) {
    Hdf5Writer file(p.folder.file("p.h5"));
    file.strings("TINModule/t/PROPERTIES/Name", {name}, 400);
    file.doubles("TINModule/t/Nodes/NodeLocs", {3, 3}, {0, 0, 1, 4, 0, 2, 0, 3, 3});
    file.ints("TINModule/t/Elements/Nodeids", {1, 3}, {1, 2, 3});
    file.group("TINModule/t/Datasets");
}

void hdf5_scatter(const SmallProject& p, const std::string& name) {
    Hdf5Writer file(p.folder.file("p.h5"));
    file.strings("2DScatterModule/s/PROPERTIES/Name", {name}, 400);
    file.doubles("2DScatterModule/s/Nodes/NodeLocs", {1, 2}, {10, 20});
    file.doubles("2DScatterModule/s/Datasets/head/Values", {1}, {5});
}

const struct {
    const char* kind;
    Only only;
    const char* project;
    void (*write)(const SmallProject&, const std::string&);
} kKinds[] = {{"TIN of a text project", Only::kTin, "p.gpr", text_tin},
              {"TIN and dataset of a text project", Only::kTin, "p.gpr", tin_dataset},
              {"scatter set of a text project", Only::kScat2d, "p.gpr", text_scatter},
              {"TIN of an HDF5 project", Only::kTin, "p.h5", hdf5_tin},
              {"scatter set of an HDF5 project", Only::kScat2d, "p.h5", hdf5_scatter}};

TEST(OutputNames, WhateverAProjectCallsThingsNothingIsWrittenOutsideTheDestination) {
    const struct {
        std::string name;
        bool written;
    } cases[] = {{"plain name", true}, {"H\xc3\xb6he", true},   {"", true},
                 {"a\"b", true},       {"con", true},           {"com1", true},
                 {"a..b.", true},      {"a\x01\x1b\x7f", true}, {"a<b|c", !kWindows},
                 {"..\\up", false},    {"../../up", false},     {"/abs", false},
                 {"c:\\abs", false},   {"c:drive", false},      {"$XP_PATH<0>x", false},
                 {"a*b", false},       {"what?", false},        {std::string(300, 'n'), false}};
    for (const auto& kind : kKinds) {
        for (const auto& c : cases) {
            SCOPED_TRACE(std::string(kind.kind) + " named " + c.name);
            const SmallProject project;
            kind.write(project, c.name);
            const auto before = entries(project.folder.path());
            const std::string messages = project.convert(kind.project, kind.only);
            EXPECT_EQ(messages.find(" open") == std::string::npos, c.written) << messages;
            const auto after = entries(project.folder.path());
            EXPECT_EQ(after.size() > before.size(), c.written);
            for (const std::string& entry : after) {
                const bool old = std::binary_search(before.begin(), before.end(), entry);
                EXPECT_TRUE(old || entry.find_first_of("/\\") == 3) << entry << " is not in out";
            }
        }
    }
}

TEST(OutputNames, DotsDoNotHideAFileNorDoDevicesSwallowIt) {
    const std::pair<std::string, bool> cases[] = {
        {".hidden", false}, {"..", true}, {"con.x", !kWindows}, {"com1.x", !kWindows}};
    for (const auto& [name, written] : cases) {
        SCOPED_TRACE(name);
        const SmallProject project;
        // Only this file's name begins with one out of the project.
        tin_dataset(project, name);
        const std::string messages = project.convert("p.gpr", Only::kTin);
        EXPECT_NE(messages.find("S:   tin_" + name + "_elevation.pff"), std::string::npos) << messages;
        EXPECT_EQ(messages.find("E:TINS : Write_File - Unable to open output file [") == std::string::npos,
                  written);
    }
}

TEST(OutputNames, NamesStayOneWordAndOneQuotedTextInTheFiles) {
    const SmallProject project;
    tin_dataset(project, "a\"b\tc");
    project.convert("p.gpr", Only::kTin);
    EXPECT_NE(project.output("tin_ab_c_elevation.pff").find("NODE_DATA_DEF 1 \"ab c\" \"Linear_"),
              std::string::npos);
    {
        Hdf5Writer file(project.folder.file("p.h5"));
        const std::string group = "BoreholeModule/";
        for (const char* axis : {"X", "Y", "Z"}) file.doubles(group + axis + " Locations", {1}, {1});
        file.ints(group + "Material", {1}, {7});
        file.ints(group + "Number of Contacts", {1}, {1});
        file.strings(group + "Name", {"../two\r\nlines"});
    }
    project.convert("p.h5", Only::kBorehole);
    EXPECT_NE(project.output("bor.pgf").find("1.000000 -1 ../two__lines\n"), std::string::npos);
}

}  // namespace
