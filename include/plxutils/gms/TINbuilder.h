#pragma once

#include "plxutils/export.h"
#include "plxutils/gms/FileBuilder.h"

/// Writes every TIN as a surface file for each dataset, one for the elevations, and a field file with the
/// triangles.
class PLX_EXPORT TINbuilder : public FileBuilder {
public:
    using FileBuilder::FileBuilder;
    void build() override;
};
