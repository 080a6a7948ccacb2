#pragma once

#include <string_view>

#include "plxutils/core/VX1DArray.h"
#include "plxutils/core/VXString.h"

namespace plx {

/// The file tags: tokens of the form "$...>" and the texts that stand for them in file names.
class FileTags {
public:
    /// Reads a tag file once; later calls do nothing. A file that cannot be opened leaves the list empty.
    ///
    /// The file has one tag per line: token and value, separated by blanks, tabs or commas, a value with
    /// blanks in quotes; "#" begins a comment. A line with one word ends it. A line without words prints
    /// "ERROR: Project Tag file (file_tags.txt) has an error on line %d\n" to standard output and takes an
    /// empty entry.
    void load_once(const char* stored_name);

    /// Gives a tag its value: the entry of exactly this name, else the first empty one.
    void set(const char* tag, const char* value);

    /// Value of the first tag that equals the token but for ASCII case; null when there is none.
    const String* find(std::string_view token) const;

private:
    void grow();

    bool loaded_ = false;
    VX1DArray<String> tagNames;
    VX1DArray<String> tagValues;
};

/// The tags of this process; its tag file is "$XP_PATH<0>/data/special/file_tags.txt".
FileTags& file_tags();

}  // namespace plx
