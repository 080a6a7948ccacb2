#include "formats/hdf5_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <hdf5.h>
#include <tuple>

#include "support/hdf5_file.h"
#include "support/temp_folder.h"

using namespace plx;

namespace {

using test::Hdf5Writer;
using test::NumberType;
using test::Padding;
using testing::ElementsAre;
using testing::IsEmpty;
using Shape = std::vector<std::size_t>;

class Hdf5Reader : public testing::Test {
protected:
    /// Opens what `write` puts into a file.
    template <class Write>
    Hdf5Handle made(Write write) {
        {
            Hdf5Writer writer(path_);
            write(writer);
        }
        return open_hdf5_file(path_.c_str());
    }

    test::TempFolder folder_;
    const std::string path_ = folder_.file("made.h5");
};

TEST_F(Hdf5Reader, NumbersOfEveryTypeConvert) {
    constexpr int kMaxInt = 2147483647;
    const std::tuple<const char*, NumberType, std::vector<double>, std::vector<int>> cases[] = {
        {"int8", NumberType::kInt8, {-5, 127}, {-5, 127}},
        {"uint32", NumberType::kUint32, {4294967295.0}, {kMaxInt}},
        {"big-endian", NumberType::kInt32Big, {1, -70000}, {1, -70000}},
        {"int64", NumberType::kInt64, {1099511627776.0, -1e18}, {kMaxInt, -kMaxInt - 1}},
        {"float", NumberType::kFloat, {1.5, 2.25}, {1, 2}},
        {"double", NumberType::kDouble, {3.9, -3.9, 1e20}, {3, -3, kMaxInt}},
        {"enum", NumberType::kEnum, {0, 1, 7}, {0, 1, 7}}};
    const Hdf5Handle file = made([&](Hdf5Writer& out) {
        for (const auto& [name, type, values, whole] : cases)
            out.numbers(name, type, {values.size()}, values);
    });
    for (const auto& [name, type, values, whole] : cases) {
        SCOPED_TRACE(name);
        Hdf5Array<double> doubles;
        Hdf5Array<int> ints;
        ASSERT_TRUE(read_hdf5(file.id(), name, doubles) && read_hdf5(file.id(), name, ints));
        EXPECT_EQ(doubles.values, values);
        EXPECT_EQ(ints.values, whole);
        EXPECT_EQ(ints.shape, Shape{whole.size()});
    }
}

TEST_F(Hdf5Reader, ShapesOfEveryRank) {
    const Hdf5Handle file = made([](Hdf5Writer& out) {
        out.doubles("single", {}, {7});
        out.doubles("rank3", {2, 1, 3}, {1, 2, 3, 4, 5, 6});
        out.doubles("no_rows", {0, 3}, {});
        out.nothing("nothing");
        out.unwritten("zeros", 3);
    });
    const std::vector<std::tuple<const char*, Shape, std::vector<double>>> cases = {
        {"single", {}, {7}},       {"rank3", {2, 1, 3}, {1, 2, 3, 4, 5, 6}},
        {"no_rows", {0, 3}, {}},   {"nothing", {0}, {}},
        {"zeros", {3}, {0, 0, 0}},
    };
    for (const auto& [name, shape, values] : cases) {
        Hdf5Array<double> read;
        EXPECT_TRUE(read_hdf5(file.id(), name, read)) << name;
        EXPECT_EQ(read.shape, shape) << name;
        EXPECT_EQ(read.values, values) << name;
    }
}

TEST_F(Hdf5Reader, TextsOfEveryPadding) {
    const std::vector<std::string> texts = {"abc", "abcdefgh", "", "a b"};
    const Hdf5Handle file = made([&](Hdf5Writer& out) {
        out.strings("terminated", texts, 9, Padding::kNullTerminated);
        out.strings("null_padded", texts, 8, Padding::kNullPadded);
        out.strings("space_padded", texts, 8, Padding::kSpacePadded);
        out.variable_strings("variable", texts);
    });
    for (const char* name : {"terminated", "null_padded", "space_padded", "variable"}) {
        SCOPED_TRACE(name);
        Hdf5Array<std::string> read;
        ASSERT_TRUE(read_hdf5(file.id(), name, read));
        EXPECT_EQ(read.values, texts);
        EXPECT_EQ(read.shape, Shape{4});
    }
}

TEST_F(Hdf5Reader, WhatCannotBeReadLeavesNothing) {
    const Hdf5Handle file = made([](Hdf5Writer& out) {
        out.strings("text", {"1"});
        out.doubles("number", {1}, {1});
        out.numbers("opaque", NumberType::kOpaque, {1}, {1});
        out.group("group");
        out.soft_link("dangling", "/nowhere");
        out.soft_link("circle", "/circle");
        out.chunked_huge("huge", std::uint64_t{1} << 33);
        out.chunked_huge("overflow", std::uint64_t{1} << 61);
        out.unwritten("unwritten", std::uint64_t{1} << 33);
    });
    for (const char* name : {"missing", "", "opaque", "group", "dangling", "circle", "huge", "overflow",
                             "unwritten", "group/below"}) {
        SCOPED_TRACE(name);
        Hdf5Array<double> doubles{{1}, {1.0}};
        Hdf5Array<int> ints{{1}, {1}};
        Hdf5Array<std::string> texts{{1}, {"1"}};
        EXPECT_FALSE(read_hdf5(file.id(), name, doubles) || read_hdf5(file.id(), name, ints) ||
                     read_hdf5(file.id(), name, texts));
        EXPECT_TRUE(doubles.values.empty() && doubles.shape.empty() && texts.values.empty());
    }
    Hdf5Array<double> doubles;
    Hdf5Array<std::string> texts;
    EXPECT_FALSE(read_hdf5(file.id(), "text", doubles));
    EXPECT_FALSE(read_hdf5(file.id(), "number", texts));
}

/// A file with 50 texts of 11 bytes or 50 doubles in "a", stored as told; chunks of 0 are none.
std::string stored_file(bool texts, H5D_layout_t layout, hsize_t chunk, bool packed) {
    const test::TempFolder folder;
    const std::string path = folder.file("a.h5");
    const hsize_t length = 50, most = H5S_UNLIMITED;
    const std::vector<char> values(length * 11, 'a');
    {
        const Hdf5Handle file(H5Fcreate(path.c_str(), H5F_ACC_TRUNC, H5P_DEFAULT, H5P_DEFAULT)),
            type(H5Tcopy(texts ? H5T_C_S1 : H5T_IEEE_F64LE)),
            space(H5Screate_simple(1, &length, chunk > length ? &most : nullptr)),
            properties(H5Pcreate(H5P_DATASET_CREATE));
        if (texts) H5Tset_size(type.id(), 11);
        H5Pset_layout(properties.id(), layout);
        if (chunk > 0) H5Pset_chunk(properties.id(), 1, &chunk);
        if (packed) {
            H5Pset_shuffle(properties.id());
            H5Pset_deflate(properties.id(), 6);
            H5Pset_fletcher32(properties.id());
        }
        const Hdf5Handle dataset(
            H5Dcreate2(file.id(), "a", type.id(), space.id(), H5P_DEFAULT, properties.id(), H5P_DEFAULT));
        H5Dwrite(dataset.id(), type.id(), H5S_ALL, H5S_ALL, H5P_DEFAULT, values.data());
    }
    return folder.read("a.h5");
}

TEST_F(Hdf5Reader, WhatIsStoredShorterThanAnnouncedIsRefused) {
    const std::tuple<bool, H5D_layout_t, hsize_t, bool> cases[] = {
        {true, H5D_COMPACT, 0, false}, {true, H5D_CONTIGUOUS, 0, false}, {true, H5D_CHUNKED, 50, false},
        {true, H5D_CHUNKED, 50, true}, {false, H5D_CHUNKED, 50, true},   {false, H5D_CHUNKED, 60, true},
        {false, H5D_CHUNKED, 7, true}};
    for (const auto& [texts, layout, chunk, packed] : cases) {
        SCOPED_TRACE(testing::Message() << texts << layout << " " << chunk << packed);
        std::string bytes = stored_file(texts, layout, chunk, packed);
        const auto read = [&, is_text = texts] {
            const Hdf5Handle file = open_hdf5_file(folder_.write("a.h5", bytes).c_str());
            Hdf5Array<std::string> words;
            Hdf5Array<double> numbers;
            return is_text ? read_hdf5(file.id(), "a", words) : read_hdf5(file.id(), "a", numbers);
        };
        EXPECT_TRUE(read());
        // The type's header, in which an element becomes 2304 bytes longer.
        const std::size_t type = bytes.find(texts ? std::string("\x13\0\0\0\x0b\0\0\0", 8)
                                                  : std::string("\x11\x20\x3f\0\x08\0\0\0", 8));
        ASSERT_NE(type, bytes.npos);
        bytes[type + 5] = 9;
        EXPECT_FALSE(read());
    }
}

TEST_F(Hdf5Reader, PartsOfDatasets) {
    const Hdf5Handle file = made([](Hdf5Writer& out) {
        out.numbers("box", NumberType::kInt32Big, {2, 2, 3}, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12});
        out.unwritten("huge", std::uint64_t{1} << 33);
    });
    const std::string beyond = "the part of box that is wanted begins at ";
    constexpr std::size_t kMost = ~std::size_t{0};
    const std::vector<std::tuple<const char*, Hdf5Slab, std::vector<double>, std::string>> cases = {
        {"box", {{0, 1, 1}, {2, 1, 2}}, {5, 6, 11, 12}, ""},
        {"box", {{0, 1, 2}, {2, 1, 2}}, {0, 0, 0, 0}, beyond + "2 and takes 2 of 3"},
        {"box", {{kMost, 0, 0}, {2, 1, 1}}, {0, 0}, beyond + std::to_string(kMost) + " and takes 2 of 2"},
        {"huge", {{0}, {1}}, {0}, "huge announces more than the file can hold"},
    };
    for (const auto& [name, slab, values, fault] : cases) {
        std::vector<double> read(values.size(), 0.0);
        EXPECT_EQ(read_hdf5_slab(file.id(), name, slab, read), fault);
        EXPECT_EQ(read, values) << fault;
    }
}

