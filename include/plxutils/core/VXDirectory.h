#pragma once

#include "plxutils/core/VXString.h"
#include "plxutils/export.h"

/// One directory path, kept without trailing backslashes.
///
/// The text is kept as it is given: letters keep their case and forward slashes are not turned. An unset
/// directory is the root of the system drive, written without a backslash (`c:` on POSIX, where it stands for
/// "/").
class PLX_EXPORT VXDirectory {
public:
    /// The system drive.
    VXDirectory();
    /// As `SetDirectory(path, hasFile)`.
    VXDirectory(const char* path, bool hasFile);
    VXDirectory(String path, bool hasFile);
    VXDirectory(const VXDirectory& other);
    VXDirectory& operator=(const VXDirectory& other);

    /// Takes the directory from a path.
    ///
    /// @param path     null or empty gives the system drive.
    /// @param hasFile  true when the last component is a file name: everything from the last backslash on is
    ///                 dropped, and a path without a backslash gives an empty directory.
    void SetDirectory(const char* path, bool hasFile);
    void SetDirectory(VXDirectory other);

    /// The path, with one backslash at its end when `withSeparator` is true.
    String GetDirectory(bool withSeparator) const;
    operator String() const;

    /// The directory `levels` steps up; it stops at a text of fewer than three characters ("c:" stays "c:").
    /// A relative path that is used up becomes the system drive; zero or fewer levels give this directory.
    VXDirectory GetParentDirectory(int levels) const;

private:
    String dir;
};
