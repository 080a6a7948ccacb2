#include "platform/host_path.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <vector>

#include "platform/platform.h"

namespace plx::platform {
namespace {

namespace fs = std::filesystem;
using Parts = std::vector<std::string>;
using PartsEnd = Parts::const_iterator;

// Folders that differ in case only can be linked in circles; no honest tree needs as many look-ups.
constexpr int kMaxLookups = 4096;

constexpr std::size_t kMaxStoredBytes = 1023;
constexpr std::size_t kMaxComponentBytes = 127;
constexpr std::size_t kMaxComponents = 255;

bool is_separator(char c) { return c == '\\' || c == '/'; }
bool is_letter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

std::string lower(std::string text) {
    for (char& c : text) c = lower(c);
    return text;
}

bool equal_without_case(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return lower(x) == lower(y); });
}

bool has_wildcard(std::string_view part) { return part.find_first_of("*?") != std::string_view::npos; }

/// True when a name matches a pattern of "*" and "?", without case. Linear in name times pattern.
bool matches(std::string_view name, std::string_view pattern) {
    if (pattern == "*.*") return true;
    std::size_t n = 0, p = 0, star = std::string_view::npos, resume = 0;
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == '*') {
            star = p++;
            resume = n;
        } else if (p < pattern.size() && (pattern[p] == '?' || lower(pattern[p]) == lower(name[n]))) {
            ++p;
            ++n;
        } else if (star != std::string_view::npos) {
            p = star + 1;
            n = ++resume;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == '*') ++p;
    return p == pattern.size();
}

/// A stored name taken apart: "." and ".." are resolved, so ".." is left at the start of a relative one only.
struct Place {
    bool rooted = false;
    bool ends_with_separator = false;
    Parts parts;

    std::string base() const { return rooted ? "/" : ""; }
};

void add_part(Place& place, std::string_view part) {
    if (part.empty() || part == ".") return;
    if (part != "..") {
        place.parts.emplace_back(part);
    } else if (!place.parts.empty() && place.parts.back() != "..") {
        place.parts.pop_back();
    } else if (!place.rooted) {
        place.parts.emplace_back(part);
    }
}

std::optional<Place> take_apart(std::string_view stored) {
    if (stored.empty() || stored.find('\0') != std::string_view::npos) return std::nullopt;
    Place place;
    place.ends_with_separator = is_separator(stored.back());
    if (stored.size() >= 2 && is_letter(stored[0]) && stored[1] == ':') {
        if (lower(stored[0]) != 'c' || (stored.size() > 2 && !is_separator(stored[2]))) return std::nullopt;
        place.rooted = true;
        stored.remove_prefix(2);
    } else {
        place.rooted = is_separator(stored[0]);
    }
    while (!stored.empty()) {
        const std::size_t end = std::min(stored.find_first_of("\\/"), stored.size());
        add_part(place, stored.substr(0, end));
        stored.remove_prefix(std::min(end + 1, stored.size()));
    }
    return place;
}

std::string join(const std::string& folder, std::string_view part) {
    std::string path = folder;
    if (!path.empty() && path.back() != '/') path += '/';
    return path.append(part);
}

std::string join(const std::string& base, PartsEnd first, PartsEnd last) {
    std::string path = base;
    for (; first != last; ++first) path = join(path, *first);
    return path.empty() ? "." : path;
}

/// True for an entry of that name, links that lead nowhere included.
bool entry_exists(const std::string& native) {
    std::error_code error;
    const fs::file_type type = fs::symlink_status(native, error).type();
    return type != fs::file_type::none && type != fs::file_type::not_found;
}

bool is_folder(const std::string& native) {
    std::error_code error;
    return fs::is_directory(native, error);
}

/// Entries of a folder that a component may mean besides the exact one, in byte order.
Parts candidates(const std::string& folder, const std::string& part, bool pattern) {
    Parts names;
    if (pattern) {
        for (const char* dots : {".", ".."})
            if (matches(dots, part)) names.emplace_back(dots);
    }
    std::error_code error;
    fs::directory_iterator entry(folder.empty() ? "." : folder, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        std::string name = entry->path().filename().string();
        const bool wanted = pattern ? matches(name, part) : name != part && equal_without_case(name, part);
        if (wanted) names.push_back(std::move(name));
    }
    std::sort(names.begin(), names.end());
    return names;
}

