#pragma once

#include <array>
#include <memory>
#include <vector>

#include "plxutils/core/VXString.h"
#include "plxutils/export.h"
#include "plxutils/gms/FileBuilder.h"

/// A material of the boreholes.
struct Material {
    int index = 0;   ///< 0-based position in the material file
    String name;     ///< blanks and tabs are underscores
    int number = 0;  ///< what the borehole file calls it
};

/// One borehole.
struct Bore {
    int numContacts = 0;
    /// x, y, z of the top of a layer, and its material number.
    std::vector<std::array<double, 4>> contacts;
    String name;  ///< blanks and tabs are underscores
};

/// Writes all boreholes of a project into one pre-geology file (.pgf).
class PLX_EXPORT BOREbuilder : public FileBuilder {
public:
    using FileBuilder::FileBuilder;
    void build() override;

    std::vector<std::unique_ptr<Material>> materials;
    std::vector<std::unique_ptr<Bore>> bores;
};
