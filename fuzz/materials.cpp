#include "support/gms_project.h"

using namespace plx;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Input input(data, size);
    fuzz::GmsProject project(input);
    project.use_example();
    project.put("quarry.gpr", "GMSPROJ\nBHOLE quarry.bor\nMAT quarry.mat\n");
    project.put("quarry.mat", input.bytes());
    project.convert();
    return 0;
}
