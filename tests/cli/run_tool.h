#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "support/run_program.h"

namespace plx::test {

using ToolRun = ProgramRun;
using Words = std::vector<std::string>;

/// Runs the built plxconvert with its streams in files, so that it sees no terminal.
ToolRun run_tool(const Words& arguments, const std::string& input = "");

/// Expects the exit code and a complaint that holds the text, with nothing on standard output.
void expect_refused(const ToolRun& run, int code, const std::string& complaint);

/// What the tool prints with --json, which has to succeed without a complaint.
nlohmann::json json_of(Words arguments);

/// Expects the values of an object whose names are JSON pointers.
void expect_values(const nlohmann::json& found, const std::string& expected);

void expect_texts(const std::string& shown, const Words& texts);

}  // namespace plx::test
