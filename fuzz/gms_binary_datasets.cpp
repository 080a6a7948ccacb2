#include <vector>

#include "formats/gms_steps.h"
#include "gms/datasets.h"
#include "plxutils/converters/ModelSummary.h"
#include "support/fuzz_files.h"

using namespace plx;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Input input(data, size);
    const std::string path = fuzz::write_file("a.bin", input.bytes());
    DataSetList list;
    read_binary_datasets(fuzz::stored(path).c_str(), list, input.flag(0));
    for (const auto& set : list) {
        for (int i = 0; i < set->timeSteps.GetCount(); ++i) {
            const TimeStep& step = *set->timeSteps.GetAt(i);
            step.Value(step.numValues - 1, step.components - 1);
            step.Active(step.numCells - 1);
        }
    }
    // The same file as concentrations, step by step.
    summarize_result_file(path.c_str());
    const fuzz::OpenFile file = fuzz::open_bytes(input.bytes());
    GmsSteps steps(file.get(), "a.con");
    if (!steps.open()) return 0;
    if (steps.values() < 0 || static_cast<std::size_t>(steps.values()) > 8 * size) return 0;
    std::vector<double> values(static_cast<std::size_t>(steps.values()));
    double time = 0.0;
    while (steps.next(values.data(), time) == GmsSteps::Next::kStep) {
    }
    return 0;
}
