#include "support/gms_project.h"

#include <filesystem>

#include "plxutils/gms/GMStoPLX.h"
#include "plxutils/gms/GmsSummary.h"

namespace plx::fuzz {

void GmsProject::use_example() {
    static const bool done = [] {
        const std::filesystem::path to = folder() + "/project";
        std::filesystem::create_directories(to);
        for (const auto& file : std::filesystem::directory_iterator(std::string(PLX_EXAMPLES) + "/quarry"))
            std::filesystem::copy_file(file, to / file.path().filename());
        return true;
    }();
    (void)done;
}

void GmsProject::convert() {
    const std::string path = folder() + "/project/quarry.gpr";
    if (!gms_file_kind(path.c_str()).empty()) summarize_gms_project(path.c_str(), input_.flag(0));
    const std::string out = empty_folder("out");
    GMStoPLX* const converter = GMStoPLX_new();
    GMStoPLX_Set_Project(converter, path.c_str());
    GMStoPLX_Set_Destination(converter, out.c_str());
    GMStoPLX_Lenient_Datasets(converter, input_.flag(0));
    GMStoPLX_Compress(converter, input_.flag(1));
    GMStoPLX_Use_Subfolders(converter, input_.flag(2));
    GMStoPLX_Extents(converter, input_.flag(3), 4100.0, 2100.0, 4200.0, 2250.0);
    GMStoPLX_Choose_Time(converter, input_.flag(4), 1.0);
    GMStoPLX_parse_project(converter);
    GMStoPLX_delete(converter);
}

void convert_example(const Input& input, const char* named, const char* file) {
    GmsProject project(input);
    project.use_example();
    project.put("quarry.gpr", std::string("GMSPROJ\n") + named);
    project.put(file, input.bytes());
    project.convert();
}

}  // namespace plx::fuzz
