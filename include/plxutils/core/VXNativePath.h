#pragma once

#include "plxutils/core/VXString.h"
#include "plxutils/export.h"

/// The operating system's own path for a name in the library's stored form.
///
/// Hosts on POSIX need it to open what the library wrote: for "c:\home\me\site_1.pff" the result is
/// "/home/Me/site_1.pff" when that is how the folder is spelt on disk. An existing entry is found without
/// regard to ASCII case, the exact spelling first; for a name that does not exist yet the result is where the
/// library would create it. On Windows the name is returned as it is.
///
/// @return empty when there is no such place: a null or empty name, another drive than `c:` on POSIX, or a
/// folder that
///         does not exist.
PLX_EXPORT String VXNativePath(const char* name);

/// Tells whether a native path comes back from VXFile::SetFile as the same place: a component that begins
/// with a dot or is longer than 127 bytes does not, nor do wildcards, double quotes and "$...>" tokens. Make
/// the path absolute before.
///
/// @param why  set when the result is false: a clause such as `the folder ".cfg" begins with a dot`.
PLX_EXPORT bool VXCanStorePath(const char* native, String& why);

/// Tells whether the library finds an existing file or folder again by the name it stores, which is in lower
/// case and may mean a neighbour instead.
///
/// @param why  set when the result is false: a clause such as `the file is not found by its lower-case name`.
PLX_EXPORT bool VXFindsPathAgain(const char* native, String& why);
