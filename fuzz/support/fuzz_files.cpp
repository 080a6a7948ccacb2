#include "support/fuzz_files.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

#include "plxutils/core/VXFile.h"
#include "plxutils/gms/GMSCallbacks.h"

namespace plx::fuzz {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kSeparator = "\n====\n";

[[noreturn]] void give_up(const std::string& what) {
    std::fprintf(stderr, "%s\n", what.c_str());
    std::exit(2);
}

void be_silent() {
    static const bool done = [] {
        GMS_SetErrorFunc([](const char*) {});
        GMS_SetStatusFunc([](const char*) {});
        return std::freopen("/dev/null", "w", stdout) != nullptr;
    }();
    if (!done) give_up("standard output cannot be silenced");
}

/// Removes the folder when the process ends, but not when a finding ends it: tools/fuzz.sh does that.
struct Folder {
    Folder() {
        const char* const given = std::getenv("PLX_FUZZ_FOLDER");
        const fs::path memory = "/dev/shm";
        const fs::path base = given != nullptr     ? fs::path(given)
                              : fs::exists(memory) ? memory
                                                   : fs::temp_directory_path();
        path = (base / ("plx_fuzz_" + std::to_string(getpid()))).string();
        fs::create_directories(path);
    }
    ~Folder() {
        std::error_code ignored;
        fs::remove_all(path, ignored);
    }
    std::string path;
};

}  // namespace

Input::Input(const std::uint8_t* data, std::size_t size) {
    be_silent();
    if (size == 0) return;
    choices_ = data[0];
    bytes_ = {reinterpret_cast<const char*>(data) + 1, size - 1};
}

std::vector<std::string_view> Input::parts(std::size_t count) const {
    std::vector<std::string_view> parts;
    std::string_view rest = bytes_;
    while (parts.size() + 1 < count) {
        const std::size_t end = std::min(rest.find(kSeparator), rest.size());
        parts.push_back(rest.substr(0, end));
        rest.remove_prefix(std::min(end + kSeparator.size(), rest.size()));
    }
    parts.push_back(rest);
    return parts;
}

TextRules text_rules(const Input& input) {
    TextRules rules;
    int bit = 0;
    for (bool* rule : {&rules.skip_empty_words, &rules.unit_zero_is_constant, &rules.zero_multiplier_is_one,
                       &rules.obey_formats, &rules.tab_separates, &rules.check_words})
        *rule = input.flag(bit++);
    return rules;
}

const std::string& folder() {
    static const Folder folder;
    return folder.path;
}

std::string write_file(const std::string& name, std::string_view bytes) {
    std::string path = folder() + "/" + name;
    const auto open = [&path] { return OpenFile(std::fopen(path.c_str(), "wb")); };
    OpenFile file = open();
    if (!file) {
        fs::create_directories(fs::path(path).parent_path());
        file = open();
    }
    if (!file || std::fwrite(bytes.data(), 1, bytes.size(), file.get()) != bytes.size()) {
        give_up(path + " cannot be written");
    }
    return path;
}

std::string empty_folder(const std::string& name) {
    const fs::path path = fs::path(folder()) / name;
    fs::remove_all(path);
    fs::create_directories(path);
    return path.string();
}

std::string stored(const std::string& path) { return VXFile(path.c_str()).GetFilePath().c_str(); }

OpenFile open_bytes(std::string_view bytes) {
    OpenFile file(std::fopen(write_file("input", bytes).c_str(), "rb"));
    if (!file) give_up("the input cannot be opened");
    return file;
}

}  // namespace plx::fuzz
