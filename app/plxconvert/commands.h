#pragma once

#include <CLI/CLI.hpp>
#include <functional>

namespace plx::tool {

constexpr int kDone = 0;
constexpr int kInputFault = 1;
constexpr int kWrongUsage = 2;

/// What the command line asks for; the result is the exit code. A command sets it once its options are
/// parsed.
using Action = std::function<int()>;

void add_modflow_command(CLI::App& app, Action& action);
void add_gms_command(CLI::App& app, Action& action);
void add_info_command(CLI::App& app, Action& action);
void add_interpolate_command(CLI::App& app, Action& action);
void add_georef_command(CLI::App& app, Action& action);

}  // namespace plx::tool
