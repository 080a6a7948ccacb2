// The files of a small model that holds every term, byte by byte, as they were checked by hand once. To renew
// them after a deliberate change run the test with PLX_RENEW_GOLDENS=1 and read the difference.

#include <gtest/gtest.h>
#include <zlib.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <tuple>

#include "conversion/small_model.h"
#include "support/golden_files.h"

namespace fs = std::filesystem;

namespace {

const fs::path kData = PLX_TEST_DATA;

std::string unzipped(const fs::path& path) {
    std::string text;
    gzFile in = gzopen(path.string().c_str(), "rb");
    char block[4096];
    for (int n = gzread(in, block, sizeof block); n > 0; n = gzread(in, block, sizeof block)) {
        text.append(block, static_cast<std::size_t>(n));
    }
    gzclose(in);
    return text;
}

bool is_gzip(const fs::path& path) { return plx::test::read_bytes(path).substr(0, 2) == "\x1f\x8b"; }

}  // namespace

TEST(SmallModel, FilesAreThoseOfTheGoldens) {
    const std::tuple<const char*, plx::ReadingRules, int> cases[] = {
        {"modflow", plx::ReadingRules::modflow(), 22}, {"prescribed", plx::ReadingRules::prescribed(), 21}};
    for (const auto& [golden, rules, cells] : cases) {
        SCOPED_TRACE(golden);
        plx::test::SmallModel model;
        const plx::ConversionReport report = model.convert(rules);
        EXPECT_TRUE(report.errors.empty()) << report.errors.front();
        EXPECT_EQ(report.cells, cells);
        EXPECT_EQ(report.steps, 3);
        plx::test::expect_tree(kData / "golden" / golden, model.out.path());
    }
}

TEST(SmallModel, CompressedFilesHoldTheSameText) {
    plx::test::SmallModel model;
    EXPECT_TRUE(model.convert(plx::ReadingRules::modflow(), true).errors.empty());
    const fs::path golden = kData / "golden" / "modflow";
    for (const fs::path& name : plx::test::files_below(golden)) {
        std::string packed = name.string();
        for (const auto& [plain, other] : {std::pair{".pff", ".pfz"}, {".dwr", ".dwz"}}) {
            const auto at = packed.rfind(plain);
            if (at != std::string::npos) packed.replace(at, 4, other);
        }
        std::string text = plx::test::read_bytes(golden / name);
        const bool time_control = name.extension() == ".tcf";
        for (auto at = text.find(".pff"); time_control && at != std::string::npos; at = text.find(".pff")) {
            text.replace(at, 4, ".pfz");
        }
        EXPECT_EQ(is_gzip(model.out.path() / packed), !time_control) << packed;
        EXPECT_EQ(unzipped(model.out.path() / packed), text) << packed;
    }
}
