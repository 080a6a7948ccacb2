#include "platform/device_names.h"

#include <gtest/gtest.h>

namespace plx::platform {

TEST(DeviceNames, AreTakenWhateverFollowsTheFirstDot) {
    for (const char* name : {"con", "NUL.gmf", "aux.tar.gz", "PRN ", "Com1", "lpt9.x", "con .txt",
                             "com\xc2\xb2", "CONIN$", "nul:x"})
        EXPECT_TRUE(is_device_name(name)) << name;
    for (const char* name :
         {"", ".con", "console", "con_x.gmf", "com", "com0", "com10", "lpt", "x.con", "auxx"})
        EXPECT_FALSE(is_device_name(name)) << name;
}

}  // namespace plx::platform
