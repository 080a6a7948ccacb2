#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

#include "core/block_writer.h"
#include "plxutils/core/VXFile.h"
#include "plxutils/core/VXInputFile.h"
#include "plxutils/core/VXOutputFile.h"
#include "support/host_system.h"
#include "support/temp_folder.h"

namespace {

class Streams : public testing::Test {
protected:
    // The bytes on disk that a call leaves, and what it returned in front of them.
    template <class Write>
    std::string plain(Write write) {
        VXOutputFile out;
        EXPECT_TRUE(out.Open(folder_.file("out.txt").c_str(), false, false));
        const std::string result = std::to_string(write(out)) + ":";
        EXPECT_TRUE(out.Close() && !out.Failed());
        return result + folder_.read("out.txt");
    }

    // Opens a file of these bytes, compressed or not.
    bool open(VXInputFile& in, const std::string& bytes, bool gzip) {
        VXOutputFile out;
        EXPECT_TRUE(out.Open(folder_.file("in.dat").c_str(), gzip, false));
        out.WriteRawBytes(bytes.data(), static_cast<int>(bytes.size()));
        out.Close();
        return in.Open(folder_.file("in.dat").c_str());
    }

    plx::test::TempFolder folder_;
};

TEST_F(Streams, TextLinesEndInCrLf) {
    using Out = VXOutputFile&;
    const std::string x(8192, 'x');
    EXPECT_EQ(plain([](Out o) { return o.WriteLine("abc"); }), "5:abc\r\n");
    EXPECT_EQ(plain([](Out o) { return o.Write("\na\r\n\nb"); }), "9:\r\na\r\r\n\r\nb");
    EXPECT_EQ(plain([](Out o) { return o.Format("%s %d %.1f\n", String("x"), 3, 2.5F); }), "9:x 3 2.5\r\n");
    EXPECT_EQ(plain([](Out o) { return o.WriteRawBytes("\n\r\n", 3) + o.WriteRawBytes("x", -1); }),
              "3:\n\r\n");
    EXPECT_EQ(plain([](Out o) { return o.WriteRawInt(1) && o.WriteRawDouble(1.0); }),
              "1:" + std::string("\1\0\0\0\0\0\0\0\0\0\xf0\x3f", 12));
    EXPECT_EQ(plain([&](Out o) { return o.WriteLine(x.c_str()); }), "8192:" + x)
        << "no room for the line end";
    EXPECT_EQ(plain([&](Out o) { return o.Format(String("%s%s"), x.c_str(), "y"); }), "8192:" + x);
    EXPECT_EQ(plain([&](Out o) { return o.Write((x + "y").c_str()); }), "8193:" + x + "y");
}

TEST_F(Streams, PlainAndGzipReadTheSame) {
    const std::string x(4095, 'x'), y(9000, 'y'), zero(1, '\0');
    const std::string bytes = "one\r\n\nth" + zero + "ree\r\r\nlone\rcr\n" + x + "\r\n" + y + "\r\nlast";
    const std::vector<std::string> lines = {"one", "", "three\r", "lone\rcr", x, y, "last", ""};
    for (const bool gzip : {false, true}) {
        SCOPED_TRACE(gzip);
        VXInputFile in;
        ASSERT_TRUE(open(in, bytes, gzip));
        String line;
        for (const std::string& expected : lines) {
            EXPECT_EQ(in.isEOF(), &expected == &lines.back());
            EXPECT_EQ(in.ReadLine(line, true), static_cast<int>(expected.size()));
            EXPECT_STREQ(line.c_str(), expected.c_str());
        }
        ASSERT_TRUE(open(in, "abc\r\nx", gzip));
        EXPECT_EQ(in.ReadLine(line, false), 4);
        EXPECT_STREQ(line.c_str(), "abc\n");
    }
}

TEST_F(Streams, ReadsTextAndBytes) {
    VXInputFile in;
    char buf[32];
    ASSERT_TRUE(open(in, std::string("a\r\n\r\r\nb\rc\0d", 12), false));
    EXPECT_EQ(in.Read(buf, 0) + in.Read(buf, -5), 0);
    EXPECT_EQ(in.Read(buf, 31), 7);
    EXPECT_STREQ(buf, "a\n\r\nb\rc");
    ASSERT_TRUE(open(in, std::string("\1\0\0\0\0\0\0\0\0\0\xf0\x3f\r\n\7", 15), true));
    int i = 0;
    double d = 0;
    EXPECT_TRUE(in.ReadRawInt(i) && in.ReadRawDouble(d) && i == 1 && d == 1.0);
    EXPECT_TRUE(!in.ReadRawInt(i) && i == 1 && in.isEOF()) << "a short read keeps the value";
}

TEST_F(Streams, AppendingContinuesTheFile) {
    for (const bool gzip : {false, true}) {
        const std::string name = folder_.file(gzip ? "log.gz" : "log");
        VXOutputFile out;
        for (const char* text : {"a", "b"}) {
            ASSERT_TRUE(out.Open(name.c_str(), gzip, true)) << "closes what is open";
            out.WriteLine(text);
        }
        out.Close();
        VXInputFile in;
        char buf[16];
        ASSERT_TRUE(in.Open(name.c_str()));
        EXPECT_EQ(std::string(buf, static_cast<std::size_t>(in.ReadRawBytes(buf, 16))), "a\r\nb\r\n");
    }
}

TEST_F(Streams, ClosedStreamsDoNothing) {
    VXInputFile in;
    VXOutputFile out;
    String line("old");
    char buf[4];
    const std::string missing = folder_.file("missing/x"), folder = folder_.path().string();
    for (const char* name :
         {missing.c_str(), "", static_cast<const char*>(nullptr), folder.c_str(), "q:\\x"}) {
        SCOPED_TRACE(name ? name : "(null)");
        EXPECT_TRUE(!in.Open(name) && in.isEOF());
        EXPECT_EQ(in.ReadLine(line, true) + in.Read(buf, 3) + in.ReadRawBytes(buf, 3), 0);
        EXPECT_FALSE(out.Open(name, false, false) || out.Open(name, true, false));
    }
    EXPECT_EQ(out.Write("a") + out.WriteLine("a") + out.Format("a") + out.WriteRawBytes("a", 1), 0);
    EXPECT_FALSE(out.WriteRawInt(1) || out.WriteRawDouble(1) || out.Close());
    EXPECT_TRUE(open(in, "", true) && in.Close() && !in.Close());
}

TEST_F(Streams, AdoptedStreamGoesOnFromItsPlace) {
    std::FILE* fp = std::fopen(folder_.write("a.txt", "skip this\nrest\n").c_str(), "rb");
    ASSERT_TRUE(fp && std::fseek(fp, 10, SEEK_SET) == 0);
    VXInputFile in;
    String line;
    EXPECT_TRUE(in.Assign(fp, "x") && in.ReadLine(line, true) == 4 && line == "rest");
    EXPECT_TRUE(in.Assign(nullptr, "x") && in.ReadLine(line, true) == 0 && !in.isEOF());
    EXPECT_EQ(std::fclose(fp), 0) << "the caller's stream is still open";
}

TEST_F(Streams, FullDiskShowsInFailed) {
    VXOutputFile out;
    for (const bool gzip : {false, true}) {
        if (!out.Open("c:\\dev\\full", gzip, false)) GTEST_SKIP() << "no full device here";
        out.WriteLine("abc");
        EXPECT_TRUE(out.Close() && out.Failed());
    }
    ASSERT_TRUE(out.Open("c:\\dev\\full", false, false));
    EXPECT_FALSE(out.Failed());
    plx::BlockWriter text(out);
    for (int i = 0; i < 100000; ++i) text.fixed(i);
    EXPECT_FALSE(text.flush() || text.ok());
    EXPECT_EQ(text.bytes(), 0);
}

TEST_F(Streams, AFileGrowsPastFourGiB) {
    if (plx::test::kWindows) GTEST_SKIP() << "holes would be written";
    const std::string path = folder_.write("far.txt", "");
    for (const std::uintmax_t size : {0x7fffffffULL, 0xffffffffULL}) {
        std::error_code error;
        std::filesystem::resize_file(path, size, error);
        if (error) GTEST_SKIP() << "no files with holes";
        VXOutputFile out;
        ASSERT_TRUE(out.Open(path.c_str(), false, true));
        EXPECT_EQ(out.Write("tail\n"), 6);
        EXPECT_TRUE(out.Close() && !out.Failed());
        EXPECT_EQ(std::filesystem::file_size(path), size + 6);
        EXPECT_TRUE(VXFile(path.c_str()).FileExists());
    }
}

TEST_F(Streams, BlocksAreTheBytesOfSingleWrites) {
    const std::string wide(400000, 'w');
    const std::string blocks = plain([&wide](VXOutputFile& file) {
        plx::BlockWriter out(file);
        for (int i = 0; i < 40000; ++i) out.text("a\n\nb ").fixed(i / 7.0).put(' ').integer(-i).put('\n');
        out.text(wide).text("").text("\n");
        return true;
    });
    const std::string single = plain([&wide](VXOutputFile& file) {
        for (int i = 0; i < 40000; ++i) file.Format("a\n\nb %lf %d\n", i / 7.0, -i);
        return file.Write((wide + "\n").c_str()) > 0;
    });
    EXPECT_TRUE(blocks == single);
}

}  // namespace
