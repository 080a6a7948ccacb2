#include <vector>

#include "support/model_grid.h"

using namespace plx;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Input input(data, size);
    // As many values as bits 6 and 7 say, until the file ends.
    static constexpr std::size_t kCounts[] = {1, 12, 400, 5000};
    fuzz::ModelTexts texts(input);
    TextRules rules = fuzz::text_rules(input), used;
    rules.hdf5_records = true;
    Problems problems;
    ArrayReader reader(texts.file(), texts, rules, used, problems);
    std::vector<double> values;
    const std::size_t count = kCounts[input.choices() >> 6];
    while (!reader.ended() && !texts.file().at_end() && problems.size() < 100) {
        const ArrayReader::Shape shape{.count = count, .columns = 4, .whole = input.flag(0), .what = "HK"};
        if (reader.read(shape, values) && values.size() != count) __builtin_trap();
    }
    return 0;
}
