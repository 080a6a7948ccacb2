#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "gms/message_list.h"
#include "support/hdf5_file.h"
#include "support/temp_folder.h"

namespace {

using plx::test::Hdf5Writer;
using plx::test::MessageList;
using Lines = MessageList::Lines;

const std::string kScatter = "S:Converting 2D Scatter Point data to GMF files.\n\n";
const std::string kTin = "S:Converting TIN data into GMF and PLX Field files.\n";
const std::string kBore = "S:Converting Bore data to PGF files.\n\n";

class Hdf5Project : public testing::Test {
protected:
    Hdf5Project() {
        GMStoPLX_Set_Project(converter.get(), path.c_str());
        GMStoPLX_Set_Destination(converter.get(), folder.path().c_str());
    }
    /// Converts and gives back the messages behind the path.
    Lines convert() {
        MessageList::lines().clear();
        GMStoPLX_parse_project(converter.get());
        Lines lines = MessageList::take();
        EXPECT_GE(lines.size(), 3U);
        lines.erase(lines.begin(), lines.begin() + 2);
        EXPECT_EQ(converter->currentGroup, -1);
        EXPECT_EQ(converter->iniGroup, -1);
        return lines;
    }
    Lines announcements() {
        Lines found;
        for (const std::string& line : convert()) {
            if (line.find("Converting ") != std::string::npos) found.push_back(line);
        }
        return found;
    }

    plx::test::TempFolder folder;
    const std::string path = folder.file("p.gpr");
    MessageList log;
    plx::test::Converter converter{GMStoPLX_new()};
};

void add_tin(Hdf5Writer& file, const std::string& group, const std::string& name) {
    file.strings(group + "/PROPERTIES/Name", {name});
    file.doubles(group + "/Nodes/NodeLocs", {3, 3}, {0, 0, 1, 1, 0, 2, 0, 1, 3});
    file.ints(group + "/Elements/Nodeids", {1, 3}, {1, 2, 3});
    file.group(group + "/Datasets");
}

}  // namespace

TEST_F(Hdf5Project, BuildersRunInTheOrderOfGroupNames) {
    {
        Hdf5Writer file(path);
        file.group("TINModule/b");
        file.group("TINModule/a");
        file.doubles("TINModule/c", {1}, {0});
        file.group("BoreholeModule");
        file.group("2DScatterModule/set");
        file.soft_link("TINModule/dangling", "/nowhere");
        file.soft_link("Dangling", "/nowhere");
        file.doubles("2DGridModule", {1}, {0});
    }
    EXPECT_EQ(announcements(), (Lines{kScatter, kBore, kTin, kTin}));
    GMStoPLX_Object_Types(converter.get(), 1, 1, 1, 1, 1, 0, 1, 1, 0);
    EXPECT_EQ(announcements(), (Lines{kTin, kTin}));
}

TEST_F(Hdf5Project, SettingsEndTheSearchForMaterials) {
    for (const bool with_settings : {true, false}) {
        SCOPED_TRACE(with_settings);
        {
            Hdf5Writer file(path);
            if (with_settings) file.group("Ini");
            file.ints("Material/Id", {3}, {0, 4, 7});
            file.strings("Material/Name", {"none", "sand", "clay"});
        }
        converter.reset(GMStoPLX_new());
        GMStoPLX_Set_Destination(GMStoPLX_Set_Project(converter.get(), path.c_str()), folder.path().c_str());
        EXPECT_EQ(convert(), Lines{"S:New file type"});
        EXPECT_EQ(converter->materialIds.GetSize(), with_settings ? 0 : 2);
        if (!with_settings) {
            EXPECT_EQ(converter->materialIds[1], 7);
            EXPECT_EQ(converter->materialNames[0], "sand");
        }
    }
}

TEST_F(Hdf5Project, SolutionsNeedTheirTypesAndModelFiles) {
    const struct {
        const char* what;
        bool types, files;
        std::size_t errors;
    } cases[] = {{"no types", false, true, 1}, {"no files", true, false, 0}, {"both", true, true, 0}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        {
            Hdf5Writer file(path);
            file.group("Solutions");
            if (c.types) file.strings("Solutions/Solution Type", {"MODFSOL", "OTHER", "MODFSOL"}, 7);
            if (c.files) file.strings("Model Files/MODFLOW/Name File", {"m.nam"});
        }
        const Lines lines = convert();
        EXPECT_EQ(MessageList::errors().size(), 0U) << "taken already";
        const auto errors =
            std::count_if(lines.begin(), lines.end(), [](auto& line) { return line[0] == 'E'; });
        EXPECT_EQ(static_cast<std::size_t>(errors), c.errors);
        const auto runs = std::count(lines.begin(), lines.end(), "S:" + std::string(60, '_') + "\n");
        EXPECT_EQ(runs, c.types && c.files ? 2 : 0);
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
        add_tin(file, "TINModule/one", "hill");
        file.strings("Ini/Names", {"Length Units", "Units", "Length Units", "Other", "Key", "Last"});
        file.strings("Ini/Values", {"m", "", "ft", "", "later"});
    }
    EXPECT_EQ(converter->ReadIniValue("Units", "Length Units"), "");
    EXPECT_EQ(MessageList::take(), Lines{"S:Section Units, Key Length Units, not found."});
    // The hook looks things up while the project is open.
    static GMStoPLX* running = nullptr;
    static Lines answers;
    running = converter.get();
    answers.clear();
    GMS_SetStatusFunc([](const char* message) {
        const bool own = running->iniGroup < 0 || std::string(message).find("Converting TIN") != 0;
        if (own) return MessageList::lines().push_back(message);
        const std::pair<const char*, const char*> keys[] = {
            {"Units", "Length Units"}, {"Units", "Key"},          {"Units", "Last"},
            {"Units", "Units"},        {"units", "Length Units"}, {"Other", "Length Units"}};
        for (const auto& [section, key] : keys)
            answers.push_back(running->ReadIniValue(section, key).c_str());
    });
    const Lines lines = convert();
    EXPECT_EQ(answers, (Lines{"ft", "later", "", "", "", ""}));
    const auto told = [&lines](const char* text) { return std::count(lines.begin(), lines.end(), text); };
    EXPECT_EQ(told("Unmatch ini file found for Section Units, Key Last"), 1);
    EXPECT_EQ(told("Section units, Key Length Units, not found."), 1);
    EXPECT_EQ(told("Section Other, Key Length Units, not found."), 1);
}
