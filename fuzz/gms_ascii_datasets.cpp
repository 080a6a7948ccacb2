#include "gms/datasets.h"
#include "support/fuzz_files.h"

using namespace plx;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Input input(data, size);
    const std::string path = fuzz::write_file("a.dat", input.bytes());
    DataSetList list;
    read_ascii_datasets(fuzz::stored(path).c_str(), list, input.flag(0));
    for (const auto& set : list) {
        for (int i = 0; i < set->timeSteps.GetCount(); ++i) {
            const TimeStep& step = *set->timeSteps.GetAt(i);
            step.Value(step.numValues - 1, step.components - 1);
            step.Active(step.numCells - 1);
        }
    }
    return 0;
}
