#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/block_writer.h"
#include "formats/hdf5_reader.h"
#include "plxutils/core/WholeFile.h"
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

/// The last path whose text after the last dot is exactly `extension`, in the letters of the project; empty
/// when there is none.
std::string last_with_extension(const std::vector<String>& paths, std::string_view extension);
/// Tells which group of an HDF5 project cannot be converted, and why.
void report_group_problem(const char* kind, Hdf5Id group, const std::string& problem);

/// One output of a builder, which has its name when it is complete. A name that does not stay in the folder
/// (see `stays_in`) does not open.
class BuilderOutput {
public:
    explicit BuilderOutput(GMStoPLX& owner) : owner_(owner) {}
    /// Discards a file that was not closed.
    ~BuilderOutput() = default;
    BuilderOutput(const BuilderOutput&) = delete;
    BuilderOutput& operator=(const BuilderOutput&) = delete;

    /// @param complaint  goes to the error hook when it fails, with the path for its "%s".
    bool open(const std::string& folder, const std::string& name, bool compressed, const char* complaint);
    BlockWriter& out() { return *writer_; }
    /// Completes the file, notes it with the owner and sends the status "   %s" with its name; false after an
    /// error message when it cannot be completed.
    bool close();

private:
    GMStoPLX& owner_;
    std::string name_;
    WholeFile file_;
    std::optional<BlockWriter> writer_;
};

}  // namespace plx
