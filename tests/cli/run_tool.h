#pragma once

#include <string>
#include <vector>

#include "support/run_program.h"

namespace plx::test {

using ToolRun = ProgramRun;

/// Runs the built plxconvert with its streams in files, so that it sees no terminal.
ToolRun run_tool(const std::vector<std::string>& arguments, const std::string& input = "");

}  // namespace plx::test