/// Searches a path component by component, going back when a choice turns out to lead nowhere.
class Search {
public:
    explicit Search(bool last_is_pattern) : last_is_pattern_(last_is_pattern) {}

    std::optional<std::string> find(const std::string& folder, PartsEnd part, PartsEnd end) {
        if (part == end) return folder.empty() ? "." : folder;
        const bool pattern = last_is_pattern_ && part + 1 == end;
        if (!pattern) {
            if (auto found = go_on(folder, *part, part, end)) return found;
        }
        if (lookups_ > kMaxLookups) return std::nullopt;
        for (const std::string& name : candidates(folder, *part, pattern)) {
            if (auto found = go_on(folder, name, part, end)) return found;
        }
        return std::nullopt;
    }

private:
    std::optional<std::string> go_on(const std::string& folder, const std::string& name, PartsEnd part,
                                     PartsEnd end) {
        if (++lookups_ > kMaxLookups) return std::nullopt;
        const std::string path = join(folder, name);
        if (!entry_exists(path)) return std::nullopt;
        return find(path, part + 1, end);
    }

    bool last_is_pattern_;
    int lookups_ = 0;
};

/// Lower-cased native folder -> the spelling that was given for it.
std::map<std::string, std::string>& spellings() {
    // Never released: files are opened as late as in static destructors.
    static auto& known = *new std::map<std::string, std::string>;
    return known;
}

/// The longest remembered folder that the parts begin with and in which the rest is found comes first.
std::optional<std::string> find_remembered(const Place& place, PartsEnd end, bool last_is_pattern) {
    if (spellings().empty()) return std::nullopt;
    for (PartsEnd cut = end; cut != place.parts.begin(); --cut) {
        const auto known = spellings().find(lower(join(place.base(), place.parts.begin(), cut)));
        if (known == spellings().end() || !is_folder(known->second)) continue;
        if (auto found = Search(last_is_pattern).find(known->second, cut, end)) return found;
    }
    return std::nullopt;
}

std::optional<std::string> find_existing(const Place& place, PartsEnd end, bool last_is_pattern) {
    if (auto found = find_remembered(place, end, last_is_pattern)) return found;
    if (!last_is_pattern) {
        std::string exact = join(place.base(), place.parts.begin(), end);
        if (entry_exists(exact)) return exact;
    }
    return Search(last_is_pattern).find(place.base(), place.parts.begin(), end);
}

std::string quoted(std::string_view text) { return '"' + std::string(text) + '"'; }

/// Why one component of a native path would not survive; empty when it does.
std::string component_fault(std::string_view part, bool is_last) {
    const std::string what = (is_last ? "the name " : "the folder ") + quoted(part);
    if (part.front() == '.' && part != "." && part != "..") return what + " begins with a dot";
    if (part.size() > kMaxComponentBytes) return what + " is longer than 127 bytes";
    // A look-up by the name would match other files.
    if (part.find_first_of("*?") != std::string_view::npos) return what + " holds a wildcard";
    if (part.find('"') != std::string_view::npos) return what + " holds a double quote";
    if (!names_are_native() && part.find('\\') != std::string_view::npos) return what + " holds a backslash";
    return "";
}

std::string_view separators() { return names_are_native() ? "\\/" : "/"; }

Parts split(std::string_view text, std::string_view separators) {
    Parts parts;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of(separators), text.size());
        if (end > 0) parts.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return parts;
}

/// Why the path as a whole would not survive; empty when it does. `count` includes the drive.
std::string path_fault(std::string_view stored, std::size_t count) {
    if (count == 0) return "the path is empty";
    if (stored.size() > kMaxStoredBytes) return "the path is longer than 1023 bytes";
    if (count > kMaxComponents) return "the path has more than 255 components";
    // A single component would be doubled by VXFile.
    if (count == 1) return "the path " + quoted(stored) + " names no folder and file";
    const std::size_t dollar = stored.find('$'), greater = stored.find('>');
    if (dollar != std::string_view::npos && greater != std::string_view::npos && greater > dollar)
        return quoted(stored.substr(dollar, greater - dollar + 1)) + " in the path would be read as a token";
    return "";
}

}  // namespace

