#pragma once

#include "plxutils/export.h"
#include "plxutils/gms/FileBuilder.h"

/// Keeps the list of 3-D scatter point sets, which are not converted yet; build tells so when there are any.
class PLX_EXPORT SCAT3Dbuilder : public FileBuilder {
public:
    using FileBuilder::FileBuilder;
    void build() override;
};