TEST_F(Hdf5Reader, MembersComeInByteOrderWithAnyName) {
    const std::string long_name(3000, 'z');
    const Hdf5Handle file = made([&](Hdf5Writer& out) {
        for (const char* name : {"alpha", "Beta", "9"}) out.group(name);
        out.doubles("10", {1}, {1});
        out.soft_link("gone", "/nowhere");
        out.soft_link("same", "/Beta");
        out.group(long_name);
    });
    EXPECT_THAT(hdf5_members(file.id()), ElementsAre("10", "9", "Beta", "alpha", "gone", "same", long_name));
    for (const std::string& name : {std::string("alpha"), std::string("same"), long_name})
        EXPECT_TRUE(is_hdf5_group(file.id(), name)) << name;
    for (const char* name : {"10", "gone", "other"}) EXPECT_FALSE(is_hdf5_group(file.id(), name)) << name;
    const Hdf5Handle group = open_hdf5_group(file.id(), long_name);
    EXPECT_EQ(hdf5_path(group.id()), "/" + long_name);
    EXPECT_FALSE(open_hdf5_group(file.id(), "10"));
    EXPECT_THAT(hdf5_members(-1), IsEmpty());
    EXPECT_EQ(hdf5_path(-1), "");
}

TEST_F(Hdf5Reader, ClosingEverythingFreesTheFile) {
    {
        Hdf5Handle file = made([](Hdf5Writer& out) { out.doubles("a/b", {1}, {1}); });
        Hdf5Handle group = open_hdf5_group(file.id(), "a");
        Hdf5Handle other = std::move(group);
        other = open_hdf5_group(file.id(), "/");
        Hdf5Array<double> read;
        EXPECT_TRUE(read_hdf5(other.id(), "a/b", read));
        EXPECT_TRUE(is_hdf5_group(file.id(), "a"));
    }
    EXPECT_EQ(H5Fget_obj_count(static_cast<hid_t>(H5F_OBJ_ALL), H5F_OBJ_ALL), 0);
}

