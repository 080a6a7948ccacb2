#include "formats/mt3d_settings.h"

#include <gtest/gtest.h>

#include "support/temp_folder.h"

using namespace plx;
using namespace plx::test;

TEST(Mt3dSettings, CardsCountUntilTheConcentrations) {
    const std::pair<std::string, double> dates[] = {{"REFTIME d 1 1900 1 1 12 0 0", 2.5},
                                                    {"REFTIME 1900 1 1 12 0", 0.0},
                                                    {"REFTIME 1900 2 30 0 0 0", 0.0}};
    const TempFolder folder;
    for (const auto& [line, date] : dates) {
        SCOPED_TRACE(line);
        const std::string text =
            line + "\r\n\r\nSPC \"Methyl chloride\" 1\nSPC TCE\nUNITS d ft\nCON x.con\nSPC late\n";
        Mt3dSettings settings;
        Problems problems;
        const std::string path = folder.write("a.mts", text + "BTN 31 \"Run 1.btn\"\n");
        ASSERT_TRUE(read_mt3d_settings(VXFile(path.c_str()), settings, problems));
        EXPECT_EQ(settings.start_date.value_or(0.0), date);
        EXPECT_EQ(problems, date > 0.0 ? Problems{} : Problems{"a.mts: line 1: REFTIME is no date: " + line});
        EXPECT_EQ(settings.species, (std::vector<std::string>{"Methyl chloride", "TCE"}));
        EXPECT_EQ(settings.time_units, "d");
        EXPECT_TRUE(settings.transport_package.ends_with("\\Run 1.btn")) << settings.transport_package;
    }
}
