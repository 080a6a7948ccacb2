#include "gms/project_lines.h"

#include <algorithm>
#include <array>

#include "gms/project_path.h"
#include "plxutils/core/VXFile.h"
#include "plxutils/core/VXFileReader.h"

namespace plx {

namespace {

struct Keyword {
    const char* word;
    const char* title;
};

constexpr std::array<Keyword, 17> kKeywords = {{{"MODFLOW", "MODFLOW model"},
                                                {"MT3D", "MT3D model"},
                                                {"FEMWATER", "FEMWATER model"},
                                                {"FEMWSOL", "FEMWATER solution"},
                                                {"PTK", "particle track file"},
                                                {"TIN", "TIN"},
                                                {"MODFSOL", "MODFLOW solution"},
                                                {"MT3DSOL", "MT3D solution"},
                                                {"IMAGE", "image"},
                                                {"IMG", "image"},
                                                {"SCAT3D", "3-D scatter set"},
                                                {"SCAT2D", "2-D scatter set"},
                                                {"GRID2D", "2-D grid"},
                                                {"STNGS", "settings"},
                                                {"BHOLE", "boreholes"},
                                                {"MAT", "materials"},
                                                {"DATA", "datasets"}}};

}  // namespace

const char* project_keyword_title(const std::string& keyword) {
    const auto* found = std::find_if(kKeywords.begin(), kKeywords.end(),
                                     [&keyword](const Keyword& known) { return keyword == known.word; });
    return found == kKeywords.end() ? nullptr : found->title;
}

bool read_project_lines(const std::string& stored, std::vector<ProjectLine>& lines) {
    lines.clear();
    VXFileReader reader;
    if (!reader.Open(stored.c_str())) return false;
    const VXFile project(stored.c_str());
    while (reader.ReadLine("\r\n\t ,", true, true, false) >= 0) {
        // The conversion does not heed a last line without a line break.
        if (reader.isEOF()) break;
        const String name = reader.GetWord(1);
        ProjectLine line{reader.GetWord(0).c_str(), name.c_str(), project_path(project, name).c_str()};
        if (project_keyword_title(line.keyword) == nullptr) continue;
        lines.push_back(std::move(line));
    }
    return true;
}

}  // namespace plx
