#pragma once

#include "plxutils/core/VXDirectory.h"
#include "plxutils/core/VXString.h"
#include "plxutils/export.h"

/// A file name in the library's stored form, split once into the parts that callers ask for.
///
/// The stored form is lower-cased (ASCII letters only), with backslashes and normally a drive:
/// "c:\data\well.dat". On POSIX the drive `c:` stands for "/", and `VXNativePath` tells what the system calls
/// the file. `FileExists`, `IsReadOnly` and `FileSize` are facts of the moment in which the name was set.
class PLX_EXPORT VXFile {
public:
    /// As `SetFile(name)`; without a name all texts are empty and the directory is the system drive.
    VXFile(const char* name = nullptr);
    /// As `SetFileAndPath(dirPath, name)`.
    VXFile(String dirPath, String name);
    VXFile(const VXFile& other);
    /// Does nothing when both files have the same path already, so older facts stay.
    VXFile& operator=(const VXFile& other);

    /// Expands, normalises and splits a name, then looks the file up. Nothing is reported.
    ///
    /// Tokens are expanded (`FixFilenameString`), letters lower-cased, "." components dropped together with
    /// the dot of a component that begins with one, and single ".." components resolved. At most 1023 bytes,
    /// 255 components and 127 bytes of each component are kept. Names should be complete paths: a name of one
    /// component is doubled ("x.dat" becomes "x.dat\x.dat"), and of several ".." in a row only part is
    /// resolved.
    void SetFile(const char* name);
    /// As `SetFile` of the directory, a separator where it lacks one, and the name. With an empty directory
    /// the name stands alone.
    void SetFileAndPath(String dirPath, String name);

    /// The whole stored path.
    String GetFilePath() const;
    /// The last component.
    String GetFileName() const;
    /// The name without extension and dot. A name without extension loses its last character.
    String GetFileTitle() const;
    /// The text after the last dot of the name; empty without a dot.
    String GetFileExtension() const;
    /// The first three characters of the path, such as "c:\".
    String GetDrive() const;
    VXDirectory& GetDirectory();
    const VXDirectory& GetDirectory() const;
    /// The directory as text, without a trailing backslash.
    String GetDirectoryName() const;

    bool IsReadOnly() const;
    /// Length in bytes, its low 32 bits only; 0 for a directory or a missing file.
    int FileSize() const;
    /// True for an existing file or directory. Inside this class the function of the same name is
    /// `::FileExists`.
    bool FileExists() const;

private:
    bool exists, readOnly;
    int size;
    String path, name, title, extension;
    VXDirectory directory;
    String drive;
};
