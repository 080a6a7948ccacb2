#include "formats/array_record.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

#include "support/capture_stdout.h"
#include "support/hdf5_file.h"
#include "support/memory_streams.h"
#include "support/temp_folder.h"

using namespace plx;

namespace {

using Values = std::vector<double>;

struct Read {
    Values values;
    TextRules used;
    Problems problems;
    bool found = false;
    std::string trace, rest;
};

/// Reads an array of two rows and two columns.
Read read(const std::string& text, const TextRules& rules, bool whole = false, Hdf5Id arrays = -1) {
    test::MemoryStreams streams;
    streams.hdf5 = {{"a b.h5", arrays}};
    streams.units = {{20, "5 6\n7 8\n"}};
    streams.files = {{"data.txt", "1\n2\n3 4\n"}};
    TextSource in = TextSource::of_text(text, "site.dis");
    Read result;
    result.values.assign(4, -1.0);
    result.trace = test::capture_stdout([&] {
        result.found = read_array_record(in, streams, rules, result.used, {result.values, 2, whole, "TOP"},
                                         result.problems);
    });
    in.read_line(result.rest);
    return result;
}

/// A letter for each rule that made a difference.
std::string letters(const TextRules& used) {
    return std::string(used.skip_empty_words, 's') + std::string(used.unit_zero_is_constant, 'u') +
           std::string(used.zero_multiplier_is_one, 'z') + std::string(used.obey_formats, 'o') +
           std::string(used.tab_separates, 't');
}

TEST(ArrayRecord, FormsUnderBothRules) {
    const std::vector<std::tuple<std::string, std::string, std::string, std::string>> cases = {
        {"constant 1.5(FREE) 9 TOP\n", "1.5 1.5 1.5 1.5", "1.5 1.5 1.5 1.5", ""},
        {"CONSTANT (FREE) 3\n", "0 0 0 0", "0 0 0 0", ""},
        {"# note\nINTERNAL 2 (FREE) -1\n1 2\n3 4\n", "2 4 6 8", "2 4 6 8", ""},
        {"INTERNAL 0\n'1',2D0\n3 4 # end\n", "1 2 3 4", "0 2 3 4", ""},
        {"INTERNAL\n1 2\n3 4 more\n", "3 4 0 0", "1 2 3 4", ""},
        {"INTERNAL 1(2I1)\n12\n34\n", "12 34 0 0", "1 2 3 4", "o"},
        {"INTERNAL 1.0 (FREE)\n2*7\n3 4\n", "2 3 4 0", "7 7 3 4", "o"},
        {"INTERNAL 1.0 (FREE)\n1 2 \n3 4\n", "1 2 0 3", "1 2 3 4", "s"},
        {"INTERNAL 1.0 (FREE)\n1 2\n3\t4\n", "1 2 3 0", "1 2 3 4", "t"},
        {"EXTERNAL 20 0 (FREE)\n", "0 0 0 0", "5 6 7 8", "z"},
        {"OPEN/CLOSE data.txt 2.0(FREE) -1\n", "2 4 6 8", "2 4 6 8", ""},
        {"OPEN/CLOSE 'data.txt' 0 (FREE)\n", "0 0 0 0", "1 2 3 4", "z"},
        {"         0    35.000(10e12.4)    0 TOP\n", "0 0 0 0", "35 35 35 35", "u"},
        {"        201.0000E+00(2F2.0)\n", "0 0 0 0", "5 6 7 8", "o"},
        {"\n", "0 0 0 0", "0 0 0 0", "u"},
    };
    for (const auto& [text, plain, model, used] : cases) {
        SCOPED_TRACE(text);
        EXPECT_EQ(test::text_of(read(text, {}).values), plain);
        const Read by_model = read(text + "next", test::kModelRules);
        EXPECT_EQ(test::text_of(by_model.values), model);
        EXPECT_EQ(letters(by_model.used), used);
        EXPECT_EQ(by_model.rest, "next");
    }
}

TEST(ArrayRecord, Trace) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"CONSTANT 5  DELR\n", "[CONSTANT\t5\t DELR]\n"},
        {"EXTERNAL 20 1.0(FREE) -1\n", "[EXTERNAL\t20\t1.0(FREE)\t-1]\n"},
        {"OPEN/CLOSE data.txt 1 x\n", "[OPEN/CLOSE\tdata.txt\t1\tx]\n"},
        {"20 1 (FREE)\n", "[20\t1\t(FREE)]\n"},
        {"Hdf5 1.0 -1 \"a b.h5\" \"Arrays/top1\" 1 0  30 \n",
         "[Hdf5\t1.0\t-1\ta b.h5\tArrays/top1\t1 0  30]\n"},
    };
    TextRules rules;
    rules.hdf5_records = true;
    for (const auto& [text, trace] : cases) EXPECT_EQ(read(text, rules).trace, trace);
}

