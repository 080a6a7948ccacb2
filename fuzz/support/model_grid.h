#pragma once

#include <optional>
#include <string_view>

#include "converters/model_state.h"
#include "support/fuzz_files.h"

namespace plx::fuzz {

/// Files that array records may name, and the file that they stand in, as a model's inputs have them.
class ModelTexts final : public ArrayStreams {
public:
    /// The parts are the file at unit 11, the one at unit 14 and "values.dat", which OPEN/CLOSE may name.
    explicit ModelTexts(const Input& input);
    TextSource& file() { return *streams_.unit(kFile); }

    TextSource* unit(int number) override { return streams_.unit(number); }
    TextSource* open(const std::string& name) override { return streams_.open(name); }
    Hdf5Id hdf5_file(const std::string& name, const TextSource& from) override {
        return streams_.hdf5_file(name, from);
    }
    /// Few enough that a run takes no time.
    long long most_cells() const override { return 20'000; }

private:
    static constexpr int kFile = 11, kOther = 14;

    VX1DArray<std::FILE*> files_;
    UnitStreams streams_;
};

/// A model of 2 layers, 3 rows and 4 columns, as if its inputs had been parsed, whose results a target reads.
/// Bit 0 of the first byte chooses the modelling programs' rules.
struct SmallModel {
    explicit SmallModel(const Input& input);
    /// Opens a file of these bytes at a unit.
    void open(int unit, const char* name, std::string_view bytes);

    /// Opens the flow file, site.cbb.
    void open_flows(std::string_view bytes);
    /// Loads the first of the flows that were found, and stops where they name a cell that the grid lacks.
    void load_some_flows(void (*load)(ModelState&));

    ConverterFactory factory;
    ModelState& model;
};

}  // namespace plx::fuzz
