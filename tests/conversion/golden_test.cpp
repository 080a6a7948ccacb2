// The files of a small model that holds every term, byte by byte, as they were checked by hand once. To renew
// them after a deliberate change run the test with PLX_RENEW_GOLDENS=1 and read the difference.

#include <gtest/gtest.h>
#include <zlib.h>

#include <algorithm>
#include <filesystem>
#include <string>

#include "plxutils/converters/Converter.h"
#include "plxutils/converters/MODFLOW2000_Converter.h"
#include "support/capture_stdout.h"
#include "support/golden_files.h"
#include "support/temp_folder.h"

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

/// Converts the small model below `out` with every output on.
plx::ConversionReport convert(const fs::path& out, const plx::ReadingRules& rules, bool compress) {
    MODFLOW2000_Converter factory;
    factory.reading_rules = rules;
    factory.output_folder = out.string().c_str();
    factory.keep_log = false;
    VXFile project((kData / "small" / "small.nam").string().c_str());
    double porosity[] = {0.25, 0.3};
    int outputs[Converter::kOutputs];
    std::fill(std::begin(outputs), std::end(outputs), 1);
    plx::test::capture_stdout([&] {
        Converter().create_converter(factory, project, 2, porosity, compress, outputs, false, 0.0, 0.0, 0.0,
                                     0.0);
    });
    return factory.report;
}

}  // namespace

TEST(SmallModel, FilesAreThoseOfTheGoldens) {
    const struct {
        const char* golden;
        plx::ReadingRules rules;
        std::int64_t cells;
    } cases[] = {{"modflow", plx::ReadingRules::modflow(), 22},
                 {"prescribed", plx::ReadingRules::prescribed(), 21}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.golden);
        plx::test::TempFolder out;
        const plx::ConversionReport report = convert(out.path(), c.rules, false);
        EXPECT_TRUE(report.errors.empty()) << report.errors.front();
        EXPECT_EQ(report.cells, c.cells);
        EXPECT_EQ(report.steps, 3);
        plx::test::expect_tree(kData / "golden" / c.golden, out.path());
    }
}

TEST(SmallModel, CompressedFilesHoldTheSameText) {
    plx::test::TempFolder out;
    EXPECT_TRUE(convert(out.path(), plx::ReadingRules::modflow(), true).errors.empty());
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
        EXPECT_EQ(is_gzip(out.path() / packed), !time_control) << packed;
        EXPECT_EQ(unzipped(out.path() / packed), text) << packed;
    }
}

TEST(SmallModel, RowsOfAFieldFileMeetItsHeaderAndCompanions) {
    const fs::path golden = kData / "golden" / "modflow";
    const std::string field = plx::test::read_bytes(golden / "MODFLOW" / "mod_small_90_000.pff");
    const auto lines_between = [&field](const char* from, const char* to) {
        const auto begin = field.find('\n', field.find(from)) + 1;
        return std::count(field.begin() + static_cast<std::ptrdiff_t>(begin),
                          field.begin() + static_cast<std::ptrdiff_t>(std::min(field.find(to), field.size())),
                          '\n');
    };
    EXPECT_EQ(lines_between("NODE_DATA_START", "CELL_DATA_START"), 76);
    EXPECT_EQ(lines_between("CELL_DATA_START", "no such keyword"), 22);
    // The second cell set begins where the first one's ten rows end.
    EXPECT_NE(
        field.find("CELL_SET_DEF 1 12 Hex \"Layer_1\" FILE \"..\\GENERAL\\connectivity.conn\" ROW 12\r\n"),
        std::string::npos);
    const std::string cells = plx::test::read_bytes(golden / "GENERAL" / "connectivity.conn");
    EXPECT_EQ(std::count(cells.begin(), cells.end(), '\n'), 1 + 22);
}
