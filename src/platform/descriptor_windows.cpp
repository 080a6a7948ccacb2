#include <fcntl.h>
#include <io.h>

#include <cstring>

#include "platform/descriptor.h"

namespace plx::platform {

int duplicate_descriptor(std::FILE* stream) {
    const int descriptor = stream ? ::_fileno(stream) : -1;
    const int copy = descriptor < 0 ? -1 : ::_dup(descriptor);
    if (copy >= 0) ::_setmode(copy, _O_BINARY);
    return copy;
}

std::FILE* stream_of(int descriptor, const char* mode) {
    // Descriptors are binary; the mode alone would leave them so.
    if (std::strchr(mode, 't')) ::_setmode(descriptor, _O_TEXT);
    return ::_fdopen(descriptor, mode);
}

void close_descriptor(int descriptor) { ::_close(descriptor); }

}  // namespace plx::platform
