#include "core/file_tokens.h"

#include <gtest/gtest.h>

#include <map>

#include "core/file_tags.h"
#include "core/installation.h"
#include "plxutils/core/VXUtilities.h"
#include "support/capture_stdout.h"
#include "support/temp_folder.h"

using namespace plx;

namespace {

using Cases = std::vector<std::pair<std::string, std::string>>;

std::optional<std::string> table_value(std::string_view token) {
    // clang-format off
    static const std::map<std::string, std::string, std::less<>> values = {
        {"$A>", "alpha"}, {"$DEEP>", "<$A>/$A>>"}, {"$X>", "$Y>"}, {"$Y>", "$X>"}, {"$GROW>", "$GROW>$GROW>$GROW>"}};
    // clang-format on
    if (token.starts_with("$STUCK")) return std::nullopt;
    const auto found = values.find(token);
    return found == values.end() ? "" : found->second;
}

TEST(ExpandTokens, ReplacesUntilNoneIsLeft) {
    // clang-format off
    const Cases cases = {
        {"$A>/x/$A>", "alpha/x/alpha"}, {"$UNKNOWN>/x", "/x"}, {"$DEEP>", "<alpha/alpha>"}, {"a>b$A>", "a>b$A>"},
        {"no $ token", "no $ token"}, {"$A>$STUCK>$UNKNOWN>", "alpha$STUCK>$UNKNOWN>"}, {"1$X>2", "1$X>2"}};
    // clang-format on
    for (const auto& [text, expected] : cases) EXPECT_EQ(expand_tokens(text, table_value), expected) << text;
    EXPECT_LT(expand_tokens("$GROW>", table_value).size(), 4 * 65536u);
}

TEST(FixFilenameString, ExpandsTokensOfTheProcess) {
    SetFileTag("$Plx_Test>", "d:\\before");
    SetFileTag("$Plx_Test>", "c:/tagged");
    const std::string root = installation_root();
    // clang-format off
    const Cases cases = {
        {"$PLX_TEST>/x", "c:\\tagged\\x"}, {"$xp_path<0>/data", root + "\\data"}, {"$XP_PATH>/data", "\\data"},
        {"$XP_PATH<01>/data", root + "\\data"}, {" a/b ", " a\\b "},
        {"$PLX_TEST>/$XP_PATH<x>/$NONE>", "c:\\tagged\\$XP_PATH<x>\\$NONE>"}};
    // clang-format on
    for (const auto& [name, expected] : cases) {
        char buffer[1024] = "";
        name.copy(buffer, sizeof buffer - 1);
        FixFilenameString(buffer);
        EXPECT_EQ(buffer, expected) << name;
    }
    EXPECT_EQ(MakeFilename(std::string(9000, 'x').c_str()).GetLength(), 1023);
}

TEST(InstallationRoot, CutsTheProgramAsItWasTyped) {
    // clang-format off
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"c:\\plx\\bin\\pc1064\\plx.exe -x", "c:\\plx\\bin\\pc1064\\plx.exe", "c:\\plx"},
        {"\"c:\\my plx\\pc1064\\plx.exe\" a", "c:\\my plx\\pc1064\\plx.exe", "c:\\my plx"},
        {"plx.exe\targ", "c:\\plx\\bin\\pc1064\\plx.exe", "plx.exe"}, {"", "", ""},
        {"c:\\plx\\BIN\\pc1064\\plx.exe", "c:\\plx\\BIN\\pc1064\\plx.exe", "c:\\plx\\BIN"},
        {"bin\\123456\\p", "bin\\123456\\p", ""}, {"c:\\a\\p.exe", "c:\\a\\p.exe", ""}};
    // clang-format on
    for (const auto& [line, full, expected] : cases)
        EXPECT_EQ(installation_root(line, full), expected) << line;
}

TEST(HostPaths, ListIsReversedAndItsFirstEntryServesForMissingOnes) {
    platform::HostRuntime host;
    EXPECT_EQ(host_paths(host, "/a;c:\\b b;;/c;"), (std::vector<std::string>{"/c", "c:\\b b", "/a"}));
    host.OMget_num_paths = [] { return 3; };
    host.OMget_path_index = [](int i) -> const char* { return i == 0 ? "zero" : i == 1 ? nullptr : "two"; };
    const std::vector<std::string> paths = host_paths(host, "/a");
    EXPECT_EQ(paths, (std::vector<std::string>{"two", "", "zero"}));
    EXPECT_EQ(host_path(paths, 2), "zero");
    EXPECT_EQ(host_path(paths, 3), "two");
    EXPECT_EQ(host_path({}, 1), "");
}

TEST(FileTags, FileEndsAtALineWithOneWordAndTheListGrows) {
    const test::TempFolder folder;
    const std::string name =
        folder.write("tags.txt",
                     "# tags\n\n$ONE>, c:\\one  ignored\n,\n$two>\t\"c:\\my data\"  # here\n"
                     "$ONE> second\nend\n$LATE> late\n");
    FileTags tags;
    EXPECT_EQ(test::capture_stdout([&] { tags.load_once(name.c_str()); }),
              "ERROR: Project Tag file (file_tags.txt) has an error on line 4\n");
    EXPECT_EQ(tags.find("$LATE>"), nullptr);
    EXPECT_STREQ(tags.find("$TWO>")->c_str(), "c:\\my data");
    tags.set("$one>", "differs in case: takes the entry of the bad line");
    EXPECT_STREQ(tags.find("$one>")->c_str(), "c:\\one");
    tags.set("$ONE>", "new");
    EXPECT_STREQ(tags.find("$one>")->c_str(), "new");
    for (int i = 0; i < 50; ++i)
        tags.set(("$T" + std::to_string(i) + ">").c_str(), std::to_string(i).c_str());
    EXPECT_STREQ(tags.find("$t49>")->c_str(), "49");
}

}  // namespace
