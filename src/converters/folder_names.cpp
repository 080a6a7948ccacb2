#include "converters/folder_names.h"

#include <algorithm>
#include <iterator>

#include "core/ascii_text.h"
#include "core/file_tokens.h"
#include "platform/platform.h"
#include "plxutils/core/VXFile.h"

namespace plx {
namespace {

constexpr std::size_t kMostPlainBytes = 127;
constexpr const char* kProbe = "probe.dat";

/// True for a name that VXFile changes in nothing but its case.
bool is_plain(const std::string& name) {
    return !name.empty() && name.size() <= kMostPlainBytes && name.front() != '.' &&
           name.find_first_of("\\/$>?*\"") == std::string::npos;
}

std::string lower(std::string text) {
    for (char& c : text) c = ascii_lower(c);
    return text;
}

}  // namespace

FolderNames::FolderNames(const std::vector<String>& folders) {
    for (const String& given : folders) {
        const VXFile probe(given, kProbe);
        Folder folder{given, probe.GetDirectoryName().c_str(), probe.GetFileName() == kProbe, {}};
        // A name without a folder is doubled and a long path is cut: only VXFile itself does that right.
        if (given.length() == 0 || folder.stored.size() + 1 + kMostPlainBytes > kMaxFileName)
            folder.keeps_names = false;
        const bool again = std::any_of(folders_.begin(), folders_.end(), [&folder](const Folder& before) {
            return before.keeps_names && before.stored == folder.stored;
        });
        if (again) {
            folder.names.emplace();
        } else if (auto names = platform::folder_names(folder.stored.c_str()); names) {
            folder.names.emplace(std::make_move_iterator(names->begin()),
                                 std::make_move_iterator(names->end()));
        }
        folders_.push_back(std::move(folder));
    }
}

std::string FolderNames::path_of(const Folder& folder, const std::string& name) {
    if (folder.keeps_names && is_plain(name)) return folder.stored + '\\' + lower(name);
    return VXFile(folder.given, name.c_str()).GetFilePath().c_str();
}

bool FolderNames::may_hold(const Folder& folder, const std::string& name) {
    return !folder.names || !folder.keeps_names || !is_plain(name) || folder.names->contains(lower(name));
}

std::string FolderNames::first_path(const std::string& name) const { return path_of(folders_.front(), name); }

std::optional<std::string> FolderNames::find(const std::string& name) const {
    for (const Folder& folder : folders_) {
        if (!may_hold(folder, name)) continue;
        std::string path = path_of(folder, name);
        if (platform::find_file(path.c_str()).exists) return path;
    }
    return std::nullopt;
}

FolderNames::Opened FolderNames::open_first(const std::vector<std::string>& names) const {
    Opened file;
    for (const Folder& folder : folders_) {
        for (const std::string& name : names) {
            if (may_hold(folder, name)) {
                file.path = path_of(folder, name);
                file.stream.reset(platform::open_file(file.path.c_str(), "rb"));
                if (file.stream) return file;
            }
            ++file.tried;
        }
    }
    return file;
}

}  // namespace plx
