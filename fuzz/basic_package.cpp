#include "formats/basic_package.h"
#include "support/model_grid.h"

using namespace plx;

namespace {

/// What the readers of one package share.
struct Package {
    explicit Package(const fuzz::Input& input) : texts(input), rules(fuzz::text_rules(input)) {}
    TextSource& in() { return texts.file(); }
    bool arrays(const GridSize& size) {
        const auto store = [&size](int layer, const std::vector<double>& values) {
            if (layer < 0 || layer >= size.layers || values.size() != size.per_layer()) __builtin_trap();
        };
        if (!read_ibound(in(), texts, rules, used, size, store, problems)) return false;
        read_no_flow_head(in(), rules);
        return read_starting_heads(in(), texts, rules, used, size, problems);
    }

    fuzz::ModelTexts texts;
    TextRules rules, used;
    Problems problems;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Input input(data, size);
    // Bit 6: the form of MODFLOW 2000, whose grid is known from elsewhere.
    Package package(input);
    if (input.flag(6)) {
        package.rules.hdf5_records = true;
        if (read_bas6_options(package.in()).cross_section) return 0;
        package.arrays({2, 3, 4});
        return 0;
    }
    BasicHeader header;
    if (!read_basic_header(package.in(), package.texts, package.rules, header, package.problems)) return 0;
    skip_iapart(package.in(), package.rules);
    if (!package.arrays(header.size)) return 0;
    StressPeriods periods;
    read_stress_periods(package.in(), package.rules, header.periods, input.flag(7), periods,
                        package.problems);
    periods.total_steps();
    for (std::size_t i = 0; i < periods.periods.size() && i < 5; ++i)
        periods.end_time(static_cast<int>(i), periods.periods[i].steps - 1);
    return 0;
}
