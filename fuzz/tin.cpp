#include "support/gms_project.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    plx::fuzz::convert_example({data, size}, "TIN quarry.tin\nDATA quarry_thickness.bin\n", "quarry.tin");
    return 0;
}
