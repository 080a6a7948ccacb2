#include <fcntl.h>
#include <strings.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <memory>
#include <optional>
#include <string_view>

#include "platform/host_path.h"
#include "platform/ini_default.h"
#include "platform/platform.h"

namespace plx::platform {
namespace {

namespace fs = std::filesystem;

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using FileHandle = std::unique_ptr<std::FILE, CloseFile>;

std::string native_name(const char* stored) { return stored ? native_path(stored) : std::string(); }

std::string target_name(const char* stored) { return stored ? target_path(stored) : std::string(); }

/// All bytes of a file whose length need not be known beforehand (those under /proc say 0).
std::optional<std::string> read_all(std::FILE* file) {
    if (!file) return std::nullopt;
    std::string text;
    char block[8192];
    for (std::size_t n; (n = std::fread(block, 1, sizeof block, file)) > 0;) text.append(block, n);
    return text;
}

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r";
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::string lower(std::string text) {
    for (char& c : text)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return text;
}

bool same_word(std::string_view a, std::string_view b) {
    return a.size() == b.size() && strncasecmp(a.data(), b.data(), a.size()) == 0;
}

std::optional<std::string_view> find_in_ini(std::string_view text, std::string_view section,
                                            std::string_view key) {
    bool inside = false;
    if (text.starts_with("\xef\xbb\xbf")) text.remove_prefix(3);
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
        const std::string_view line = trimmed(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        if (line.empty() || line.front() == ';') continue;
        if (line.front() == '[' && line.find(']') != std::string_view::npos) {
            if (inside) return std::nullopt;
            inside = same_word(trimmed(line.substr(1, line.find(']') - 1)), section);
            continue;
        }
        const std::size_t equals = line.find('=');
        if (inside && equals != std::string_view::npos && same_word(trimmed(line.substr(0, equals)), key))
            return without_quotes(trimmed(line.substr(equals + 1)));
    }
    return std::nullopt;
}

}  // namespace

bool names_are_native() { return false; }

std::FILE* open_file(const char* stored, const char* mode) {
    if (!stored || !mode) return nullptr;
    const std::string_view name(stored);
    // A trailing separator names a folder.
    if (name.ends_with('\\') || name.ends_with('/')) return nullptr;
    const bool reads = *mode == 'r';
    const std::string native = reads ? native_path(name) : target_path(name);
    std::error_code error;
    // Reading a device or a pipe may never end.
    if (native.empty() || (reads && !std::filesystem::is_regular_file(native, error))) return nullptr;
    FileHandle file(std::fopen(native.c_str(), mode));
    struct stat facts;
    // A directory can be opened for reading here, but every read of it fails.
    if (file && (fstat(fileno(file.get()), &facts) != 0 || S_ISDIR(facts.st_mode))) return nullptr;
    return file.release();
}

FileFacts find_file(const char* stored) {
    FileFacts found;
    const std::string native = stored ? matching_path(stored) : std::string();
    struct stat facts;
    if (native.empty() || (stat(native.c_str(), &facts) != 0 && lstat(native.c_str(), &facts) != 0))
        return found;
    found.exists = true;
    // The mode decides, not access(), which allows everything to root.
    found.read_only = (facts.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0;
    found.directory = S_ISDIR(facts.st_mode);
    found.size = found.directory ? 0 : std::int64_t{facts.st_size};
    return found;
}

std::optional<std::vector<std::string>> folder_names(const char* stored) {
    const auto folders = stored ? matching_folders(stored) : std::vector<std::string>();
    if (!folders) return std::nullopt;
    std::vector<std::string> names;
    for (const std::string& folder : *folders) {
        std::error_code error;
        fs::directory_iterator entry(folder, error);
        for (; !error && entry != fs::directory_iterator(); entry.increment(error))
            names.push_back(lower(entry->path().filename().string()));
        if (error) return std::nullopt;
    }
    return names;
}

bool make_directory(const char* stored) {
    const std::string native = target_name(stored);
    if (native.empty()) return false;
    if (mkdir(native.c_str(), 0777) == 0) return true;
    struct stat facts;
    return stat(native.c_str(), &facts) == 0 && S_ISDIR(facts.st_mode);
}

bool replace_move(const char* from_stored, const char* to_stored) {
    const std::string from = native_name(from_stored), to = target_name(to_stored);
    if (from.empty() || to.empty()) return false;
    if (std::rename(from.c_str(), to.c_str()) == 0) return true;
    if (errno != EXDEV) return false;
    std::error_code error;
    fs::copy_file(from, to, fs::copy_options::overwrite_existing, error);
    return !error && unlink(from.c_str()) == 0;
}

bool is_regular_file(const std::string& native) {
    std::error_code error;
    return fs::is_regular_file(native, error);
}

std::string utf8_path(const std::string& native) { return native; }

std::string full_path(const std::string& name) {
    std::error_code error;
    const fs::path absolute = fs::absolute(name, error);
    return error ? name : absolute.lexically_normal().string();
}

std::string command_line() {
    const FileHandle file(std::fopen("/proc/self/cmdline", "rb"));
    const std::string words = read_all(file.get()).value_or("");
    std::string line;
    for (std::size_t start = 0; start < words.size();) {
        const std::size_t end = std::min(words.find('\0', start), words.size());
        const std::string word = words.substr(start, end - start);
        const bool blanks = word.find_first_of(" \t\r\n") != std::string::npos;
        if (!line.empty()) line += ' ';
        line += blanks ? '"' + word + '"' : word;
        start = end + 1;
    }
    return line;
}

std::string system_drive() { return "c:"; }

std::string executable_path() {
    std::error_code error;
    return fs::read_symlink("/proc/self/exe", error).string();
}

std::string environment(const char* name) {
    const char* value = name ? std::getenv(name) : nullptr;
    return value ? value : "";
}

bool seek(std::FILE* file, std::int64_t offset, int origin) {
    return file && fseeko(file, static_cast<off_t>(offset), origin) == 0;
}

std::int64_t tell(std::FILE* file) { return file ? std::int64_t{ftello(file)} : -1; }

std::int64_t file_size(std::FILE* file) {
    struct stat facts;
    if (!file || fstat(fileno(file), &facts) != 0 || !S_ISREG(facts.st_mode)) return -1;
    return std::max<std::int64_t>(facts.st_size, tell(file));
}

std::int64_t clock_count() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return std::int64_t{now.tv_sec} * clock_frequency() + now.tv_nsec;
}

std::int64_t clock_frequency() { return 1'000'000'000; }

std::string ini_value(const char* stored_file, const char* section, const char* key, const char* fallback) {
    std::string otherwise(ini_default(fallback));
    if (!section || !key) return otherwise;
    const FileHandle file(open_file(stored_file, "rb"));
    const auto text = read_all(file.get());
    if (!text) return otherwise;
    const auto value = find_in_ini(*text, section, key);
    return value ? std::string(*value) : otherwise;
}

}  // namespace plx::platform
