#include "plxutils/core/VXString.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <type_traits>
#include <vector>

namespace {

std::string text(const String& s) { return {s.c_str(), static_cast<std::size_t>(s.length())}; }

TEST(String, PartsAreClamped) {
    const String abc("abc");
    const std::tuple<int, int, const char*, const char*> cases[] = {
        {5, 2, "", "abc"},       {1, 100, "bc", "a"},      {-1, 2, "ab", "bc"},
        {0, 0, "", "abc"},       {1, 1, "b", "ac"},        {INT_MIN, 5, "abc", "abc"},
        {1, INT_MAX, "bc", "a"}, {3, 1, "", "abc"},        {INT_MAX, INT_MAX, "", "abc"},
        {1, -1, "", "aabc"},     {-1, INT_MIN, "", "abc"}, {-5, 100, "abc", ""}};
    for (const auto& [start, count, mid, erased] : cases) {
        EXPECT_EQ(text(abc.Mid(start, count)), mid) << start << "," << count;
        EXPECT_EQ(text(String(abc).erase(start, count)), erased) << start << "," << count;
    }
    const std::vector<std::pair<int, const char*>> ends = {
        {INT_MIN, "|"}, {-3, "|"}, {0, "|"}, {2, "ab|bc"}, {10, "abc|abc"}};
    for (const auto& [n, expected] : ends) EXPECT_EQ(text(abc.Left(n) + "|" + abc.Right(n)), expected) << n;
}

TEST(String, FindsFromAStart) {
    const String s("abcabc");
    EXPECT_TRUE(s.Find("b", 0) == 1 && s.Find("b", 2) == 4 && s.Find(String("bc"), 2) == 4);
    EXPECT_TRUE(s.Find("b", 5) == -1 && s.Find("b", 7) == -1 && s.Find("b", -1) == -1);
    EXPECT_TRUE(s.Find("", 6) == 6 && s.Find("", 7) == -1 && s.Find(String(), 3) == 3);
    EXPECT_TRUE(s.ReverseFind('a') == 3 && s.ReverseFind('x') == String::npos);
}

TEST(String, ChangesMayUseItsOwnText) {
    const struct {
        const char *from, *before, *after, *expected;
    } cases[] = {{"a\nb\n", "\n", "\r\n", "a\r\nb\r\n"}, {"aaa", "aa", "a", "aa"},
                 {"aXbX", "X", "XX", "aXXbXX"},          {"abc", "", "x", "abc"},
                 {"abc", nullptr, "x", "abc"},           {"abcb", "b", nullptr, "ac"}};
    for (const auto& c : cases)
        EXPECT_EQ(text(String(c.from).Replace(c.before, c.after)), c.expected) << c.from;
    String own("abab");
    EXPECT_EQ(text(own.Replace("b", own.c_str())), "aababaabab");
    own.Format("%s!", own.Left(1).c_str());
    own.Format("%s%10000s", own.c_str(), own.c_str());
    EXPECT_EQ(text(own), "a!" + std::string(8190, ' ')) << "cut to 8192 bytes";
}

TEST(String, NullAndZeroAreEmpty) {
    const char* null = nullptr;
    String s("x");
    s.Format(null, 1);
    s += null;
    s += '\0';
    s.Trim(null);
    EXPECT_EQ(text(s + null + String('\0') + String(null)), "");
    EXPECT_TRUE(s == null && null == s && !(s != ""));
    EXPECT_EQ(text(String("abc").SpanExcluding(null)), "abc");
}

TEST(String, BytesOutsideReadAsZero) {
    String s("abc");
    for (const int i : {-1, 3, 4, INT_MAX, INT_MIN}) {
        EXPECT_EQ(s[i], '\0') << i;
        s.SetAt(i, 'x');
    }
    EXPECT_EQ(text(s), "abc");
    s.SetAt(1, '\0');
    EXPECT_TRUE(s != "a" && (s + "b").length() == 4) << "texts compare and join by length";
}

TEST(String, AssignmentReturnsACopy) {
    static_assert(std::is_same_v<decltype(std::declval<String&>() = "a"), String>);
    String a, b(" q\t");
    b.Trim("\t ");
    (a = b) = "z";
    a = *&a;
    EXPECT_EQ(text("<" + a + '>'), "<q>");
    EXPECT_EQ(text(String("Data/x.txt").GetFilename()), "Data\\x.txt");
    EXPECT_EQ(text(String(std::string(3000, 'a').c_str()).GetFilename()), std::string(1023, 'a'));
}

}  // namespace
