#include "formats/mt3d_settings.h"

#include <gtest/gtest.h>

#include "support/temp_folder.h"

using namespace plx;
using namespace plx::test;

TEST(Mt3dSettings, CardsCountUntilTheConcentrations) {
    const TempFolder folder;
    const std::string path =
        folder.write("run.mts",
                     "MT3DSUP\r\n\r\nSPC \"Methyl chloride\" 1\nSPC TCE\nREFTIME 2001 1 1 6 0 0\n"
                     "UNITS d ft\nCON x.con\nSPC late\nBTN 31 \"Run 1.btn\"\n");
    Mt3dSettings settings;
    Problems problems;
    ASSERT_TRUE(read_mt3d_settings(VXFile(path.c_str()), settings, problems));
    EXPECT_EQ(settings.species, (std::vector<std::string>{"Methyl chloride", "TCE"}));
    EXPECT_EQ(settings.start_date, 36892.25);
    EXPECT_EQ(settings.time_units, "d");
    EXPECT_TRUE(settings.transport_package.ends_with("\\Run 1.btn")) << settings.transport_package;
    EXPECT_FALSE(settings.old_version);
    EXPECT_TRUE(problems.empty());
    EXPECT_FALSE(read_mt3d_settings(VXFile(folder.file("none.mts").c_str()), settings, problems));
}

TEST(Mt3dSettings, DateComesFromTheLastSixWords) {
    const std::pair<const char*, double> cases[] = {{"REFTIME 1900 1 1 12 0 0", 2.5},
                                                    {"REFTIME d 1 1900 1 1 12 0 0", 2.5},
                                                    {"REFTIME 1900 1 1 12 0", 0.0},
                                                    {"REFTIME 1900 2 30 0 0 0", 0.0},
                                                    {"REFTIME 1900 x 1 0 0 0", 0.0}};
    const TempFolder folder;
    for (const auto& [line, expected] : cases) {
        SCOPED_TRACE(line);
        Mt3dSettings settings;
        Problems problems;
        read_mt3d_settings(VXFile(folder.write("a.mts", line).c_str()), settings, problems);
        EXPECT_EQ(settings.start_date.value_or(0.0), expected);
        EXPECT_EQ(problems, expected > 0.0
                                ? Problems{}
                                : Problems{"a.mts: line 1: REFTIME is no date: " + std::string(line)});
    }
}
