#include "support/gms_project.h"

using namespace plx;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Input input(data, size);
    fuzz::GmsProject project(input);
    project.use_example();
    project.put("quarry.gpr", "GMSPROJ\nTIN quarry.tin\nDATA quarry_thickness.bin\n");
    project.put("quarry.tin", input.bytes());
    project.convert();
    return 0;
}
