#pragma once

#include <cstdint>

#include "plxutils/export.h"

/// Describes one data component of the nodes or of the cells of a field. The texts end with a 0.
struct PLX_EXPORT cgDataDef {
    std::int32_t type = 4;
    char name[1024] = {};
    char units[1024] = {};
    /// Values of the component per node or cell.
    std::int32_t veclen = 1;
    /// Carried for hosts.
    std::int32_t intValue = 0;
    float floatValue = 0.0f;
};
