#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/block_writer.h"
#include "formats/hdf5_reader.h"
#include "plxutils/core/VXOutputFile.h"
#include "plxutils/gms/GMStoPLX.h"

/// What all builders share in announcing themselves and writing files.
namespace plx {

/// Sends a line of 60 underscores.
void report_separator();
/// Sends the separator and the announcement.
void announce_build(const char* announcement);
/// Stored path of the folder that a builder writes to, without a separator at its end: the destination, or
/// its subfolder ("TINS"), which is made when it is missing. Empty when there is no destination.
std::string output_folder(const GMStoPLX& owner, const char* subfolder);
/// A file name with blanks and tabs as underscores and without double quotes.
std::string clean_name(std::string name);

/// The last path whose text after the last dot is exactly `extension`, in the letters of the project; empty
/// when there is none.
std::string last_with_extension(const std::vector<String>& paths, std::string_view extension);
/// Tells which group of an HDF5 project cannot be converted, and why.
void report_group_problem(const char* kind, Hdf5Id group, const std::string& problem);

/// One output of a builder. A name that would leave the folder, or a missing folder, does not open.
class BuilderOutput {
public:
    explicit BuilderOutput(GMStoPLX& owner) : owner_(owner) {}
    ~BuilderOutput() { close(); }
    BuilderOutput(const BuilderOutput&) = delete;
    BuilderOutput& operator=(const BuilderOutput&) = delete;

    /// @param complaint  goes to the error hook when it fails, with the path for its "%s".
    bool open(const std::string& folder, const std::string& name, bool compressed, const char* complaint);
    BlockWriter& out() { return *writer_; }
    /// Completes the file, notes it with the owner and sends the status "   %s" with its name; false after an
    /// error message when a write came up short.
    bool close();

private:
    GMStoPLX& owner_;
    std::string name_;
    VXOutputFile stream_;
    std::optional<BlockWriter> writer_;
};

}  // namespace plx
