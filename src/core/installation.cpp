#include "core/installation.h"

#include <algorithm>

#include "platform/host_path.h"
#include "platform/platform.h"

namespace plx {
namespace {

// A token has one digit, so further paths cannot be named.
constexpr std::size_t kMaxPaths = 10;

/// The program's path as it was typed.
std::string_view program_of(std::string_view command_line) {
    if (!command_line.empty() && command_line.front() == '"') {
        command_line.remove_prefix(1);
        return command_line.substr(0, command_line.find('"'));
    }
    return command_line.substr(0, command_line.find_first_of(" \"\t\n\r"));
}

std::string backslash_form(std::string_view native) {
    std::string path = platform::with_drive(native);
    std::replace(path.begin(), path.end(), '/', '\\');
    return path;
}

std::vector<std::string> split_paths(std::string_view xp_path) {
    std::vector<std::string> paths;
    while (!xp_path.empty()) {
        const std::size_t end = std::min(xp_path.find(';'), xp_path.size());
        if (end > 0) paths.emplace_back(xp_path.substr(0, end));
        xp_path.remove_prefix(std::min(end + 1, xp_path.size()));
    }
    return paths;
}

/// A flag that is set for as long as this lives.
class Raised {
public:
    explicit Raised(bool& flag) : flag_(flag) { flag_ = true; }
    ~Raised() { flag_ = false; }
    Raised(const Raised&) = delete;
    Raised& operator=(const Raised&) = delete;

private:
    bool& flag_;
};

std::string find_root() {
    if (platform::names_are_native()) {
        const std::string line = platform::command_line();
        return installation_root(line, platform::full_path(std::string(program_of(line))));
    }
    const std::vector<std::string> paths = split_paths(platform::environment("XP_PATH"));
    if (paths.empty()) {
        const std::string program = backslash_form(platform::executable_path());
        return installation_root('"' + program + '"', program);
    }
    const std::string root = backslash_form(paths.front());
    return root.substr(0, root.find_last_not_of('\\') + 1);
}

}  // namespace

std::string installation_root(std::string_view command_line, std::string_view full_path) {
    // The program's own folder with both separators: its name has six letters in every installation.
    constexpr std::size_t kProgramFolder = 8;
    const std::size_t folder = full_path.find_last_of('\\') + 1;
    if (folder < kProgramFolder) return "";
    std::string root(program_of(command_line).substr(0, folder - kProgramFolder));
    if (root.ends_with("bin")) root.resize(root.size() < 4 ? 0 : root.size() - 4);
    return root;
}

const std::string& installation_root() {
    // Never released: hosts name files from their own static objects' destructors.
    static const std::string& root = *new std::string(find_root());
    return root;
}

// By value: a host may exchange its services while it is asked.
std::vector<std::string> host_paths(platform::HostRuntime host, std::string_view xp_path) {
    std::vector<std::string> paths;
    if (host.OMget_num_paths && host.OMget_path_index) {
        for (int left = host.OMget_num_paths(); left > 0 && paths.size() < kMaxPaths; --left) {
            const char* path = host.OMget_path_index(left - 1);
            paths.emplace_back(path ? path : "");
        }
    } else {
        paths = split_paths(xp_path);
        std::reverse(paths.begin(), paths.end());
    }
    return paths;
}

std::string host_path(const std::vector<std::string>& paths, std::size_t digit) {
    if (paths.empty()) return "";
    return paths[digit < paths.size() ? digit : 0];
}

std::string host_path(std::size_t digit) {
    static const std::vector<std::string>* paths = nullptr;  // never released, like the root
    static bool collecting = false;
    if (paths == nullptr) {
        // A host may use such a name itself while it is asked for its paths.
        if (collecting) return "";
        const Raised raised(collecting);
        paths = new std::vector<std::string>(
            host_paths(platform::host_runtime(), platform::environment("XP_PATH")));
    }
    return host_path(*paths, digit);
}

}  // namespace plx
