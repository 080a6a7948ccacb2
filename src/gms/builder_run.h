#pragma once

#include <exception>

#include "gms/callbacks.h"
#include "plxutils/gms/FileBuilder.h"

namespace plx {

/// Runs a builder. What it could not cope with (memory, mostly) is reported and does not stop the others.
inline void run_builder(FileBuilder& builder) {
    try {
        builder.build();
    } catch (const std::exception& problem) {
        GMS_ReportError("GMStoPLX : parse_header - A conversion was given up: %s\n", problem.what());
    }
}

}  // namespace plx
