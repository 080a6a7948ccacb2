#pragma once

#include "plxutils/export.h"
#include "plxutils/gms/FileBuilder.h"

/// Keeps the list of MT3D models, which are not converted yet; build tells so when there are any.
class PLX_EXPORT MT3Dbuilder : public FileBuilder {
public:
    using FileBuilder::FileBuilder;
    void build() override;
};
