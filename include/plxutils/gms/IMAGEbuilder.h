#pragma once

#include "plxutils/export.h"
#include "plxutils/gms/FileBuilder.h"

/// Keeps the list of images, which are not converted yet; build tells so when there are any.
class PLX_EXPORT IMAGEbuilder : public FileBuilder {
public:
    using FileBuilder::FileBuilder;
    void build() override;
};
