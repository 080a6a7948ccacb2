#include "formats/name_file.h"

#include <gtest/gtest.h>

#include "support/host_system.h"
#include "support/temp_folder.h"

using namespace plx;

TEST(NameFile, LinesAndPaths) {
    const test::TempFolder folder;
    const std::string text =
        "# models\r\n\r\nLIST 6\nbas6  1  Sub\\Site.BAS  # note\n"
        "data(binary) 50 'head file.hds'\nDIS 12 C:\\runs\\model.dis REPLACE\n"
        "LPF,11,/abs/x.lpf\n";
    const VXFile file(folder.write("site.nam", text).c_str());
    std::vector<NameFileEntry> entries;
    ASSERT_TRUE(read_name_file(file, entries));
    EXPECT_FALSE(read_name_file(VXFile(folder.file("none.nam").c_str()), entries));
    std::string found;
    for (const NameFileEntry& e : entries) {
        found += std::to_string(e.line) + "|" + e.type + "|" + std::to_string(e.unit) + "|" + e.name + "|" +
                 e.path + "\n";
    }
    const std::string beside = file.GetDirectoryName().c_str();
    EXPECT_EQ(found, "4|BAS6|1|Sub\\Site.BAS|" + beside + "\\Sub\\Site.BAS\n" +
                         "5|DATA(BINARY)|50|head file.hds|" + beside + "\\head file.hds\n" +
                         "6|DIS|12|C:\\runs\\model.dis|C:\\runs\\model.dis\n7|LPF|11|/abs/x.lpf|" +
                         (test::kWindows ? beside + "\\" : "") + "/abs/x.lpf\n");
}