TEST(ArrayRecord, FaultsNamePlaceAndArray) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"# x\nEXTERNAL 29 1\n", "site.dis: line 2: no open file at unit 29 (TOP)"},
        {"CONSTNAT 10\n", "site.dis: line 1: \"CONSTNAT\" is no array record (TOP)"},
        {"OPEN/CLOSE none.txt 1\n", "site.dis: line 1: cannot open none.txt (TOP)"},
        {"INTERNAL 1\n1 2\n3\n", "site.dis: line 4: 4 values expected for TOP, 3 found"},
        {"", "site.dis: line 1: the file ends before TOP"},
    };
    for (const TextRules& rules : {TextRules{}, test::kModelRules}) {
        for (const auto& [text, problem] : cases) {
            SCOPED_TRACE(problem);
            const Read result = read(text, rules);
            EXPECT_FALSE(result.found);
            EXPECT_EQ(result.problems, Problems{problem});
            EXPECT_EQ(result.values[3], 0.0);
        }
    }
    EXPECT_EQ(read("CONSTANT ten\n", {}).problems,
              Problems{"site.dis: line 1: \"ten\" is not a number, 0 is used (TOP)"});
    const Read odd = read("INTERNAL 1\n1 2\nx 4\n", test::kModelRules);
    EXPECT_TRUE(odd.found);
    EXPECT_EQ(odd.problems, Problems{"site.dis: line 3: \"x\" in TOP is not a number, 0 is used"});
}

TEST(ArrayRecord, BinaryValuesWithAndWithoutHeader) {
    const float reals[4] = {1.5F, 2.5F, -3.0F, 4.0F};
    const std::int32_t whole[4] = {1, -1, 0, 7};
    std::string header(44, '\0');
    header[32] = header[36] = 2;
    header[40] = 1;
    const std::string real_bytes(reinterpret_cast<const char*>(reals), sizeof reals);
    const std::string whole_bytes(reinterpret_cast<const char*>(whole), sizeof whole);
    for (const std::string& prefix : {std::string(), header}) {
        const std::string control = "INTERNAL 2 (BINARY)\n" + prefix;
        EXPECT_EQ(read(control + real_bytes, test::kModelRules).values, (Values{3, 5, -6, 8}));
        EXPECT_EQ(read(control + whole_bytes, test::kModelRules, true).values, (Values{2, -2, 0, 14}));
        EXPECT_FALSE(read(control + real_bytes.substr(1), test::kModelRules).found);
    }
}

Hdf5Handle made_arrays(const test::TempFolder& folder) {
    const std::string path = folder.file("arrays.h5");
    {
        test::Hdf5Writer out(path);
        out.ints("Arrays/four", {4}, {1, 0, -1, 2});
        out.doubles("Arrays/six", {3, 2}, {1, 2, 3, 4, 5, 6});
        out.doubles("Arrays/odd", {4}, {1, std::nan(""), 3, HUGE_VAL});
    }
    return open_hdf5_file(path.c_str());
}

