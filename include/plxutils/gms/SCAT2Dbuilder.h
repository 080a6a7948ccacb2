#pragma once

#include "plxutils/export.h"
#include "plxutils/gms/FileBuilder.h"

/// Writes every dataset of every 2-D scatter point set as a surface file.
class PLX_EXPORT SCAT2Dbuilder : public FileBuilder {
public:
    using FileBuilder::FileBuilder;
    void build() override;
};
