#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <string>
#include <tuple>

#include "cli/run_tool.h"
#include "cli/small_model.h"
#include "support/golden_files.h"
#include "support/host_system.h"
#include "support/temp_folder.h"

namespace plx::test {
namespace {

namespace fs = std::filesystem;
using testing::AnyOf;
using testing::HasSubstr;
using Contents = std::map<fs::path, std::string>;

class WriteFaults : public testing::Test {
protected:
    void SetUp() override {
        if (kWindows) GTEST_SKIP() << "needs limits, signals and special files of POSIX";
        folder_.write("s.csv", "0,0,0,10\n3,0,0,40\n");
        clear();
    }
    std::string out(const char* name) const { return folder_.file("out/") + name; }
    void clear() const {
        fs::remove_all(out(""));
        fs::create_directories(out("MODFLOW"));
    }
    Contents contents() const {
        Contents found;
        for (const fs::path& name : files_below(out(""))) found[name] = read_bytes(fs::path(out("")) / name);
        return found;
    }
    /// Runs a script with `first` as "$0" and the tool's command as "$@".
    static ToolRun shell(const std::string& script, const std::string& first, Words words) {
        words.insert(words.begin(), {"-c", script, first, PLXCONVERT});
        return run_program("/bin/sh", words);
    }
    /// Each file is the older or the complete one; lists of steps may be short, though not empty, and name
    /// complete files only.
    void check_files(Contents whole) const {
        for (const auto& [name, bytes] : contents()) {
            SCOPED_TRACE(name);
            if (name.extension() == ".log" || bytes == "old") continue;
            ASSERT_EQ(whole.count(name), 1U) << "left behind";
            const bool steps = name.extension() == ".tcf";
            EXPECT_FALSE(bytes.empty());
            EXPECT_TRUE(steps || name.stem() == "flow_data" || bytes == whole[name])
                << "neither the older nor the complete file";
            for (const auto& [field, field_bytes] : whole) {
                if (!steps || bytes.find(field.filename().string()) == std::string::npos) continue;
                EXPECT_TRUE(read_bytes(fs::path(out("")) / field) == field_bytes) << field;
            }
        }
    }

    TempFolder folder_;
    std::string project_ = write_small_model(folder_);
    Words modflow_ = {"modflow", project_, "--dest", out("")};
};

TEST_F(WriteFaults, LimitOnFileSizeLeavesOlderOrCompleteFiles) {
    const std::string quarry = PLX_EXAMPLES "/quarry/quarry.gpr";
    const std::string points = folder_.write("p.gcp", "100\t-200\t1\t2\n300\t-210\t11\t2\n90\t-500\t1\t32\n");
    const Words commands[] = {
        modflow_,
        {"modflow", project_, "--dest", out(""), "--compress"},
        {"gms", quarry, "--dest", out(""), "--plain"},
        {"gms", quarry, "--dest", out("")},
        {"interpolate", folder_.file("s.csv"), "--grid", "9", "9", "9", "-o", out("x.pff")},
        {"interpolate", folder_.file("s.csv"), "--grid", "9", "9", "9", "-o", out("x.pfz")},
        {"georef", "fit", points, "--plot", out("x.svg")},
        {"georef", "gcp", folder_.write("out/x.png", "old"), "--points", points}};
    for (const Words& words : commands) {
        clear();
        folder_.write("out/x.png", "old");
        ASSERT_EQ(run_tool(words).code, 0) << words[0];
        const Contents whole = contents();
        int code = 1, faults = 0;
        for (int blocks = 0; code == 1 && blocks < 100000; blocks = blocks * 2 + 1) {
            SCOPED_TRACE(words[0] + " " + words.back() + ", blocks " + std::to_string(blocks));
            for (const auto& [name, bytes] : whole) folder_.write("out/" + name.string(), "old");
            // What is printed goes through a pipe, which has no size.
            const ToolRun run = shell("{ (ulimit -f $0; exec \"$@\"); echo \"code $?\"; } 2>&1 | cat",
                                      std::to_string(blocks), words);
            code = run.out.substr(run.out.rfind("code ")) == "code 1\n" ? 1 : 0;
            check_files(whole);
            if (code == 0) break;
            ++faults;
            EXPECT_THAT(run.out,
                        AnyOf(HasSubstr("not all of it could be written"),
                              HasSubstr("no file can be written beside '" + folder_.path().string())));
        }
        EXPECT_GT(faults, 0);
        EXPECT_EQ(code, 0);
    }
}

TEST_F(WriteFaults, OutputThatIsNoOrdinaryFileIsTold) {
    const std::tuple<const char*, std::string, bool, bool> cases[] = {
        {"MODFLOW/mod_site_30_000.pff", ": not all of it", false, false},
        {"MODFLOW/mod_site_30_000.pff", " for writing", true, false},
        {"MODFLOW/flow_data.dwr", ": not all of it", false, true},
        {"plxconvert.log", ": not all of it", false, true}};
    for (const auto& [name, message, folder, second_step] : cases) {
        SCOPED_TRACE(name + message);
        clear();
        folder ? fs::create_directory(out(name)) : (fs::create_symlink("/dev/full", out(name)), true);
        const ToolRun run = run_tool(modflow_);
        EXPECT_EQ(run.code, 1);
        EXPECT_THAT(run.err, HasSubstr(fs::path(name).filename().string() + message));
        EXPECT_EQ(fs::is_symlink(out(name)), !folder);
        const std::string steps = folder_.read("out/MODFLOW/mod_site.tcf");
        EXPECT_THAT(steps, HasSubstr("mod_site_15_000.pff"));
        EXPECT_EQ(steps.find("mod_site_30_000.pff") != std::string::npos, second_step);
    }
}

TEST_F(WriteFaults, TerminationLeavesNoTemporaryFiles) {
    // A pipe that nobody reads stops the conversion in the middle.
    ASSERT_EQ(run_program("/usr/bin/mkfifo", {out("MODFLOW/mod_site_30_000.pff")}).code, 0);
    folder_.write("out/MODFLOW/mod_site.tcf", "old");
    const Words large = {"interpolate", folder_.file("s.csv"), "--grid", "300", "300", "99",
                         "-o",          out("x.pfz")};
    for (const auto& [part, words] :
         {std::pair{out("MODFLOW/~flow_data.dwr.part"), modflow_}, std::pair{out("~x.pfz.part"), large}}) {
        SCOPED_TRACE(part);
        const ToolRun run = shell(
            "\"$@\" & n=0; while [ ! -e \"$0\" ] && [ $n -lt 300 ]; do sleep 0.1; n=$((n+1)); done\n"
            "sleep 0.3; [ -e \"$0\" ] && echo begun; kill -TERM $!; wait $!",
            part, words);
        EXPECT_THAT(run.out, HasSubstr("begun\n"));
        EXPECT_EQ(run.code, 128 + 15) << "ended by the signal";
        for (const auto& [name, bytes] : contents()) EXPECT_FALSE(name.filename().string().starts_with('~'));
    }
    EXPECT_EQ(folder_.read("out/MODFLOW/mod_site.tcf"), "old");
    EXPECT_FALSE(fs::exists(out("x.pfz")));
    EXPECT_TRUE(fs::exists(out("MODFLOW/mod_site_15_000.pff")));
}

}  // namespace
}  // namespace plx::test
