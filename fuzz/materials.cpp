#include "support/gms_project.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    plx::fuzz::convert_example({data, size}, "BHOLE quarry.bor\nMAT quarry.mat\n", "quarry.mat");
    return 0;
}
