#pragma once

#include <string>
#include <vector>

namespace plx::test {

struct ToolRun {
    int code = -1;
    std::string out, err;
};

/// Runs the built plxconvert with its streams in files, so that it sees no terminal.
ToolRun run_tool(const std::vector<std::string>& arguments);

}  // namespace plx::test
