#include "plxutils/core/VXFile.h"

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include "core/ascii_text.h"
#include "core/file_tokens.h"
#include "platform/host_path.h"
#include "platform/platform.h"
#include "plxutils/core/VXUtilities.h"

namespace {

constexpr std::size_t kMaxNameBytes = 1024;
constexpr int kMaxComponents = 256;
constexpr int kComponentBytes = 128;

/// The name with tokens expanded, in lower case, with the drive that a leading separator stands for.
String expanded(const char* name) {
    std::string text = plx::fix_file_name(std::string(name, strnlen(name, kMaxNameBytes)));
    text = plx::platform::with_drive(text).substr(0, plx::kMaxFileName);
    for (char& c : text) c = plx::ascii_lower(c);
    return String(text.c_str());
}

void drop_dots(String& path) {
    path.Replace("..", "??");
    // The dot of a component that begins with one goes too: callers know such folders by the shortened name.
    path.Replace("\\.", "");
    path.Replace("??", "..");
}

/// Puts the components together again, each single ".." cancelling the one before it.
String rebuilt(const String& path) {
    std::vector<char> slots(std::size_t{kMaxComponents} * kComponentBytes);
    const int count = StrToWordsDelim("\\", path.c_str(), slots.data(), kMaxComponents, kComponentBytes);
    if (count == 0) return String();
    const auto component = [&](int i) { return &slots[static_cast<std::size_t>(i) * kComponentBytes]; };
    const auto is_parent = [&](int i) { return std::strcmp(component(i), "..") == 0; };

    String result(component(0));
    for (int i = 1; i < count - 1; ++i) {
        if (i == 1 && is_parent(1)) continue;
        if (is_parent(i + 1)) {
            ++i;
            continue;
        }
        result += '\\';
        result += component(i);
    }
    // A single component is doubled on purpose: relative names without a folder have always come out so.
    result += '\\';
    result += component(count - 1);
    // Without them a name on another machine would be one below the current folder.
    if (plx::platform::names_are_native() && path.Left(2) == "\\\\") result = "\\\\" + result;
    return result;
}

String extension_of(const String& path) {
    const int dot = path.ReverseFind('.');
    return dot > path.ReverseFind('\\') ? path.Mid(dot + 1, path.GetLength()) : String();
}

}  // namespace

VXFile::VXFile(const char* fileName) : exists(false), readOnly(false), size(0) { SetFile(fileName); }

VXFile::VXFile(String dirPath, String fileName) : exists(false), readOnly(false), size(0) {
    SetFileAndPath(dirPath, fileName);
}

VXFile::VXFile(const VXFile& other) = default;

VXFile& VXFile::operator=(const VXFile& other) {
    // Facts of an equal path stay as they are here, even when the other file's are newer: hosts compare them.
    if (path == other.path) return *this;
    exists = other.exists;
    readOnly = other.readOnly;
    size = other.size;
    path = other.path;
    name = other.name;
    title = other.title;
    extension = other.extension;
    directory = other.directory;
    drive = other.drive;
    return *this;
}

void VXFile::SetFile(const char* fileName) {
    String p;
    if (fileName && *fileName) {
        // Only a native name still tells how its folders are spelt.
        if (*fileName == '/') plx::platform::remember_spelling(fileName);
        p = expanded(fileName);
        drop_dots(p);
        p = rebuilt(p);
    }
    if (p.GetLength() == 0) {
        path = name = title = extension = drive = "";
        directory.SetDirectory("", false);
        exists = readOnly = false;
        size = 0;
        return;
    }
    path = p;
    extension = extension_of(p);
    directory.SetDirectory(p.c_str(), true);
    name = p.Mid(p.ReverseFind('\\') + 1, p.GetLength());
    // A name without extension loses its last character here; callers build titles from names that have one.
    title = name.Left(name.GetLength() - extension.GetLength() - 1);
    drive = p.Left(3);

    const plx::platform::FileFacts facts = plx::platform::find_file(p.c_str());
    exists = facts.exists;
    size = static_cast<int>(static_cast<std::uint32_t>(facts.size));
    if (exists) readOnly = facts.read_only;
}

void VXFile::SetFileAndPath(String dirPath, String fileName) {
    const int length = dirPath.GetLength();
    const char last = dirPath[length - 1];
    if (length > 0 && last != '\\' && last != '/') dirPath += '/';
    SetFile((dirPath + fileName).c_str());
}

String VXFile::GetFilePath() const { return path; }
String VXFile::GetFileName() const { return name; }
String VXFile::GetFileTitle() const { return title; }
String VXFile::GetFileExtension() const { return extension; }
String VXFile::GetDrive() const { return drive; }
VXDirectory& VXFile::GetDirectory() { return directory; }
const VXDirectory& VXFile::GetDirectory() const { return directory; }
String VXFile::GetDirectoryName() const { return directory; }
bool VXFile::IsReadOnly() const { return readOnly; }
int VXFile::FileSize() const { return size; }
bool VXFile::FileExists() const { return exists; }
