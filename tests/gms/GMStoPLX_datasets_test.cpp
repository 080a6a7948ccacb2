#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "gms/small_project.h"
#include "support/capture_stdout.h"

namespace {

using plx::test::MessageLog;

TEST(GMStoPLX, AddsDatasetsOfEitherKindBesideTheProject) {
    const plx::test::TempFolder folder;
    const std::string text = "DATASET\nOBJTYPE grid2d\nBEGSCL\nOBJID 1\nNAME a\n";
    const std::string absolute = folder.write("Text.dat", text), error = "E:GMStoPLX : ";
    folder.write("broken.dat", text + "TS 0 0\n");
    folder.write("plain.bin", std::string("\xb8\x0b\0\0", 4));
    folder.write("records.bin", std::string("\x1c\0\0\0\0\0\0\0", 8));
    const plx::test::Converter project(GMStoPLX_new());
    GMStoPLX_Set_Project(project.get(), folder.file("quarry.gpr").c_str());
    const std::pair<std::string, std::string> cases[] = {
        {"Text.dat", "S:DATA file added! Text.dat\n"},
        {absolute, "S:DATA file added! " + absolute + "\n"},
        {"plain.bin", "S:DATA file added! plain.bin\n"},
        {"gone.dat", error + "read_binary - Error opening gone.dat for input\n"},
        {"", error + "read_binary - Error opening  for input\n"},
        {"records.bin", error + "Add_Dataset - Error adding binary dataset records.bin\n"},
        {"broken.dat", error + "read_ascii - End of Data values not reached\n" + error +
                           "Add_Dataset - Error adding ascii dataset broken.dat\n"}};
    for (const auto& [name, expected] : cases) {
        const MessageLog log;
        EXPECT_EQ(project->AddDataSet(name.c_str()), expected[0] == 'S') << name;
        EXPECT_TRUE(MessageLog::text().ends_with(expected)) << MessageLog::text();
    }
    EXPECT_EQ(project->CountDataSets(1.04), 3);
    EXPECT_EQ(project->CountDataSets(1.05), 0);
    EXPECT_EQ(project->FindDataSet(2, 1.04 + 5e-7), project->dataSets.at(2).get());
    for (const int index : {3, -1}) EXPECT_EQ(project->FindDataSet(index, 1.04), nullptr);
}

TEST(GMStoPLX, ReadsLittleEndianNumbersOfEachSize) {
    const plx::test::TempFolder folder;
    const plx::test::Converter project(GMStoPLX_new());
    VXInputFile file;
    const std::string bytes("\xff\xfe\xff\xfd\xff\xff\xff\0\0\x20\x40\0\0\0\0\0\0\xf0\xbf\1", 20);
    ASSERT_TRUE(file.Open(folder.write("n.bin", bytes).c_str()));
    double value = 0;
    for (const auto& [size, expected] : {std::pair{1, 255.0}, {2, -2.0}, {4, -3.0}, {6, 2.5}, {8, -1.0}}) {
        EXPECT_TRUE(project->ReadValue(file, size, value) && value == expected) << size;
    }
    const MessageLog log;
    EXPECT_FALSE(project->ReadValue(file, 4, value));
    EXPECT_FALSE(project->ReadValue(file, 3, value));
    EXPECT_EQ(MessageLog::text(), "E:read_double_value : size 3 not supported\n");
    EXPECT_EQ(value, -1);
}

TEST(GMStoPLX, TakesTheFirstStepOrTheNearest) {
    const double nan = std::nan(""), infinity = std::numeric_limits<double>::infinity();
    const plx::test::Converter project(GMStoPLX_new());
    GMSDataSet set;
    EXPECT_EQ(project->StepOf(set), nullptr);
    for (const double time : {nan, 5.0, nan, 1.0, 3.0, 5.0})
        set.timeSteps.Set(std::make_unique<TimeStep>(1, time));
    EXPECT_EQ(set.timeSteps.GetCount(), 5);
    EXPECT_EQ(project->StepOf(set), set.timeSteps.GetAt(0));
    const std::pair<double, int> cases[] = {{5, 1}, {9e9, 1}, {-1, 3},       {2, 3},
                                            {4, 1}, {3.5, 4}, {infinity, 0}, {nan, 0}};
    for (const auto& [chosen, index] : cases) {
        GMStoPLX_Choose_Time(project.get(), 1, chosen);
        EXPECT_EQ(project->StepOf(set), set.timeSteps.GetAt(index)) << chosen;
    }
}

TEST(TimeStep, RowsStayAddressedWhileTheyGrow) {
    TimeStep step(2, 0.0);
    for (int i = 0; i < 1000; ++i) step.AddRows(1)[1] = -i;
    step.KeepRows(999);
    step.AddRows(1)[0] = 7;
    for (int i = 0; i < 999; ++i) ASSERT_TRUE(step.Value(i, 1) == -i && step.values[i][1] == -i) << i;
    EXPECT_EQ(step.Value(999, 0), 7);
    for (const auto& [row, component] : {std::pair(1000, 0), {-1, 0}, {0, 2}, {0, -1}})
        EXPECT_EQ(step.Value(row, component), -1.0e9);
}

TEST(GMSDataSet, TellsStandardOutputOfItsEnd) {
    EXPECT_EQ(plx::test::capture_stdout([] { GMSDataSet().SetName("a b\0c", 5); }), "DataSet a b deleted\n");
}

}  // namespace
