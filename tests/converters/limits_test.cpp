#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "converters/small_grid.h"
#include "converters/transport.h"
#include "support/capture_stdout.h"
#include "support/result_files.h"

using namespace plx;
using namespace plx::test;

TEST(Limits, UnitNumbersHaveAnEnd) {
    const TempFolder folder;
    const std::string path = folder.write("a.txt", "1\n");
    VX1DArray<std::FILE*> files;
    files.SetSize(100, nullptr);
    UnitStreams streams(files, [&] { return folder.path().string(); });
    const std::pair<int, bool> cases[] = {{-2147483647, false}, {-1, false},        {0, true},
                                          {99, true},           {100, true},        {99'999, true},
                                          {100'000, false},     {2147483647, false}};
    for (const auto& [unit, opened] : cases) {
        SCOPED_TRACE(unit);
        EXPECT_EQ(streams.open_unit(unit, path), opened);
        EXPECT_EQ(streams.file(unit) != nullptr, opened);
        EXPECT_EQ(streams.unit(unit) != nullptr, opened);
    }
    EXPECT_LE(files.GetSize(), 200'000);
}

TEST(Limits, FiftySpeciesAreLookedFor) {
    const TempFolder folder;
    ConverterFactory factory;
    ModelState& model = set_grid(factory, {1, 1, 1}, folder);
    ResultWriter writer;
    writer.layer({}, 1, {1}, "CONCENTRATION", 1);
    for (const char* number : {"000", "001", "009", "010", "049", "050", "051", "100"})
        folder.write(std::string("site") + number + ".ucn", writer.bytes());
    factory.species_names.SetSize(60, String("name"));
    capture_stdout([&] { find_concentrations(model); });
    std::vector<int> found;
    for (const SpeciesFile& species : model.transport.species) found.push_back(species.number);
    EXPECT_THAT(found, testing::ElementsAre(1, 9, 10, 49, 50));
}