std::string native_path(std::string_view stored) {
    if (names_are_native()) return std::string(stored);
    const auto place = take_apart(stored);
    if (!place) return "";
    const PartsEnd end = place->parts.end();
    if (auto found = find_existing(*place, end, false)) return *found;
    if (place->parts.empty()) return "";
    const auto parent = find_existing(*place, end - 1, false);
    if (!parent || !is_folder(*parent)) return "";
    return *parent == "." ? place->parts.back() : join(*parent, place->parts.back());
}

std::string target_path(std::string_view stored) {
    const auto place = names_are_native() ? std::nullopt : take_apart(stored);
    if (!place || place->parts.empty()) return native_path(stored);
    const PartsEnd end = place->parts.end();
    const auto parent = find_remembered(*place, end - 1, false);
    if (!parent || !is_folder(*parent)) return native_path(stored);
    if (auto found = Search(false).find(*parent, end - 1, end)) return *found;
    return join(*parent, place->parts.back());
}

std::string matching_path(std::string_view stored) {
    if (names_are_native()) return std::string(stored);
    const auto place = take_apart(stored);
    if (!place || place->ends_with_separator || (place->rooted && place->parts.empty())) return "";
    const Parts& parts = place->parts;
    bool pattern = false;
    for (const std::string& part : parts) {
        if (pattern) return "";
        pattern = has_wildcard(part);
    }
    return find_existing(*place, parts.end(), pattern).value_or("");
}

std::optional<std::vector<std::string>> matching_folders(std::string_view stored) {
    if (names_are_native()) return Parts{std::string(stored)};
    const auto place = take_apart(stored);
    if (!place) return Parts{};
    const Parts& parts = place->parts;
    if (parts.empty()) return Parts{join(place->base(), parts.begin(), parts.end())};
    std::set<std::string> folders = {place->base()};
    int lookups = 0;
    for (PartsEnd part = parts.begin(); part != parts.end(); ++part) {
        std::set<std::string> below;
        for (const std::string& folder : folders) {
            Parts names = candidates(folder, *part, false);
            names.push_back(*part);
            for (const std::string& name : names) {
                if (++lookups > kMaxLookups) return std::nullopt;
                std::string path = join(folder, name);
                if (is_folder(path)) below.insert(std::move(path));
            }
        }
        // A remembered folder counts also where the one above it may not be listed.
        const auto known = spellings().find(lower(join(place->base(), parts.begin(), part + 1)));
        if (known != spellings().end() && is_folder(known->second)) below.insert(known->second);
        folders = std::move(below);
    }
    return Parts(folders.begin(), folders.end());
}

std::string with_drive(std::string_view name) {
    const bool leading = !names_are_native() && !name.empty() && is_separator(name.front());
    return (leading ? system_drive() : "") + std::string(name);
}

bool storable(std::string_view native, std::string& why) {
    const std::string stored = with_drive(native);
    const Parts parts = split(stored, separators());
    std::string fault = path_fault(stored, parts.size());
    for (std::size_t i = 0; fault.empty() && i < parts.size(); ++i)
        fault = component_fault(parts[i], i + 1 == parts.size());
    if (fault.empty()) return true;
    why = fault;
    return false;
}

bool fits_stored_form(std::string_view name) {
    const std::string stored = with_drive(name);
    const Parts parts = split(stored, "\\/");
    return stored.size() <= kMaxStoredBytes && parts.size() <= kMaxComponents &&
           std::all_of(parts.begin(), parts.end(),
                       [](const std::string& part) { return part.size() <= kMaxComponentBytes; });
}

void remember_spelling(std::string_view native) {
    if (names_are_native()) return;
    const auto place = take_apart(native);
    if (!place) return;
    std::string spelling = place->base();
    for (const std::string& part : place->parts) {
        spelling = join(spelling, part);
        if (!is_folder(spelling)) return;
        std::string key = lower(spelling);
        if (key == spelling)
            spellings().erase(key);
        else
            spellings()[key] = spelling;
    }
}

}  // namespace plx::platform
