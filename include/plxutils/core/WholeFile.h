#pragma once

#include <memory>

#include "plxutils/core/VXOutputFile.h"
#include "plxutils/export.h"

namespace plx {

namespace platform {
class PartFile;
}

/// What is said of a file after a write that came up short.
inline constexpr const char* kNotAllWritten = "not all of it could be written (is the disk full?)";

/// A file that appears under its name when it is complete, and not at all when it cannot be completed.
///
/// Until then it is "~name.part" in the same folder, and an older file of the name stays as it is. Links are
/// followed; a device or pipe is written where it is. Nothing prints.
class PLX_EXPORT WholeFile {
public:
    WholeFile();
    /// Discards a file that was not closed.
    ~WholeFile();
    WholeFile(const WholeFile&) = delete;
    WholeFile& operator=(const WholeFile&) = delete;

    /// Begins a file, discarding one that is under way. Names are those of VXOutputFile::Open.
    /// @return false when it cannot be created, or when an older file may not be written.
    bool open(const char* name, bool compressed);
    /// Where the content goes; closed when no file is under way. Its Filename() is the final name.
    VXOutputFile& stream() { return stream_; }
    /// Completes the file and gives it its name.
    /// @return false when none was open, when not all could be written (a full disk) or when it could not get
    ///         its name; then the older file is still there.
    bool close();
    /// Ends without the file.
    void discard();
    /// A clause that tells why `close` gave false; empty after one that did not.
    const char* fault() const { return fault_; }

private:
    VXOutputFile stream_;
    std::unique_ptr<platform::PartFile> part_;
    bool in_place_ = false, open_ = false;
    const char* fault_ = "";
};

/// Removes the unfinished files of this process. For a handler of a signal, or of a console's events, that
/// ends the process: it calls async-signal-safe functions only, and no further file can be begun after it.
PLX_EXPORT void remove_unfinished_files() noexcept;

}  // namespace plx
