#pragma once

#include <cstdio>
#include <string>

namespace plx::platform {

/// A file that is written under another name in the same folder and put in its place when it is complete: an
/// older file stays whole until then. The other name is "~name.part"; whatever file has it is replaced.
///
/// Links are followed, so that it is the file they lead to that is replaced. The new file takes over the
/// permissions of an older one, and its owner where the system allows it.
class PartFile {
public:
    PartFile() = default;
    /// Removes a file that was not put in its place.
    ~PartFile() { remove(); }
    PartFile(const PartFile&) = delete;
    PartFile& operator=(const PartFile&) = delete;

    /// Creates the file that is going to be `native`, removing one that is under way.
    /// @return a descriptor, in binary mode, that the caller closes before one of the calls below; -1 when
    /// the
    ///         file cannot be made, or when an older one may not be written.
    int create(const std::string& native);
    /// The same for a stored name and as a C stream, with the mode of fopen; "wt" ends lines as the system's
    /// texts do. A device is opened where it is.
    std::FILE* open(const char* stored, const char* mode);
    /// Gives the file its name; when that fails it is removed. A device has its name.
    bool put_in_place();
    void remove();

private:
    void forget();

    std::string part_, target_;
    int slot_ = -1;
    bool in_place_ = false;
};

/// The name under which a file is written. It is cut where the system takes no longer one.
std::string part_name(const std::string& target);

/// True for a device or a pipe, which is written where it is.
bool is_device(const std::string& native);

/// Removes what is being written in this process, and lets no further PartFile be created. Async-signal-safe.
void remove_part_files() noexcept;

}  // namespace plx::platform