TEST_F(Hdf5Reader, KindTellsTextFromDamageAndCutFilesStayShut) {
    made([](Hdf5Writer& out) { out.doubles("a", {1}, {1}); }).close();
    const std::string bytes = folder_.read("made.h5");
    testing::internal::CaptureStderr();
    const std::tuple<std::string, int, bool> cases[] = {
        {path_, 1, true},
        {folder_.write("user_block.h5", std::string(512, ' ') + bytes), 1, true},
        {folder_.write("cut.h5", bytes.substr(0, bytes.size() / 2)), 1, false},
        {folder_.write("text.gpr", "GMSPROJECT\n"), 0, false},
        {folder_.file("missing.gpr"), -1, false},
        {folder_.path().string(), -1, false},
        {"", -1, false},
    };
    for (const auto& [path, kind, opens] : cases) {
        EXPECT_EQ(hdf5_kind(path.c_str()), kind) << path;
        EXPECT_EQ(static_cast<bool>(open_hdf5_file(path.c_str())), opens) << path;
    }
    EXPECT_EQ(hdf5_kind(nullptr), -1);
    for (std::size_t length = 0; length < bytes.size(); length += 61) {
        EXPECT_FALSE(open_hdf5_file(folder_.write("cut.h5", bytes.substr(0, length)).c_str())) << length;
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(Hdf5Reader, TheHostsErrorHandlerComesBack) {
    H5E_auto2_t before = nullptr;
    void* before_data = nullptr;
    H5Eget_auto2(H5E_DEFAULT, &before, &before_data);
    int calls = 0;
    const H5E_auto2_t count_call = [](hid_t, void* data) -> herr_t { return ++*static_cast<int*>(data), 0; };
    H5Eset_auto2(H5E_DEFAULT, count_call, &calls);
    EXPECT_FALSE(open_hdf5_group(-1, "x"));
    EXPECT_EQ(hdf5_kind(folder_.path().string().c_str()), -1);
    EXPECT_EQ(calls, 0);
    H5Gopen2(-1, "x", H5P_DEFAULT);
    EXPECT_EQ(calls, 1);
    H5Eset_auto2(H5E_DEFAULT, before, before_data);
}

}  // namespace
