#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <tuple>

#include "cli/run_tool.h"
#include "cli/small_model.h"
#include "support/holds_regex.h"
#include "support/temp_folder.h"

namespace plx::test {
namespace {

using testing::HasSubstr;

const std::string kPair = "0,0,0,10\n3,0,0,40\n";

/// What stands between a line that begins so and the next line that begins with a capital.
std::string section(const std::string& text, const std::string& start) {
    const std::size_t line = text.find("\n" + start);
    if (line == std::string::npos) return "no " + start;
    const std::size_t begin = text.find('\n', line + 1) + 1;
    return text.substr(begin, text.find_first_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ", begin) - begin);
}

/// Numbers with a blank behind each.
std::string plain(const std::string& text) {
    std::istringstream words(text);
    std::string out;
    for (std::string word; words >> word;) out += word + " ";
    return out;
}

/// Runs the command with options between blanks and an output file.
ToolRun interpolate(const std::string& samples, const std::string& options, const std::string& output) {
    Words arguments = {"interpolate", samples, "-o", output};
    std::istringstream words(options);
    for (std::string word; words >> word;) arguments.push_back(word);
    return run_tool(arguments);
}

TEST(Interpolate, NodesGetTheWeightedMeanOfTheSamplesInReach) {
    const TempFolder folder;
    const std::string samples = folder.write("pair.txt", kPair), narrow = " --box 1 0 0 2 1 1";
    const std::string cases[][4] = {
        {"--anisotropy 1 --reach 9" + narrow, "20 30 18.571429 31.428571 18.571429 31.428571 16 34 ", "8",
         "0"},
        {"--anisotropy 2 --reach 9" + narrow, "22 28 21.538462 28.461538 18.571429 31.428571 16 34 ", "8",
         "0"},
        {"--anisotropy 1 --reach 9 --power 4" + narrow,
         "16 34 14.137931 35.862069 14.137931 35.862069 11.764706 38.235294 ", "8", "0"},
        {"--anisotropy 1 --reach 9 --method 2" + narrow, "10 40 10 40 10 40 10 40 ", "8", "0"},
        {"--anisotropy 1 --reach 1" + narrow, "10 40 10 40 10 40 10 40 ", "2", "6"},
        // A single sample in reach, of which the method's own arithmetic makes 0/0.
        {"--anisotropy 1 --reach 1.5 --method 2 --depth 12" + narrow, "10 40 10 40 10 40 10 40 ", "6", "2"},
        {"--anisotropy 1 --reach 9 --box 0 0 0 3 1 1",
         "14.615385 35.384615 12.727273 37.272727 12.727273 37.272727 10 40 ", "8", "0"},
    };
    for (const auto& [options, values, in_reach, nearest] : cases) {
        SCOPED_TRACE(options);
        const ToolRun run = interpolate(samples, "--grid 1 1 1 " + options, folder.file("out.pff"));
        EXPECT_EQ(run.code, 0);
        EXPECT_EQ(run.err, "");
        std::string found = plain(section(folder.read("out.pff"), "NODE_DATA_START"));
        for (std::size_t at; (at = found.find(".000000")) != std::string::npos;) found.erase(at, 7);
        EXPECT_EQ(found, values);
        EXPECT_THAT(run.out, HoldsRegex("  within reach +" + in_reach + "\n"));
        EXPECT_THAT(run.out, HoldsRegex("  took the nearest +" + nearest + "\n"));
    }
}

TEST(Interpolate, LaboratoryWordsAndColumnNamesAreUnderstood) {
    const TempFolder folder;
    const std::string samples = folder.write("lab.csv",
                                             "# taken in May\n\"Well\",Z,Northing,X,Nitrate,Sulfate,\n"
                                             "\"MW, 1\",0,0,0,5,1, # dry\n's-Berg 2,0,0,10,<5,1\n,,,,,\n"
                                             "a,0,10,0,ND,1\na,0,10,10, ,1\n'a',0,+10,10,7.5e0,1,\n");
    const ToolRun run = interpolate(
        samples, "--grid 1 1 1 --reach 0 --value nitrate --nondetect 0.25 --dl-factor 0.1 --compress",
        folder.file("Out.pff"));
    EXPECT_EQ(run.code, 0);
    EXPECT_THAT(run.err, HasSubstr("no extent in z: the grid is 0.1 thick there"));
    for (const char* line : {"read +5\n", "missing +1\n", "below detection +1\n", "non-detect +1\n",
                             "smallest value +0.25\n", "largest value +7.5\n", "out.pfz\n"}) {
        EXPECT_THAT(run.out, HoldsRegex(line));
    }
    EXPECT_EQ(folder.read("out.pfz").substr(0, 2), "\x1f\x8b");
    interpolate(samples, "--grid 1 1 1 --box 0 0 -1 10 10 0 --reach 0", folder.file("out.pff"));
    const std::string field = folder.read("out.pff");
    EXPECT_THAT(field, HasSubstr("NODE_DATA_DEF 0 \"Nitrate\" \"Linear_\" IN_FILE \r\n"));
    EXPECT_EQ(plain(section(field, "NODE_DATA_START")),
              "0.000000 7.500000 5.000000 2.500000 0.000000 7.500000 5.000000 2.500000 ");
}

TEST(Interpolate, ModelGivesTheNodesAndCellsThatAConversionWrites) {
    const TempFolder folder;
    write_small_model(folder);
    std::filesystem::rename(folder.file("site.nam"), folder.file("site.mfn"));
    const std::string project = folder.write(
        "site.mfs", "MF2KSUP\nNAME 99 \"site.mfn\"\nIJK -y +x -z\nORIG 1000.5 2000.0 0.0\nROTZ 30\n");
    const std::string samples = folder.write("pair.txt", kPair);
    EXPECT_EQ(interpolate(samples, "--onto " + project, folder.file("on.pff")).err, "");
    run_tool({"modflow", project, "--outputs", "none", "--dest", folder.file("all"), "--quiet"});
    const std::string field = folder.read("on.pff");
    EXPECT_THAT(field, HasSubstr("CELL_SET_DEF 0 11 Hex \"Layer_0\" IN_FILE"));
    const std::string nodes = folder.read("all/GENERAL/node_coordinates.xyz");
    EXPECT_EQ(plain(section(field, "NODES IN_FILE")), plain(nodes.substr(nodes.find('\n'))));
    const std::string cells = folder.read("all/GENERAL/connectivity.conn");
    EXPECT_EQ(plain(section(field, "CELL_START")), plain(cells.substr(cells.find('\n'))));
}

TEST(Interpolate, BadInputIsRefusedAndNothingWritten) {
    const TempFolder folder;
    std::string many;
    for (int i = 0; i < 25; ++i) many += "1 2 three 4\n";
    const std::string grid = "--grid 1 1 1 ";
    const std::tuple<std::string, std::string, int, const char*> cases[] = {
        {"x y z value\n1 2 3 na\n", grid, 1, "holds no sample: the values of all 1 line are missing"},
        {kPair + "1,2,,4\n", grid, 1, "s.txt, line 3: z is '', no coordinate"},
        {"well,x,y,z,N,year\nMW 1,1,2,,5,2020\n", grid, 1, "line 2: z is ''"},
        {"well x y z N\nMW 1 1 2 3 5\n", grid, 1, "has 6 cells, not 5 (write 'missing'"},
        {"1,5;2,5;3;4\n", grid, 1, "commas and semicolons in one line"},
        {"nan,nan,nan,5\n", grid, 1, "line 1: x is 'nan'"},
        {"a,b,c,d,e\n1,2,3,4,5\n", grid, 1, "no columns named x, y and z"},
        {"1 2 3 4\r5 6 7 8\r", grid, 1, "CR without LF"},
        {"1 2 3 4\n", grid + "--anisotropy 1e6 --box 0 0 0 1 1 1e9", 1, "lies too far away"},
        {kPair + "1,2,nan,4\n1,2,3,<\n", grid, 1, "line 3: z is 'nan', no coordinate\nplxconvert: "},
        {"1 2 3 4\n" + many, grid, 1, "line 21: z is 'three', no coordinate\nplxconvert: and 5 more\n"},
        {"x,y,depth,value\n1,2,3,4\n", grid, 1, "must have all of x, y and z"},
        {"x,y,z,lead\n1,2,3,4\n", grid + "--value zinc", 1, "no column 'zinc'"},
        {std::string("1 2 3 4\n\0", 9), grid, 1, "is a binary file"},
        {kPair, grid + "--onto x.nam", 2, "one of them"},
        {kPair, "--grid 999 999 100", 2, "more than 100000000 nodes"},
        {kPair, grid + "--box 0 0 0 1 1 0", 2, "below its maximum"},
        {kPair, grid + "--depth 13", 2, "--depth: from 1 to 12"},
        {kPair, grid + "--anisotropy 0", 2, "--anisotropy"},
    };
    for (const auto& [bytes, options, code, message] : cases) {
        SCOPED_TRACE(bytes.substr(0, 40) + options);
        expect_refused(interpolate(folder.write("s.txt", bytes), options, folder.file("out.pff")), code,
                       message);
        EXPECT_EQ(entry_count(folder), 1);
    }
    EXPECT_THAT(interpolate(folder.file("s.txt"), grid, folder.file("none/out.pff")).err,
                HasSubstr("none' does not exist"));
    EXPECT_EQ(interpolate(folder.file("s.txt"), grid, folder.file("out.txt")).code, 2);
}

TEST(Interpolate, NumberThatIsNotTheWholeWordIsNoMeasurement) {
    const TempFolder folder;
    for (const std::string word : {"2020-01-02", "12:30", "5J", "5%", "<-5", ">5", "-1e9x", "1e400"}) {
        const ToolRun run = interpolate(folder.write("s.txt", kPair + "1;,2,3,4\n1,2,3," + word + "\n"),
                                        "--grid 1 1 1", folder.file("out.pff"));
        expect_texts(run.err, {"line 3: x is '1;'", "line 4: the value is '" + word + "', no measurement"});
    }
}

TEST(Interpolate, SamplesAtOnePlaceGiveTheirMeanAlsoOutOfReach) {
    const TempFolder folder;
    const std::string samples = folder.write("s.txt",
                                             "\xef\xbb\xbf"
                                             "0 0 0 1\n0 0 0 2\n0 0 0 6\n9 0 0 9\n");
    const ToolRun run =
        interpolate(samples, "--grid 1 1 1 --box 1 1 0 2 2 1 --reach 0", folder.file("out.pff"));
    EXPECT_THAT(run.out, HoldsRegex("smallest value +3\n  largest value +3\n"));
    EXPECT_THAT(run.out, HoldsRegex("took the nearest +8\n"));
}

TEST(Interpolate, OldResultSurvivesAFaultAndInputsAreNeverReplaced) {
    const TempFolder folder;
    write_small_model(folder);
    const std::string samples = folder.write("s.txt", kPair), old = folder.write("old.pff", "old");
    std::filesystem::create_hard_link(folder.file("site.nam"), folder.file("model.pff"));
    std::filesystem::create_hard_link(samples, folder.file("samples.pff"));
    std::filesystem::create_directory(folder.file("~old.pff.part"));
    for (const char* output : {"old.pff", "model.pff", "samples.pff"}) {
        SCOPED_TRACE(output);
        const std::string before = folder.read(output);
        EXPECT_EQ(interpolate(samples, "--onto " + folder.file("site.nam"), folder.file(output)).code, 1);
        EXPECT_EQ(folder.read(output), before);
    }
    std::filesystem::remove(folder.file("~old.pff.part"));
    EXPECT_EQ(interpolate(samples, "--grid 1 1 1", old).code, 0);
    EXPECT_NE(folder.read("old.pff"), "old");
    EXPECT_FALSE(std::filesystem::exists(folder.file("~old.pff.part")));
    // A gzip file that ends within its data, behind whole lines.
    interpolate(samples, "--grid 9 9 9", folder.file("z.pfz"));
    const std::string whole = folder.read("z.pfz");
    const std::string cut = folder.write("cut.csv.gz", whole.substr(0, whole.size() * 2 / 3));
    EXPECT_THAT(interpolate(cut, "--grid 1 1 1", old).err, HasSubstr("is cut short"));
}

}  // namespace
}  // namespace plx::test
