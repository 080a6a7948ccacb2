#include "cli/run_tool.h"

#include <sys/wait.h>

#include <cstdlib>

#include "support/temp_folder.h"

namespace plx::test {

namespace {

std::string quoted(const std::string& word) {
    std::string text = "'";
    for (const char c : word) text += c == '\'' ? "'\\''" : std::string(1, c);
    return text + "'";
}

}  // namespace

ToolRun run_tool(const std::vector<std::string>& arguments) {
    const TempFolder folder;
    std::string command = quoted(PLXCONVERT);
    for (const std::string& argument : arguments) command += " " + quoted(argument);
    command += " </dev/null >" + quoted(folder.file("out")) + " 2>" + quoted(folder.file("err"));
    const int status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, folder.read("out"), folder.read("err")};
}

}  // namespace plx::test
