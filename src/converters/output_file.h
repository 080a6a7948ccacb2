#pragma once

#include <optional>
#include <string>

#include "core/block_writer.h"
#include "plxutils/converters/ConverterFactory.h"
#include "plxutils/core/WholeFile.h"

namespace plx {

/// One output of a conversion: opening it, writing it in blocks, and telling when either fails. It has its
/// name when it is complete; until then an older file stays.
class OutputFile {
public:
    explicit OutputFile(ConverterFactory& factory) : factory_(factory) {}
    /// Discards a file that was not closed.
    ~OutputFile() = default;
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    /// Begins a file of the stored folder, discarding one that is under way. A name that does not stay there,
    /// or would be cut, is refused, so that no file overwrites another.
    /// @param complaint  goes to the error function when it fails, with the path for its "%s".
    bool open(const String& folder, const String& name, bool compressed,
              const char* complaint = "MODFLOW : Write_File - Cannot open %s for writing.\n");
    BlockWriter& out() { return *writer_; }
    /// Completes the file and notes it in the report; false after a message when it cannot be completed.
    bool close();

private:
    ConverterFactory& factory_;
    WholeFile file_;
    std::optional<BlockWriter> writer_;
};

}  // namespace plx
