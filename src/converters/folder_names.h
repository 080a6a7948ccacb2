#pragma once

#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "converters/transport_results.h"
#include "plxutils/core/VXString.h"

namespace plx {

/// What lies in a few folders, for a search that tries hundreds of names. Each folder is listed once; a
/// look-up on disk per name would list the folder and all above it again and again.
class FolderNames {
public:
    /// Lists the folders, which are tried in this order. Those that are missing or come twice do no harm.
    explicit FolderNames(const std::vector<String>& folders);

    /// The stored path, as VXFile has it, of a name in the first folder, whether or not it is there.
    std::string first_path(const std::string& name) const;
    /// The stored path of a name, which may be a folder's, in the first folder that has it.
    std::optional<std::string> find(const std::string& name) const;

    struct Opened {
        decltype(SpeciesFile::stream) stream;  ///< null when there is no such file
        std::string path;                      ///< stored
        std::size_t tried = 0;  ///< place among all names of the first folder, then of the next, from 0
    };
    /// Opens for reading the first of the names that is a file, all names in one folder before the next.
    Opened open_first(const std::vector<std::string>& names) const;

private:
    struct Folder {
        String given;
        std::string stored;                          ///< normalised, as VXFile has it
        bool keeps_names = false;                    ///< an ordinary name stays what it is in this folder
        std::optional<std::set<std::string>> names;  ///< none where each must be tried on disk
    };
    static std::string path_of(const Folder& folder, const std::string& name);
    static bool may_hold(const Folder& folder, const std::string& name);

    std::vector<Folder> folders_;
};

}  // namespace plx
