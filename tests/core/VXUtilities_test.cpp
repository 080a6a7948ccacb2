#include "plxutils/core/VXUtilities.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include "support/temp_folder.h"

namespace {

using Words = std::vector<std::string>;

Words words_of(const char* delims, const std::string& text, int max_words, int word_len) {
    std::vector<char> out(static_cast<std::size_t>(max_words * word_len), '?');
    const int count = delims ? StrToWordsDelim(delims, text.c_str(), out.data(), max_words, word_len)
                             : StrToWords(text.c_str(), out.data(), max_words, word_len);
    Words words;
    for (int i = 0; i < count; ++i) words.emplace_back(&out[static_cast<std::size_t>(i * word_len)]);
    return words;
}

TEST(StrToWords, SplitsWithQuotesAndLimits) {
    // clang-format off
    const std::tuple<const char*, const char*, Words> cases[] = {
        {nullptr, " a, b\t\tc\r\n", {"a", "b", "c"}}, {nullptr, "", {}}, {nullptr, " ,\t", {}},
        {nullptr, "\"a b\" c d", {"a b", " c d"}}, {nullptr, "\"\"x y\" z", {"x y", " z"}},
        {nullptr, "x\"y z\"", {"x\"y", "z\""}}, {nullptr, "\"to end", {"to end"}},
        {nullptr, "abcdefghij k", {"abcdefg", "k"}}, {nullptr, "1 2 3 4 5", {"1", "2", "3", "4"}},
        {";", ";;a b;\"c\"", {"a b", "c"}}, {";", ";\"a;b\"", {"\"a", "b\""}}, {";", ";", {}}, {"", "a b", {"a b"}}};
    // clang-format on
    for (const auto& [delims, text, expected] : cases)
        EXPECT_EQ(words_of(delims, text, 4, 8), expected) << text;
}

TEST(StrToWords, CountHasEightBits) {
    std::string text;
    for (int i = 0; i < 255; ++i) text += std::to_string(i) + " ";
    EXPECT_EQ(words_of(nullptr, text, 256, 4).size(), 255u);
    EXPECT_EQ(words_of(nullptr, text + "255", 256, 4).size(), 0u);
    EXPECT_EQ(words_of(nullptr, text + "255 256", 256, 4), Words{"256"});
}

TEST(StrToWords, UnusableArgumentsGiveNothing) {
    char out[8] = "kept";
    EXPECT_EQ(StrToWords(nullptr, out, 1, 8) + StrToWords("a", nullptr, 1, 8) + StrToWords("a", out, 0, 8) +
                  StrToWordsDelim(nullptr, "a", out, 1, -1),
              0);
    EXPECT_STREQ(out, "kept");
}

TEST(CaseChange, TouchesAsciiLettersOnly) {
    char text[] = "aZ[`{@ \xE4";
    EXPECT_EQ(l2u(text) + u2l(text), 16);
    EXPECT_STREQ(text, "az[`{@ \xE4");
}

TEST(SetExtension, ReadsTheExtension) {
    // clang-format off
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"FILE.TXT", "txt"}, {"c:\\a.b\\file", ""}, {"/a.b/file", ""}, {"x.tar.GZ", "gz"}, {"x.", ""}, {"", ""},
        {std::string(1000, 'a') + "." + std::string(500, 'e'), std::string(22, 'e')},
        {std::string(1020, 'n') + ".abc", "ab"}, {std::string(1023, 'n') + ".abc", ""}};
    // clang-format on
    for (const auto& [name, expected] : cases) {
        char ext[1024] = "before";
        EXPECT_EQ(SetExtension(name.c_str(), ext), expected.empty() ? 0 : 1) << name;
        EXPECT_EQ(ext, expected) << name;
    }
}

TEST(BackupFile, KeepsElevenGenerations) {
    const plx::test::TempFolder folder;
    const std::string name = folder.file("Site.tfw");
    for (int i = 1; i <= 13; ++i) {
        folder.write("Site.tfw", std::to_string(i));
        EXPECT_NE(BackupFile(name.c_str()), 0);
        EXPECT_FALSE(FileExists(name.c_str()));
        EXPECT_EQ(folder.read("Site.tfw.backup"), std::to_string(i));
    }
    EXPECT_EQ(folder.read("Site.tfw.backup10"), "3") << "the oldest two were overwritten";
    EXPECT_FALSE(FileExists((name + ".backup11").c_str()));
    EXPECT_EQ(BackupFile(name.c_str()), 0);
    EXPECT_FALSE(FileExists((name + ".backup").c_str())) << "older ones make room even with nothing to move";
}

TEST(TextFiles, WriteTranslatesOnlyInTextMode) {
    const plx::test::TempFolder folder;
    const std::string name = folder.file("Out.txt");
    WriteStringToFile("a\nb\r\n", name.c_str(), true);
    EXPECT_EQ(folder.read("Out.txt"), "a\r\nb\r\r\n");
    WriteStringToFile("a\nb", name.c_str(), false);
    EXPECT_EQ(folder.read("Out.txt"), "a\nb");
    EXPECT_EQ(ReadStringFromFile(folder.path().string().c_str()).GetLength(), 0) << "a directory has no text";
}

TEST(TextFiles, ReadDecompressesAndKeepsEveryByte) {
    const plx::test::TempFolder folder;
    const std::string bytes = "line\r\n" + std::string(1, '\0') + std::string(20000, 'x') + "e";
    for (const std::size_t size : {0U, 1U, 8191U, 8192U, 8193U, 16384U, 20008U}) {
        const std::string part = bytes.substr(bytes.size() - size);
        folder.write("Plain.txt", part);
        const gzFile out = gzopen(folder.file("packed.gz").c_str(), "wb9");
        gzwrite(out, part.data(), static_cast<unsigned>(size));
        gzclose(out);
        for (const char* name : {"plain.txt", "packed.gz"}) {
            const String text = ReadStringFromFile(folder.file(name).c_str());
            const std::string_view read(text.c_str(), static_cast<std::size_t>(text.GetLength()));
            EXPECT_EQ(read, part) << name << " of " << size;
        }
    }
}

TEST(TextLines, StripTakesTheFirstLine) {
    String text("\none\ntwo");
    EXPECT_TRUE(StripLineFromString(text, false) == "");
    EXPECT_TRUE(StripLineFromString(text, true) == "one\n");
    EXPECT_TRUE(StripLineFromString(text, true) == "two");
    EXPECT_TRUE(text == "");
}

TEST(TextLines, CommentsAndBlankLinesGo) {
    String text("# c\n\n1 2"), with_blanks("# c\n \t\n 1 2 \r\n  # d\nx#y");
    RemoveCommentLinesFromString(text, false);
    EXPECT_STREQ(text.c_str(), "1 2\n");
    RemoveCommentLinesFromString(with_blanks, true);
    EXPECT_STREQ(with_blanks.c_str(), "\n1 2\nx#y\n");
}

}  // namespace
