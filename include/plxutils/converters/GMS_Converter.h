#pragma once

#include "plxutils/converters/ConverterFactory.h"

/// Converts a MODFLOW model saved by GMS by its super file (.mfs), which names the name file (.mfn) and holds
/// what MODFLOW's own inputs do not: the grid's place and rotation, the date of its start, units and
/// materials.
///
/// Arrays of the inputs may stand in the text or in an HDF5 file beside it.
class PLX_EXPORT GMS_Converter : public ConverterFactory {
public:
    GMS_Converter();
    ~GMS_Converter() override;

    void parsePROJECT() override;
    void parseBA6() override;
    /// Reads the super file.
    virtual void parseMFS();
    /// Reads the name file and opens what it names, except for the results.
    virtual void parseMFN();
    /// Reads the discretization file.
    virtual void parseDIS();
};
