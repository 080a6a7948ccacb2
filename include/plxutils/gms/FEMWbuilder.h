#pragma once

#include "plxutils/export.h"
#include "plxutils/gms/FileBuilder.h"

/// Keeps the list of FEMWATER models, which are not converted yet; build tells so when there are any.
class PLX_EXPORT FEMWbuilder : public FileBuilder {
public:
    using FileBuilder::FileBuilder;
    void build() override;
};
