#include <gtest/gtest.h>

#include "formats/hdf5_reader.h"
#include "gms/small_project.h"
#include "support/hdf5_file.h"

namespace {

using namespace plx::test;

class Hdf5Project : public testing::Test {
protected:
    Hdf5Project() { renew(); }
    void renew() {
        converter.reset(GMStoPLX_new());
        GMStoPLX_Set_Destination(GMStoPLX_Set_Project(converter.get(), path.c_str()),
                                 folder.path().string().c_str());
    }
    /// Converts and gives back the messages behind the path; only those with `text` when there is one.
    Lines convert(const std::string& text = "") {
        MessageLog::lines().clear();
        GMStoPLX_parse_project(converter.get());
        EXPECT_EQ(converter->currentGroup, -1);
        EXPECT_EQ(converter->iniGroup, -1);
        Lines lines = MessageLog::take();
        lines.erase(lines.begin(), lines.begin() + 2);
        std::erase_if(lines, [&](const std::string& line) { return line.find(text) == std::string::npos; });
        return lines;
    }

    TempFolder folder;
    const std::string path = folder.file("p.gpr");
    MessageLog log;
    Converter converter;
};

}  // namespace

TEST_F(Hdf5Project, BuildersRunInTheOrderOfGroupNames) {
    {
        Hdf5Writer file(path);
        for (const char* name : {"TINModule/b", "TINModule/a", "BoreholeModule", "2DScatterModule/set"})
            file.group(name);
        for (const char* name : {"TINModule/c", "2DGridModule"}) file.doubles(name, {1}, {0});
        for (const char* name : {"TINModule/dangling", "Dangling"}) file.soft_link(name, "/nowhere");
    }
    const std::string tin = "S:Converting TIN data into GMF and PLX Field files.\n";
    EXPECT_EQ(convert("Converting "), (Lines{"S:Converting 2D Scatter Point data to GMF files.\n\n",
                                             "S:Converting Bore data to PGF files.\n\n", tin, tin}));
    EXPECT_EQ(convert("E:"),
              (Lines{"E:2D Scatter Point : [/2DScatterModule/set] PROPERTIES/Name: no readable text\n",
                     "E:Bore : [/BoreholeModule] X Locations: no readable numbers\n",
                     "E:TIN : [/TINModule/a] PROPERTIES/Name: no readable text\n",
                     "E:TIN : [/TINModule/b] PROPERTIES/Name: no readable text\n"}));
    GMStoPLX_Object_Types(converter.get(), 1, 1, 1, 1, 1, 0, 1, 1, 0);
    EXPECT_EQ(convert("Converting "), (Lines{tin, tin}));
}

TEST_F(Hdf5Project, SettingsEndTheSearchForMaterials) {
    for (const bool with_settings : {true, false}) {
        {
            Hdf5Writer file(path);
            if (with_settings) file.group("Ini");
            file.ints("Material/Id", {3}, {0, 4, 7});
            file.strings("Material/Name", {"none", "sand", "clay"});
        }
        renew();
        EXPECT_EQ(convert(), Lines{"S:New file type"});
        ASSERT_EQ(converter->materialIds.GetSize(), with_settings ? 0 : 2);
        if (!with_settings) {
            EXPECT_EQ(converter->materialIds[1], 7);
        }
    }
}

TEST_F(Hdf5Project, SolutionsNeedTheirTypesAndModelFiles) {
    for (const auto& [types, files] : {std::pair(false, true), {true, false}, {true, true}}) {
        {
            Hdf5Writer file(path);
            file.group("Solutions");
            if (types) file.strings("Solutions/Solution Type", {"MODFSOL", "OTHER", "MODFSOL"}, 7);
            if (files) file.strings("Model Files/MODFLOW/Name File", {"m.nam"});
        }
        EXPECT_EQ(convert("Dataset \"Solutions/Solution Type\" of ").size(), types ? 0U : 1U);
        EXPECT_EQ(convert("S:" + std::string(60, '_')).size(), types && files ? 2U : 0U);
    }
}

TEST_F(Hdf5Project, UnreadableProjectsEndSilently) {
    EXPECT_EQ(convert(), Lines{"S:New file type"}) << "missing";
    EXPECT_TRUE(converter->hdf5Project);
    { Hdf5Writer file(path); }
    folder.write("p.gpr", folder.read("p.gpr").substr(0, 60));
    EXPECT_EQ(convert(), Lines{"S:New file type"}) << "cut short";
    folder.write("p.gpr", "");
    EXPECT_EQ(convert()[0], "S:Old file type");
    EXPECT_FALSE(converter->hdf5Project);
}

TEST_F(Hdf5Project, SettingsAreLookedUpFromTheirSectionOn) {
    {
        Hdf5Writer file(path);
        file.strings("Ini/Names", {"Length Units", "Units", "Length Units", "Other", "Key", "Last"});
        file.strings("Ini/Values", {"m", "", "ft", "", "later"});
    }
    EXPECT_EQ(converter->ReadIniValue("Units", "Length Units"), "");
    EXPECT_EQ(MessageLog::take(), Lines{"S:Section Units, Key Length Units, not found."});
    const plx::Hdf5Handle file = plx::open_hdf5_file(path.c_str());
    const plx::Hdf5Handle settings = plx::open_hdf5_group(file.id(), "Ini");
    converter->iniGroup = settings.id();
    const std::tuple<const char*, const char*, const char*, std::string> cases[] = {
        {"Units", "Length Units", "ft", ""},
        {"Units", "Key", "later", ""},
        {"Units", "Last", "", "S:Unmatch ini file found for Section Units, Key Last"},
        {"Units", "Units", "", ""},
        {"units", "Length Units", "", "S:Section units, Key Length Units, not found."},
        {"Other", "Length Units", "", "S:Section Other, Key Length Units, not found."}};
    for (const auto& [section, key, value, complaint] : cases) {
        EXPECT_STREQ(converter->ReadIniValue(section, key).c_str(), value);
        EXPECT_EQ(MessageLog::take(), complaint.empty() ? Lines{} : Lines{complaint});
    }
}
