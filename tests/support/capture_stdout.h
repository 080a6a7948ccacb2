#pragma once

#include <functional>
#include <string>

namespace plx::test {

/// Runs `work` and returns what it printed to standard output through C stdio.
std::string capture_stdout(const std::function<void()>& work);

}  // namespace plx::test
