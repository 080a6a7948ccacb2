#include <fcntl.h>
#include <unistd.h>

#include <cstdio>

#include "plxconvert/console.h"

namespace plx::tool {

void open_standard_streams() {
    // The lowest free descriptor is taken first.
    int opened = 0;
    while (opened >= 0 && opened <= 2) opened = open("/dev/null", O_RDWR);
    if (opened > 2) close(opened);
}

bool output_stream_is_terminal() { return isatty(STDOUT_FILENO) != 0; }

bool error_stream_is_terminal() { return isatty(STDERR_FILENO) != 0; }

OutputDiversion::OutputDiversion(bool wanted, const std::string& path) {
    if (!wanted) return;
    std::fflush(stdout);
    int target = path.empty() ? -1 : open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    kept_ = target >= 0;
    if (!kept_) target = open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (target < 0) return;
    saved_ = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 3);
    if (saved_ >= 0) dup2(target, STDOUT_FILENO);
    close(target);
}

void OutputDiversion::end() {
    if (saved_ < 0) return;
    failed_ = std::fflush(stdout) != 0 || std::ferror(stdout) != 0;
    // A full disk under the log must not look like a fault of standard output.
    std::clearerr(stdout);
    dup2(saved_, STDOUT_FILENO);
    close(saved_);
    saved_ = -1;
}

}  // namespace plx::tool
