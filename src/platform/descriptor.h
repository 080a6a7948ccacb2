#pragma once

#include <cstdio>

/// File descriptors below C streams.
namespace plx::platform {

/// A second descriptor of the file under a C stream, in binary mode; it shares the place in the file. -1 for
/// null or a stream without a file.
int duplicate_descriptor(std::FILE* stream);

/// A C stream that owns the descriptor; null, and the descriptor still open, when there is none. `mode` is
/// that of fopen.
std::FILE* stream_of(int descriptor, const char* mode);

void close_descriptor(int descriptor);

}  // namespace plx::platform
