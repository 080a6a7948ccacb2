#include "support/capture_stdout.h"

#include <gtest/gtest.h>

namespace plx::test {

std::string capture_stdout(const std::function<void()>& work) {
    testing::internal::CaptureStdout();
    work();
    return testing::internal::GetCapturedStdout();
}

}  // namespace plx::test
