#pragma once

#include <string>
#include <vector>

#include "plxutils/core/VXString.h"
#include "plxutils/export.h"

class GMStoPLX;

/// Turns one kind of GMS object into PLX files. Problems are reported through the hooks and end the object at
/// hand, never the conversion.
class PLX_EXPORT FileBuilder {
public:
    explicit FileBuilder(GMStoPLX* owner) : owner(owner) {}
    virtual ~FileBuilder();
    FileBuilder(const FileBuilder&) = delete;
    FileBuilder& operator=(const FileBuilder&) = delete;

    /// Converts what the project has of this kind. In an HDF5 project it runs once for each group, which is
    /// the owner's currentGroup then; in a text project once, over sourceFiles.
    virtual void build() = 0;
    /// Appends a copy of the path; null is an empty path.
    void AddFile(const char* path);

    /// Full paths of the files that a text project assigned to this builder, in project order. File names
    /// keep their letters, because extensions are told apart by case.
    std::vector<String> sourceFiles;
    /// The converter that owns the builder.
    GMStoPLX* owner;
};
