#pragma once

namespace plx::tool {

/// Lets Ctrl-C, a request to terminate and their like remove unfinished files before they end the program as
/// they always do. A file that grows beyond a limit of the system becomes an error of its writer.
void clean_up_when_interrupted();

}  // namespace plx::tool
