#include <hdf5.h>

#include "support/gms_project.h"

using namespace plx;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::Input input(data, size);
    fuzz::GmsProject project(input);
    project.put("quarry.gpr", input.bytes());
    project.convert();
    // The leak check does not look at what HDF5 holds.
    if (H5Fget_obj_count(static_cast<hid_t>(H5F_OBJ_ALL), H5F_OBJ_ALL) != 0) __builtin_trap();
    return 0;
}
