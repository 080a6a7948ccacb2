#include "support/gms_project.h"

using namespace plx;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Input input(data, size);
    fuzz::GmsProject project(input);
    project.use_example();
    project.put("quarry.gpr", "GMSPROJ\nSCAT2D quarry.xy\nDATA quarry_samples.dat\n");
    project.put("quarry.xy", input.bytes());
    project.convert();
    return 0;
}
