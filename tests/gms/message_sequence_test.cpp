// Everything that a conversion tells its host, in order, as it was checked by hand once. To renew the files
// after a deliberate change run the test with PLX_RENEW_GOLDENS=1 and read the difference.

#include <gtest/gtest.h>

#include "gms/small_project.h"
#include "support/golden_files.h"

namespace fs = std::filesystem;
using plx::test::MessageLog;
using plx::test::replaced;

TEST(MessageSequence, OfEitherKind) {
    const fs::path quarry = fs::path(PLX_TEST_DATA) / ".." / ".." / "examples" / "quarry";
    const std::string more = "DATA missing.dat\nMODFLOW flow.mfs\nIMAGE last.img";
    const plx::test::TempFolder told;
    for (const auto& [kind, project] :
         {std::pair("text.txt", "quarry.gpr"), {"hdf5.txt", "quarry_hdf5.gpr"}}) {
        const plx::test::TempFolder folder;
        const std::string stored = VXFile(folder.path().string().c_str()).GetFilePath().c_str();
        fs::copy(quarry, folder.path());
        folder.write("quarry.gpr", plx::test::read_bytes(quarry / "quarry.gpr") + more);
        std::string text;
        for (const bool options : {false, true}) {
            const MessageLog log;
            const plx::test::Converter converter(GMStoPLX_new());
            GMStoPLX* object = GMStoPLX_Set_Project(converter.get(), folder.file(project).c_str());
            GMStoPLX_Set_Destination(object, folder.path().string().c_str());
            if (options) {
                GMStoPLX_Use_Subfolders(GMStoPLX_Compress(object, 0), 2);
                GMStoPLX_Extents(object, 1, -1.5, 2, 1234567.25, 4);
            }
            GMStoPLX_parse_project(object);
            for (const std::string& line : MessageLog::lines())
                text += replaced(replaced(line, stored, "<folder>"), "\n", "\\n") + "\n";
        }
        told.write(kind, text);
    }
    plx::test::expect_tree(fs::path(PLX_TEST_DATA) / "gms" / "messages", told.path());
}
