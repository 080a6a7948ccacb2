#include <sys/wait.h>

#include <cstdlib>

#include "support/run_program.h"
#include "support/temp_folder.h"

namespace plx::test {

namespace {

std::string quoted(const std::string& word) {
    std::string text = "'";
    for (const char c : word) text += c == '\'' ? "'\\''" : std::string(1, c);
    return text + "'";
}

}  // namespace

ProgramRun run_program(const std::string& program, const std::vector<std::string>& arguments,
                       const std::string& input) {
    const TempFolder folder;
    std::string command = quoted(program);
    for (const std::string& argument : arguments) command += " " + quoted(argument);
    command += " <" + quoted(input.empty() ? "/dev/null" : input) + " >" + quoted(folder.file("out")) +
               " 2>" + quoted(folder.file("err"));
    const int status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, folder.read("out"), folder.read("err")};
}

}  // namespace plx::test
