#include <unistd.h>

#include "platform/descriptor.h"

namespace plx::platform {

int duplicate_descriptor(std::FILE* stream) {
    const int descriptor = stream ? ::fileno(stream) : -1;
    return descriptor < 0 ? -1 : ::dup(descriptor);
}

std::FILE* stream_of(int descriptor, const char* mode) { return ::fdopen(descriptor, mode); }

void close_descriptor(int descriptor) { ::close(descriptor); }

}  // namespace plx::platform
