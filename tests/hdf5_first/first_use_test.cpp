#include <gtest/gtest.h>

#include <cstring>

#include "platform/platform.h"
#include "plxutils/c/GMSCallbacks.h"
#include "plxutils/c/GMStoPLX.h"
#include "support/hdf5_file.h"
#include "support/run_program.h"
#include "support/temp_folder.h"

namespace {

int write_project(const char* path) {
    plx::test::Hdf5Writer out(plx::platform::utf8_path(path));
    out.strings("TINModule/hill/PROPERTIES/Name", {"hill"});
    out.doubles("TINModule/hill/Nodes/NodeLocs", {3, 3}, {0, 0, 1, 1, 0, 2, 0, 1, 3});
    out.ints("TINModule/hill/Elements/Nodeids", {1, 3}, {1, 2, 3});
    out.group("TINModule/hill/Datasets");
    return 0;
}

TEST(Hdf5FirstUse, AProjectConvertsAndNothingIsPrinted) {
    const plx::test::TempFolder folder;
    // HDF5 takes UTF-8 on Windows, and everything else the code page of the process.
    const std::string project = folder.path().string() + "/gr\xfcn.gpr";
    const auto run = plx::test::run_program(plx::platform::executable_path(),
                                            {"write", plx::platform::utf8_path(project)});
    ASSERT_EQ(run.code, 0) << run.err;

    testing::internal::CaptureStderr();
    GMStoPLX* object = GMStoPLX_new();
    GMStoPLX_Set_Project(object, project.c_str());
    GMStoPLX_Set_Destination(object, folder.path().string().c_str());
    GMStoPLX_parse_project(object);
    GMStoPLX_delete(object);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(folder.read("tin_hill_elevation.gmf").substr(0, 30), "# GMStoPLX generated .gmf file");
}

}  // namespace

int main(int argc, char** argv) {
    if (argc == 3 && std::strcmp(argv[1], "write") == 0) return write_project(argv[2]);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
