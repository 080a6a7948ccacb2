#pragma once

#include <optional>
#include <string>

#include "core/block_writer.h"
#include "plxutils/converters/ConverterFactory.h"
#include "plxutils/core/VXOutputFile.h"

namespace plx {

/// One output of a conversion: opening it, writing it in blocks, and telling when either fails.
class OutputFile {
public:
    explicit OutputFile(ConverterFactory& factory) : factory_(factory) {}
    ~OutputFile() { close(); }
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    /// Creates or truncates a stored path; a name that would be cut is refused, so that no file overwrites
    /// another.
    /// @param complaint  goes to the error function when it fails, with the path for its "%s".
    bool open(const String& path, bool compressed,
              const char* complaint = "MODFLOW : Write_File - Cannot open %s for writing.\n");
    BlockWriter& out() { return *writer_; }
    /// Completes the file and notes it in the report; false after a message when a write came up short.
    bool close();

private:
    ConverterFactory& factory_;
    VXOutputFile stream_;
    std::optional<BlockWriter> writer_;
};

}  // namespace plx
