#pragma once

#include "plxutils/converters/ConverterFactory.h"

/// Converts a Visual MODFLOW project (.vmf) with its grid file (.vmg), head file (.hds) and flow file (.flo).
class PLX_EXPORT Visual_MODFLOW_Converter : public ConverterFactory {
public:
    Visual_MODFLOW_Converter();
    ~Visual_MODFLOW_Converter() override;

    void parsePROJECT() override;
    void parseHED_datapos() override;
    void parseHED_data() override;
    /// Reads the grid file.
    virtual void parseDIS();
};