TEST(ArrayRecord, Hdf5RecordsOfGmsModels) {
    const test::TempFolder folder;
    const Hdf5Handle file = made_arrays(folder);
    TextRules plain, model = test::kModelRules;
    plain.hdf5_records = model.hdf5_records = true;
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"1.0 -1 \"a b.h5\" \"Arrays/four\" 1 0 4", "1 0 -1 2"},
        {"0,-1,'a b.h5',Arrays/four # all", "1 0 -1 2"},
        {"2.5 -1 \"a b.h5\" /Arrays/six 2 1 2 0 2", "7.5 10 12.5 15"},
        {"1 -1 \"a b.h5\" Arrays/one", "a b.h5: there is no dataset Arrays/one"},
        {"1 -1 \"a b.h5\" Arrays/six", "a b.h5: Arrays/six holds 6 values, 4 expected"},
        {"1 -1 \"a b.h5\" Arrays/six 1 0 4", "a b.h5: Arrays/six has 2 axes, 1 expected"},
        {"1 -1 \"a b.h5\" Arrays/four 2 0 4",
         "\"2 0 4\" is no part of a dataset (axes, then start and count of each)"},
        {"1 -1 none.h5 Arrays/four", "cannot open none.h5 as an HDF5 file"},
        {"1 -1 \"a b.h5", "a file and a dataset are missing in an HDF5 record"},
    };
    for (const auto& [fields, expected] : cases) {
        SCOPED_TRACE(fields);
        for (const TextRules& rules : {plain, model}) {
            const Read result = read("hdf5 " + fields + "\nnext", rules, false, file.id());
            const std::string problem = result.found ? "" : "site.dis: line 1: " + expected + " (TOP)";
            EXPECT_EQ(result.problems, result.found ? Problems{} : Problems{problem});
            EXPECT_EQ(test::text_of(result.values), result.found ? expected : "0 0 0 0");
            EXPECT_EQ(result.rest, "next");
        }
    }
    const Read odd = read("HDF5 2 -1 'a b.h5' Arrays/odd\n", model, false, file.id());
    EXPECT_EQ(test::text_of(odd.values), "2 0 6 0");
    ASSERT_EQ(odd.problems.size(), 1u);
    EXPECT_NE(odd.problems[0].find("value 2 of Arrays/odd is not a number, 0 is used"), std::string::npos);
    EXPECT_NE(read("HDF5 1 -1 x.h5 a\n", {}).problems.at(0).find("belong to GMS models"), std::string::npos);
}

TEST(ArrayReader, HugeArraysAreRefusedBeforeTheyAreSized) {
    const test::TempFolder folder;
    const Hdf5Handle file = made_arrays(folder);
    TextRules rules = test::kModelRules;
    rules.hdf5_records = true;
    for (const char* text :
         {"INTERNAL 1\n1 2 3\n", "INTERNAL 1 (FREE)\n1 2 3\n", "INTERNAL 1 (BINARY)\n1 2 3\n",
          "INTERNAL 1 (10I1)\n1 2 3\n", "HDF5 1 -1 a.h5 none\nHDF5 1 -1 a.h5 Arrays/four\n"}) {
        SCOPED_TRACE(text);
        test::MemoryStreams streams;
        streams.hdf5 = {{"a.h5", file.id()}};
        TextSource in = TextSource::of_text(text, "site.dis");
        TextRules used;
        Problems problems;
        ArrayReader arrays(in, streams, rules, used, problems);
        Values values(3);
        const bool hdf5 = *text == 'H';
        EXPECT_TRUE(!hdf5 || arrays.read({4, 4, false, "starting heads", true}, values))
            << "left when unused";
        EXPECT_FALSE(arrays.read({100'000'000, 10'000, false, "TOP"}, values));
        EXPECT_TRUE(values.empty() && arrays.ended());
        EXPECT_EQ(
            problems,
            Problems{hdf5 ? "site.dis: line 2: a.h5: Arrays/four holds 4 values, 100000000 expected (TOP)"
                          : "site.dis: line 2: 100000000 values expected for TOP, but only 6 bytes follow"});
    }
}

}  // namespace
