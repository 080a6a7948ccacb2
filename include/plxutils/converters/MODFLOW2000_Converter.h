#pragma once

#include "plxutils/converters/ConverterFactory.h"

/// Converts a MODFLOW model whose grid stands in a discretization file (MODFLOW 2000, 2005, NWT) by its name
/// file.
class PLX_EXPORT MODFLOW2000_Converter : public ConverterFactory {
public:
    MODFLOW2000_Converter();
    ~MODFLOW2000_Converter() override;

    void parsePROJECT() override;
    void parseNAM() override;
    void parseCCF_data() override;
    void parseCCF_datapos() override;
    void parseHED_datapos() override;
    void parseHED_data() override;
    void parseBA6() override;
    /// Reads nothing: these models keep no porosity.
    void parsePOR() override;
    /// Reads the discretization file.
    virtual void parseDIS();
};
