#pragma once

#include <string>
#include <vector>

namespace plx::test {

struct ProgramRun {
    int code = -1;  ///< -1 for a program that did not start or crashed
    std::string out, err;
};

/// Runs a program, a native path, with its streams in files, so that it sees no terminal. Lines of its output
/// end with a line feed on every system.
/// @param input  native path of its standard input; empty for none.
ProgramRun run_program(const std::string& program, const std::vector<std::string>& arguments,
                       const std::string& input = "");

}  // namespace plx::test
