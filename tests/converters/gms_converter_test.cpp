#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <memory>

#include "plxutils/converters/Converter.h"
#include "plxutils/converters/GMS_Converter.h"
#include "plxutils/converters/GMS_HDF5_Converter.h"
#include "support/capture_stdout.h"
#include "support/golden_files.h"
#include "support/hdf5_file.h"
#include "support/result_files.h"
#include "support/temp_folder.h"

using namespace plx;
using namespace plx::test;

namespace {

const std::string kSuper =
    "MF2KSUP\nNAME 99 \"m.mfn\"\nORIG 1000 2000 30\nROTZ 90\nDMAT 3\nREFTIME s 0 1999 12 31 "
    "12 0 0\nUNITS \"ft\"\t\"d\"\n";
const std::string kNames = "DIS 19 m.dis\nBAS6 3 m.ba6\nDATA(BINARY) 30 m.hed\nDATA(BINARY) 40 m.ccf\n";
const std::string kArray = "INTERNAL 1.0 (free) -1\n";

std::string dis_file(const std::string& surfaces, const std::string& columns = "10 20 \n",
                     const std::string& rows = "5 6 \n") {
    return "# GMS\n1 2 2 1 4 1\n0\n" + kArray + columns + kArray + rows + surfaces + "1.0 1 1.0 SS\n";
}

std::string hdf5_record(const std::string& dataset, const std::string& slab = "1 0 4") {
    return "HDF5 1.0 -1 \"m.h5\" \"Arrays/" + dataset + "\" " + slab + "\n";
}

const std::string kTextSurfaces = kArray + "9 8 \n7 6.5 \n" + kArray + "1 2 \n3 4 \n";
const std::string kHdf5Surfaces = hdf5_record("top1") + hdf5_record("bot1");

/// A model of one layer, two rows and two columns, its arrays in the texts or in an HDF5 file.
struct SmallModel {
    explicit SmallModel(bool hdf5) {
        folder.write("m.mfs", kSuper);
        folder.write("m.mfn", kNames);
        folder.write("m.dis", dis_file(hdf5 ? kHdf5Surfaces : kTextSurfaces));
        folder.write("m.ba6", "FREE\n" + (hdf5 ? hdf5_record("ibound1") : kArray + "1 1 \n0 -1 \n") +
                                  "-999.0\nCONSTANT 5\n");
        const ResultStamp stamp{1, 1, 1.0, 1, 2, 2};
        ResultWriter heads, flows;
        heads.layer(stamp, 1, {5, 6, -999, 7});
        flows.list(stamp, "CONSTANT HEAD", {{4, {1.5}}});
        flows.array(stamp, "FLOW RIGHT FACE", {1, 0, 2, 0});
        folder.write("m.hed", heads.bytes());
        folder.write("m.ccf", flows.bytes());
        Hdf5Writer arrays(folder.file("m.h5"));
        arrays.doubles("Arrays/top1", {4}, {9, 8, 7, 6.5});
        arrays.floats("Arrays/bot1", {4}, {1, 2, 3, 4});
        arrays.ints("Arrays/ibound1", {4}, {1, 1, 0, -1});
        Hdf5Writer(folder.file("m.gpr")).strings(kNameFile, {".\\m.mfn  "});
    }
    static constexpr const char* kNameFile = "3DGridModule/3DGrid 0/MODFLOW Model 0/Name File";
    TempFolder folder;
};

struct Conversion {
    std::string said, errors;
    std::map<std::string, std::string> files;
};

Conversion convert(const SmallModel& model, const std::string& project, const ReadingRules& rules) {
    std::unique_ptr<ConverterFactory> factory = std::make_unique<GMS_Converter>();
    if (project.ends_with(".gpr")) factory = std::make_unique<GMS_HDF5_Converter>();
    factory->reading_rules = rules;
    const TempFolder out;
    factory->output_folder = out.path().string().c_str();
    int outputs[] = {1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 0};
    VXFile file(model.folder.file(project).c_str());
    Conversion result;
    result.said = capture_stdout(
        [&] { Converter().create_converter(*factory, file, 0, nullptr, false, outputs, false, 0, 0, 0, 0); });
    for (const std::string& error : factory->report.errors) result.errors += error + "\n";
    for (const auto& name : files_below(out.path()))
        result.files[name.filename().string()] = read_bytes(out.path() / name);
    return result;
}

}  // namespace

TEST(GmsConverter, TextAndHdf5ArraysGiveOneResult) {
    const SmallModel text(false), hdf5(true);
    for (const ReadingRules& rules : {ReadingRules::prescribed(), ReadingRules::modflow()}) {
        SCOPED_TRACE(rules.any_nonzero_ibound ? "modflow" : "prescribed");
        const Conversion measure = convert(text, "m.mfs", rules);
        EXPECT_EQ(measure.errors, "");
        EXPECT_EQ(convert(hdf5, "m.mfs", rules).files, measure.files);
        const Conversion project = convert(hdf5, "m.gpr", rules);
        EXPECT_NE(project.said.find("m.hed] hed file\n"), std::string::npos);
        EXPECT_NE(project.said.find("MODFLOW2000 parseCCF_datapos\t"), std::string::npos);
        ASSERT_TRUE(measure.files.contains("mod_m.tcf") && measure.files.contains("mod_m_1_000.pff"));
        for (const char* name : {"connectivity.conn", "node_coordinates.xyz", "mod_m.tcf", "mod_m_1_000.pff"})
            EXPECT_EQ(project.files.at(name), measure.files.at(name)) << name;
        EXPECT_NE(measure.files.at("mod_m.tcf").find("2000"), std::string::npos);
        EXPECT_NE(measure.files.at("mod_m_1_000.pff").find("Linear_ft"), std::string::npos);
        // The last column's lower end: (30, 0) turned to the left lies 30 above the origin.
        EXPECT_NE(measure.files.at("node_coordinates.xyz").find("1000.000000 2030.000000 "),
                  std::string::npos);
    }
}

