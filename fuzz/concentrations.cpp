#include "converters/transport.h"
#include "plxutils/converters/ModelSummary.h"
#include "support/model_grid.h"

using namespace plx;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Input input(data, size);
    // Bit 1: a GMS dataset in place of a file of MT3D.
    fuzz::SmallModel small(input);
    ModelState& model = small.model;
    const std::string path = fuzz::write_file("site001.ucn", input.bytes());
    summarize_result_file(path.c_str());
    SpeciesFile species;
    species.number = 1;
    species.stream.reset(std::fopen(path.c_str(), "rb"));
    if (input.flag(1)) {
        species.steps = std::make_unique<GmsSteps>(species.stream.get(), "site001.con");
        if (!species.steps->open()) return 0;
        if (static_cast<std::size_t>(species.steps->values()) != model.size().cells()) return 0;
    } else if (!adopt_species(model, path, species)) {
        return 0;
    }
    model.transport.species.push_back(std::move(species));
    VXArray<double> values;
    float time = 0.0F;
    for (int times = count_transport_times(model); times > 0; --times) {
        if (!read_transport_time(model, values, time)) break;
    }
    return 0;
}
