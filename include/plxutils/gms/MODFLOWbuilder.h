#pragma once

#include "plxutils/export.h"
#include "plxutils/gms/FileBuilder.h"

/// Keeps the list of MODFLOW models and their solutions, which are not converted yet; build tells so when
/// there are any.
class PLX_EXPORT MODFLOWbuilder : public FileBuilder {
public:
    using FileBuilder::FileBuilder;
    void build() override;
};
