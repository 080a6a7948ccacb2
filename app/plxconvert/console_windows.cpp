#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

#include <cstdio>

#include "plxconvert/console.h"

namespace plx::tool {

void open_standard_streams() {
    // The lowest free descriptor is taken first.
    int opened = 0;
    while (opened >= 0 && opened <= 2) opened = _open("NUL", _O_RDWR);
    if (opened > 2) _close(opened);
}

bool output_stream_is_terminal() { return _isatty(_fileno(stdout)) != 0; }

bool error_stream_is_terminal() { return _isatty(_fileno(stderr)) != 0; }

OutputDiversion::OutputDiversion(bool wanted, const std::string& path) {
    if (!wanted) return;
    std::fflush(stdout);
    const int mode = _O_WRONLY | _O_BINARY | _O_NOINHERIT;
    int target = path.empty() ? -1 : _open(path.c_str(), mode | _O_CREAT | _O_TRUNC, _S_IREAD | _S_IWRITE);
    kept_ = target >= 0;
    if (!kept_) target = _open("NUL", mode);
    if (target < 0) return;
    saved_ = _dup(_fileno(stdout));
    if (saved_ >= 0) _dup2(target, _fileno(stdout));
    _close(target);
}

void OutputDiversion::end() {
    if (saved_ < 0) return;
    failed_ = std::fflush(stdout) != 0 || std::ferror(stdout) != 0;
    // A full disk under the log must not look like a fault of standard output.
    std::clearerr(stdout);
    _dup2(saved_, _fileno(stdout));
    _close(saved_);
    saved_ = -1;
}

}  // namespace plx::tool
