#include "formats/text_source.h"

#include <gtest/gtest.h>

#include "support/result_files.h"

using namespace plx;

namespace {

constexpr std::size_t kBlock = 64 * 1024;

/// Every line with a "|" behind it.
std::string lines_of(TextSource& in) {
    std::string text;
    for (std::string line; in.read_line(line);) text += line + "|";
    return text;
}

TEST(TextSource, EveryKindOfLineEndEndsALine) {
    const std::vector<std::tuple<std::string, std::string, std::string>> cases = {
        {"a\nb\n", "a\nb\n", "a|b|"}, {"a\r\nb", "a\nb", "a|b|"},      {"a\rb\r", "a\rb\r", "a|b|"},
        {"\r\n\r\n", "\n\n", "||"},   {"a\r\r\nb", "a\r\nb", "a||b|"}, {"", "", ""},
    };
    for (const auto& [text, characters, lines] : cases) {
        SCOPED_TRACE(text);
        TextSource in = TextSource::of_text(text, "x"), again = TextSource::of_text(text, "x");
        std::string found;
        for (int next = in.peek(); next != TextSource::kEnd; next = in.peek()) {
            EXPECT_EQ(in.get(), next);
            found += static_cast<char>(next);
        }
        EXPECT_EQ(found, characters);
        EXPECT_EQ(lines_of(again), lines);
    }
}

TEST(TextSource, LinesCrossTheBlocks) {
    for (const std::size_t length : {kBlock - 2, kBlock - 1, kBlock, 3 * kBlock}) {
        SCOPED_TRACE(length);
        const std::string head(length, 'a');
        const test::OpenFile file = test::open_bytes(head + "\r\nb\n\r\nlast");
        TextSource in(file.get(), "in.txt");
        EXPECT_EQ(in.peek_line(), head.substr(0, kBlock));
        EXPECT_EQ(lines_of(in), head + "|b||last|");
        EXPECT_EQ(in.line(), 4);
    }
}

TEST(TextSource, RemainingCountsWhatIsNotHandedOut) {
    const test::OpenFile file = test::open_bytes(std::string(kBlock, 'x') + "\r\n123\r\n45");
    TextSource in(file.get(), "in.txt");
    EXPECT_EQ(in.remaining(), static_cast<std::int64_t>(kBlock + 9));
    std::string line;
    in.read_line(line);
    EXPECT_EQ(in.remaining(), 7);
    EXPECT_EQ(in.place(), "in.txt: line 2");
    char bytes[10];
    ASSERT_EQ(in.read_bytes(bytes, 10), 7u);
    EXPECT_EQ(std::string(bytes, 7), "123\r\n45");
    EXPECT_EQ(in.remaining(), 0);
}

}  // namespace
