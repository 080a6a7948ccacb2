#pragma once

#include <string>

namespace plx::tool {

/// Gives the standard streams that the caller closed a place to go, so that no result file takes their
/// descriptor and receives what is printed.
void open_standard_streams();

/// True when standard output is a terminal.
bool output_stream_is_terminal();

/// True when standard error is a terminal.
bool error_stream_is_terminal();

/// Sends standard output, the C library's stream included, to a file while it lives: the library prints its
/// trace there, and the tool's own output must stay readable.
class OutputDiversion {
public:
    /// Diverts to a new file `path`, or to nowhere when the path is empty or cannot be written. Without
    /// `wanted` the object does nothing.
    OutputDiversion(bool wanted, const std::string& path);
    ~OutputDiversion() { end(); }
    OutputDiversion(const OutputDiversion&) = delete;
    OutputDiversion& operator=(const OutputDiversion&) = delete;

    /// Gives standard output back.
    void end();
    /// True when the file was made.
    bool kept() const { return kept_; }
    /// True when, until the end, not all of it could be written.
    bool failed() const { return failed_; }

private:
    int saved_ = -1;
    bool kept_ = false, failed_ = false;
};

}  // namespace plx::tool