TEST(GmsConverter, BadInputsAreTold) {
    const std::string write = "MODFLOW : Write_File - Error reading ",
                      own = "GMS_HDF5_Converter : Write_File - ";
    const std::string hdf5 = "m.gpr", tops = kArray + "9 8 \n7 6.5 \n";
    const struct {
        const char* file;
        std::string text, said, error, project = "m.mfs";
    } cases[] = {
        {"m.mfs", "MFUSGSUP\n", "", "m.mfs: line 1: MFUSGSUP, an unstructured model"},
        {"m.mfs", "MF2KSUP\n", "MODFLOW : (*.mfn) does not exist.\n", "m.mfs: no card NAME"},
        {"m.mfs", "NAME no.mfn\n", "(*.mfn) does not exist.\n", "no.mfn: the name file cannot be opened"},
        {"m.mfs", kSuper + "ORIG a b\n", write + "translation coordinates! \nORIG a b\n", "line 8"},
        {"m.mfs", kSuper + "REFTIME x\n", write + "Reference Time! \nREFTIME x\n", "line 8"},
        {"m.mfs", kSuper + "ROTZ\n", own + "Error reading translation coordinates! \nROTZ\n", "line 8", hdf5},
        {"m.mfn", kNames, "detected for GMS converter, please select a *.mfs file\n", "m.mfn: not", "m.mfn"},
        {"m.mfn", "DIS 19 m.dis\n", "Error reading ba6 file\n", "no basic package"},
        {"m.mfn", "DIS 19 m.dis\n", "BA6 File not detected.\n", "no basic package", hdf5},
        {"m.mfn", "DIS 19 m.dis\nBAS6 3 no\n", "Error reading ba6 file\n", "no cannot be opened"},
        {"m.mfn", "BAS6 3 m.ba6\n", "DIS file not detected.\n", "no discretization file"},
        {"m.mfn", "DIS 1 m.dis\nDATA(BINARY) 3 x.ccf\n", "x.ccf file not found\n", "no basic"},
        {"m.dis", dis_file(kTextSurfaces, "10 x \n"), write + "column coordinates! \n10 x\n",
         "m.dis: line 5: \"x\" in DELR is not a number"},
        {"m.dis", dis_file(kTextSurfaces, "1 1 \n", "5 6q \n"),
         own + "Error reading row coordinates! \n5 6q\n", "m.dis: line 7: \"6q\" in DELC", hdf5},
        {"m.dis", dis_file(tops + kArray), write + "cell elevation! \n1.0 1 1.0 SS\n", "BOTM of layer 1"},
        {"m.dis", dis_file(tops + hdf5_record("no")), write + "cell elevation! \n", "Arrays/no"},
        {"m.dis", dis_file(tops + hdf5_record("top1", "2 0 2 0 2")), own + "Error reading cell elevation! \n",
         "Arrays/top1", hdf5},
        {"m.ba6", "FREE\n" + kArray + "1 q \n0 1 \n-999\nCONSTANT 5\n",
         write + "cell status on line 3!\n1 q\n", "m.ba6: line 3: \"q\" in IBOUND of layer 1"},
        {"m.gpr", "no HDF5", "", "m.gpr: the project cannot be read as HDF5, dataset \"3DGridModule", hdf5}};
    for (const auto& one : cases) {
        for (const ReadingRules& rules : {ReadingRules::prescribed(), ReadingRules::modflow()}) {
            SCOPED_TRACE(one.file + (": " + one.text));
            const SmallModel model(false);
            model.folder.write(one.file, one.text);
            const Conversion result = convert(model, one.project, rules);
            EXPECT_NE(result.said.find(one.said), std::string::npos) << result.said;
            EXPECT_NE(result.errors.find(one.error), std::string::npos) << result.errors;
        }
    }
}

TEST(GmsHdf5Converter, ProjectNamesTheSuperFile) {
    const std::pair<const char*, const char*> cases[] = {{"m.mfs", ""},
                                                         {" .\\sub\\..\\M.MFN", ""},
                                                         {"m.txt", "\"m.txt\" is neither a super file"},
                                                         {"", "p.gpr: no text in dataset"},
                                                         {"runs\\k.mfn", "k.mfs: the super file cannot be"}};
    const SmallModel model(true);
    for (const auto& [name, error] : cases) {
        SCOPED_TRACE(name);
        Hdf5Writer(model.folder.file("p.gpr")).strings(SmallModel::kNameFile, {name});
        const Conversion result = convert(model, "p.gpr", ReadingRules::modflow());
        EXPECT_EQ(result.errors.empty(), *error == '\0') << result.errors;
        EXPECT_NE(result.errors.find(error), std::string::npos) << result.errors;
    }
    // Letters one by one, as texts and as numbers.
    Hdf5Writer(model.folder.file("q.gpr")).strings(SmallModel::kNameFile, {"m", ".", "m", "f", "s"});
    Hdf5Writer(model.folder.file("r.gpr")).ints(SmallModel::kNameFile, {6}, {'m', '.', 'm', 'f', 's', 0});
    for (const char* project : {"q.gpr", "r.gpr"}) EXPECT_EQ(convert(model, project, {}).errors, "");
    // Only the modelling programs' rules take the name file alone.
    std::filesystem::remove(model.folder.file("m.mfs"));
    EXPECT_EQ(convert(model, "m.gpr", ReadingRules::modflow()).errors, "");
    EXPECT_NE(convert(model, "m.gpr", {}).errors.find("m.mfs: the super file cannot be opened"),
              std::string::npos);
}
