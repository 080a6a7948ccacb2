#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The one place that knows how stored names and native paths belong together.
///
/// On POSIX "c:" is "/", no other drive exists, "/" and the backslash are the same, "." and empty components
/// do not count and ".." is resolved in the text before the file system is asked. On Windows every name is
/// native as it is.
namespace plx::platform {

/// The native path of a stored name, for opening or creating.
///
/// An existing entry is found by its exact path, else component by component without regard to ASCII case:
/// exact entries first, then others in byte order, going back when a choice turns out to lead nowhere. A new
/// name is placed as it is spelt into the folder found that way.
/// @return empty when there is no such place (empty name, another drive, no such folder).
std::string native_path(std::string_view stored);

/// The native path to write to: as native_path, but a remembered folder (see `remember_spelling`) comes
/// before a sibling that differs in case only, also when only the sibling has a file of that name.
std::string target_path(std::string_view stored);

/// The native path of the first entry that a directory search for the name finds (see `find_file`); empty for
/// none.
std::string matching_path(std::string_view stored);

/// The native paths of all folders in which names below the stored folder are looked for, those that differ
/// in case only; without wildcards.
/// @return nothing when they are too many to follow, as with folders linked in circles.
std::optional<std::vector<std::string>> matching_folders(std::string_view stored);

/// A name with the system drive in front of a leading separator, so that "/data/x" stays absolute when
/// separators turn. Other names, and every name on Windows, are unchanged.
std::string with_drive(std::string_view name);

/// Tells whether a native path comes back from VXFile::SetFile as the same place. "." and ".." should have
/// been resolved before (`full_path`).
/// @param why  set when the result is false: a clause such as `the folder ".cfg" begins with a dot`.
bool storable(std::string_view native, std::string& why);

/// True when neither the name nor one of its components is longer than VXFile keeps, so that nothing would be
/// cut. Either separator counts. A name that the library makes up is checked with it before a file is
/// created.
bool fits_stored_form(std::string_view name);

/// Remembers how the folders of a native path are spelt, when they exist exactly so. It serves stored names,
/// which have lost their case, where a sibling differs in case only or a parent may not be listed. The last
/// spelling given for a folder counts.
void remember_spelling(std::string_view native);

}  // namespace plx::platform
