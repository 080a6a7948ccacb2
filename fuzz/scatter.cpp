#include "support/gms_project.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    plx::fuzz::convert_example({data, size}, "SCAT2D quarry.xy\nDATA quarry_samples.dat\n", "quarry.xy");
    return 0;
}
