#pragma once

#include "plxutils/converters/ConverterFactory.h"

/// Converts the MODFLOW model of a GMS project that is an HDF5 file (.gpr) and keeps the model's arrays in
/// another one beside the text inputs. The project names the super file; results go beside the project.
class PLX_EXPORT GMS_HDF5_Converter : public ConverterFactory {
public:
    GMS_HDF5_Converter();
    ~GMS_HDF5_Converter() override;

    void parsePROJECT() override;
    void parseCCF_data() override;
    void parseCCF_datapos() override;
    void parseHED_datapos() override;
    void parseHED_data() override;
    void parseBA6() override;
    /// Reads the next transport time of the GMS concentration files (.con).
    int parseConcentration(VXArray<double>& values, float& time) override;
    /// Reads the super file.
    virtual void parseMFS();
    /// Reads the name file and opens what it names, except for the results.
    virtual void parseMFN();
    /// Reads the discretization file.
    virtual void parseDIS();
};
