#include <fcntl.h>
#include <io.h>

#include "platform/descriptor.h"

namespace plx::platform {

int duplicate_descriptor(std::FILE* stream) {
    const int descriptor = stream ? ::_fileno(stream) : -1;
    const int copy = descriptor < 0 ? -1 : ::_dup(descriptor);
    if (copy >= 0) ::_setmode(copy, _O_BINARY);
    return copy;
}

std::FILE* stream_of(int descriptor, const char* mode) { return ::_fdopen(descriptor, mode); }

void close_descriptor(int descriptor) { ::_close(descriptor); }

}  // namespace plx::platform
