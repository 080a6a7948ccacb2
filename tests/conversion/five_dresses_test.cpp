// The example model as five programs keep it, converted with the tool: one mesh, the same results.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "support/golden_files.h"
#include "support/run_program.h"
#include "support/temp_folder.h"

namespace fs = std::filesystem;

namespace {

using plx::test::ProgramRun;
using plx::test::run_program;

// The first is the measure of the others.
const std::string kProjects[] = {"valley.nam", "dresses/modflow96/valley.nam", "dresses/gms/valley.mfs",
                                 "dresses/gms_hdf5/valley.gpr", "dresses/visual/valley.vmf"};

class FiveDresses : public testing::Test {
protected:
    static void SetUpTestSuite() {
        have_python_ = run_program("/usr/bin/env", {"python3", "-c", ""}).code == 0;
        if (!have_python_) return;
        folder_ = std::make_unique<plx::test::TempFolder>();
        const fs::path example = fs::path(PLX_EXAMPLES) / "valley";
        for (const auto& entry : fs::directory_iterator(example)) {
            if (entry.path().filename().string().starts_with("valley"))
                fs::copy(entry.path(), folder_->path());
        }
        const std::string folder = folder_->path().string();
        for (const auto& words : {std::vector<std::string>{PLX_VALLEY_SOLVER, folder},
                                  {"python3", (example / "make_dresses.py").string(), folder}}) {
            const ProgramRun run = run_program("/usr/bin/env", words);
            EXPECT_EQ(run.code, 0) << run.out << run.err;
        }
    }
    static void TearDownTestSuite() { folder_.reset(); }
    void SetUp() override {
        if (!have_python_) GTEST_SKIP() << "no python3";
    }

    static ProgramRun convert(const std::string& project, const fs::path& out, const std::string& option,
                              const std::string& value) {
        return run_program(PLXCONVERT, {"modflow", folder_->file(project), "--quiet", "--dest", out.string(),
                                        option, value});
    }

    static std::unique_ptr<plx::test::TempFolder> folder_;
    static bool have_python_;
};
std::unique_ptr<plx::test::TempFolder> FiveDresses::folder_;
bool FiveDresses::have_python_ = false;

std::vector<fs::path> results_below(const fs::path& folder) {
    std::vector<fs::path> names = plx::test::files_below(folder);
    std::erase_if(names, [](const fs::path& name) { return !name.has_parent_path(); });
    return names;
}

/// What has to be equal in a result. Field files: the values of nodes and cells; the lines before them hold
/// unit and species names, which a Visual MODFLOW project spells in its own way or has not. Lists of times
/// and boundary flows: all but time units and dates, which only projects with a start date have. Everything
/// else as it stands.
std::string essence(const fs::path& file) {
    const std::string text = plx::test::read_bytes(file);
    if (file.extension() == ".pff") return text.substr(std::min(text.find("NODE_DATA_START"), text.size()));
    const bool times = file.extension() == ".tcf";
    if (!times && file.extension() != ".dwr") return text;
    std::istringstream lines(text);
    std::string kept;
    for (std::string line; std::getline(lines, line);) {
        if (times) line.erase(0, line.find(','));
        if (!line.starts_with("TIME ") && !line.starts_with("DATE ")) kept += line + "\n";
    }
    return kept;
}

std::ptrdiff_t count_fields(const std::vector<fs::path>& names, const char* folder) {
    return std::count_if(names.begin(), names.end(), [folder](const fs::path& name) {
        return name.extension() == ".pff" && *name.begin() == folder;
    });
}

}  // namespace

TEST_F(FiveDresses, GiveOneMeshWithTheSameHeadsFlowsAndConcentrations) {
    // Materials and porosities are left out: not every program keeps them with its model.
    const std::string outputs =
        "elevation,geo_layer,elev_top,elev_bottom,head_nodes,head_cells,ccf,boundary_flows,mt3d";
    plx::test::TempFolder measure;
    ASSERT_EQ(convert(kProjects[0], measure.path(), "--outputs", outputs).code, 0);
    const std::vector<fs::path> names = results_below(measure.path());
    EXPECT_EQ(count_fields(names, "MODFLOW"), 11);
    EXPECT_EQ(count_fields(names, "MT3D"), 6);
    for (const std::string& project : kProjects) {
        SCOPED_TRACE(project);
        plx::test::TempFolder out;
        EXPECT_EQ(convert(project, out.path(), "--outputs", outputs).err, "");
        EXPECT_EQ(results_below(out.path()), names);
        for (const fs::path& name : names) {
            EXPECT_TRUE(essence(out.path() / name) == essence(measure.path() / name)) << name << " differs";
        }
    }
}

TEST_F(FiveDresses, TellWhatThePlainRulesCannotRead) {
    // The plain rules find no step of a Visual MODFLOW model but the first in a head file as MODFLOW writes
    // it; that is told.
    for (const std::string& project : kProjects) {
        SCOPED_TRACE(project);
        const plx::test::TempFolder out;
        const std::string complaint = project.ends_with(".vmf") ? "valley.hds: byte " : "";
        const ProgramRun run = convert(project, out.path(), "--rules", "prescribed");
        EXPECT_EQ(run.code, complaint.empty() ? 0 : 1);
        EXPECT_EQ(run.err.empty(), complaint.empty()) << run.err;
        EXPECT_NE(run.err.find(complaint), std::string::npos) << run.err;
        EXPECT_NE(out.read("GENERAL/connectivity.conn"), "");
    }
}
