#include <gtest/gtest.h>

#include <algorithm>

#include "gms/small_project.h"
#include "support/golden_files.h"
#include "support/hdf5_file.h"
#include "support/host_system.h"

namespace {

using namespace plx::test;

/// A TIN and a scatter set, each with a dataset, all of this name.
void text_project(const SmallProject& p, const std::string& name) {
    const std::string tin = "ID 3\nVERT 3\n0 0 1\n4 0 2\n0 3 3\nTRI 1\n1 2 3\nENDT\n";
    const std::string dataset = "BEGSCL\nOBJID 3\nND 1\nNAME '" + name + "'\nTS 0 1.0\n1\nENDDS\n";
    p.write({{"a.tin", "BEGT\nTNAM '" + name + "'\n" + tin},
             {"a.xy", "BEGSET\nNAME '" + name + "'\nID 3\nIXY 1\n1 10 20\nENDSET\n"},
             {"t.dat", "DATASET\nOBJTYPE tin\n" + dataset},
             {"s.dat", "DATASET\nOBJTYPE scat2d\n" + dataset},
             {"p.gpr", "TIN a.tin\nSCAT2D a.xy\nDATA t.dat\nDATA s.dat\n"}});
}

void hdf5_project(const SmallProject& p, const std::string& name) {
    Hdf5Writer file(p.folder.file("p.h5"));
    file.strings("TINModule/t/PROPERTIES/Name", {name}, 400);
    file.doubles("TINModule/t/Nodes/NodeLocs", {3, 3}, {0, 0, 1, 4, 0, 2, 0, 3, 3});
    file.ints("TINModule/t/Elements/Nodeids", {1, 3}, {1, 2, 3});
    file.group("TINModule/t/Datasets");
    file.strings("2DScatterModule/s/PROPERTIES/Name", {name}, 400);
    file.doubles("2DScatterModule/s/Nodes/NodeLocs", {1, 2}, {10, 20});
    file.doubles("2DScatterModule/s/Datasets/head/Values", {1}, {5});
}

const struct {
    const char* kind;
    Only only;
    const char* project;
    void (*write)(const SmallProject&, const std::string&);
} kKinds[] = {{"TIN of a text project", Only::kTin, "p.gpr", text_project},
              {"scatter set of a text project", Only::kScat2d, "p.gpr", text_project},
              {"TIN of an HDF5 project", Only::kTin, "p.h5", hdf5_project},
              {"scatter set of an HDF5 project", Only::kScat2d, "p.h5", hdf5_project}};

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
            const auto before = files_below(project.folder.path());
            const std::string messages = project.convert(kind.project, kind.only);
            EXPECT_EQ(messages.find(" open") == std::string::npos, c.written) << messages;
            const auto after = files_below(project.folder.path());
            EXPECT_EQ(after.size() > before.size(), c.written);
            for (const auto& file : after) {
                const bool old = std::binary_search(before.begin(), before.end(), file);
                EXPECT_TRUE(old || *file.begin() == "out") << file << " is not in out";
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
        text_project(project, name);
        const std::string messages = project.convert("p.gpr", Only::kTin);
        EXPECT_NE(messages.find("S:   tin_" + name + "_elevation.pff"), std::string::npos) << messages;
        EXPECT_EQ(messages.find("E:TINS : Write_File - Unable to open output file [") == std::string::npos,
                  written);
    }
}

TEST(OutputNames, NamesStayOneQuotedTextInTheFiles) {
    const SmallProject project;
    text_project(project, "a\"b\tc");
    project.convert("p.gpr", Only::kTin);
    EXPECT_NE(project.output("tin_ab_c_elevation.pff").find("NODE_DATA_DEF 1 \"ab c\" \"Linear_"),
              std::string::npos);
}

}  // namespace
