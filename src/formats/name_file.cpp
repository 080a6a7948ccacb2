#include "formats/name_file.h"

#include <algorithm>
#include <filesystem>

#include "core/text_number.h"
#include "plxutils/core/VXFileReader.h"

namespace plx {

bool is_absolute_name(const std::string& name) {
    constexpr bool kSlashIsRoot = std::filesystem::path::preferred_separator == '/';
    return name.find(':', 1) != std::string::npos || (kSlashIsRoot && name.starts_with('/'));
}

std::string resolve_beside(const String& folder, const std::string& name) {
    return is_absolute_name(name) ? name : folder.c_str() + ("\\" + name);
}

bool read_name_file(const VXFile& file, std::vector<NameFileEntry>& entries) {
    VXFileReader reader;
    if (!reader.Open(file.GetFilePath().c_str())) return false;
    const String folder = file.GetDirectoryName();
    for (int words; (words = reader.ReadLine("\r\n\t ,", true, true, false)) >= 0;) {
        if (words < 3) continue;
        NameFileEntry entry;
        entry.type = reader.GetWord(0).c_str();
        std::transform(entry.type.begin(), entry.type.end(), entry.type.begin(),
                       [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c; });
        entry.unit = to_int(reader.GetWord(1).c_str());
        entry.name = reader.GetWord(2).c_str();
        entry.path = resolve_beside(folder, entry.name);
        entry.line = reader.CurrentLineNumber();
        entries.push_back(std::move(entry));
    }
    return true;
}

}  // namespace plx
