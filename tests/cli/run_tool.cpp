#include "cli/run_tool.h"

namespace plx::test {

ToolRun run_tool(const std::vector<std::string>& arguments, const std::string& input) {
    return run_program(PLXCONVERT, arguments, input);
}

}  // namespace plx::test
